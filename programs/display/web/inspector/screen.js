// The customer's screen beside the wire: a window of common size, scaled to the room there is.
import { byId } from '/common/dom.js';

const width = 1280;
const height = 720;
const largestShare = 0.5; // of the side's height; the rest is for the details

export function wireScreen() {
  const screen = byId('screen');
  const frame = screen.querySelector('iframe');
  const side = screen.parentElement;
  const fold = byId('fold');

  const fit = () => {
    const scale = Math.min(side.clientWidth / width, (side.clientHeight * largestShare) / height);
    frame.style.transform = `translateX(${(side.clientWidth - width * scale) / 2}px) scale(${scale})`;
    screen.style.height = `${height * scale}px`;
  };
  frame.width = width;
  frame.height = height;
  new ResizeObserver(fit).observe(side);

  fold.addEventListener('click', () => {
    screen.hidden = !screen.hidden;
    fold.setAttribute('aria-pressed', !screen.hidden);
  });
}
