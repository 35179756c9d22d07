// The cashier and the customer's screen side by side.
import { byId } from '/common/dom.js';
import { follow } from '/common/live.js';

let shown = '';

/** Takes only what a browser would open as a page. */
function pageAt(path, display) {
  return /^https?:\/\//.test(display) && URL.canParse(path, display) ? new URL(path, display).href : null;
}

follow('/events', {
  state: ({ display }) => {
    const screen = pageAt('/', String(display));
    if (screen === null || screen === shown) return;
    shown = screen;
    byId('screen').src = screen;
    byId('screen-link').href = screen;
    byId('inspector-link').href = pageAt('/inspector', screen);
  },
});
