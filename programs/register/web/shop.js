// The cashier and the customer's screen side by side.
import { follow } from '/common/live.js';

const element = (id) => document.getElementById(id);
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
    element('screen').src = screen;
    element('screen-link').href = screen;
    element('inspector-link').href = pageAt('/inspector', screen);
  },
});
