// A code to pay by, with the time that is left for it.
import { roubles } from '/common/russian.js';
import { countdown } from './countdown.js';

/** Draws the code that the display has made of the payment's text. */
export function qrView() {
  const root = document.querySelector('#qr');
  const part = (selector) => root.querySelector(selector);
  const code = part('img');
  let shown = null;

  function showCode(isThere) {
    code.hidden = !isThere;
    part('.no-code').hidden = isThere;
    part('.advice').hidden = !isThere;
  }
  code.onerror = () => showCode(false);

  function draw(qr) {
    showCode(qr.text !== '');
    if (qr.text === '') code.removeAttribute('src');
    else code.src = `/qr.svg?n=${qr.n}`;
    part('.amount').textContent = roubles(qr.amount);
  }

  function drawTime(time) {
    root.classList.toggle('is-over', time?.isOver === true);
    part('.countdown').hidden = time === null;
    if (time === null) return;
    const text = time.isOver ? 'Время истекло' : `Осталось ${time.left}`;
    if (part('.left').textContent !== text) part('.left').textContent = text;
    part('.bar').style.transform = `scaleX(${time.share})`;
  }

  return ({ state: { qr }, now, layout }) => {
    root.hidden = qr === null;
    if (qr === null) {
      shown = null;
      return;
    }
    root.classList.toggle('is-beside', layout.code.isBeside);
    root.classList.toggle('is-whole', layout.code.isWhole);
    root.style.setProperty('--code-side', `${layout.code.side}px`);
    if (JSON.stringify(qr) !== shown) draw(qr); // by value: a reconnection tells the same again
    shown = JSON.stringify(qr);
    drawTime(countdown(qr, now));
  };
}
