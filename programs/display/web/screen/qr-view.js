// A code to pay by, with the time that is left for it.
import { make } from '/common/dom.js';
import { roubles } from '/common/russian.js';
import { countdown } from './countdown.js';

/** Draws the code that the display has made of the payment's text. */
export function qrView() {
  const root = document.querySelector('#qr');
  const part = (selector) => root.querySelector(selector);
  let shown = null;
  let hasFailed = false;

  function showCode(isThere) {
    part('.code img').hidden = !isThere;
    part('.no-code').hidden = isThere;
    part('.advice').hidden = !isThere;
  }

  /** A new picture is empty until it is loaded: the code before never stands beside this amount. */
  function draw(qr) {
    const code = make('img', { alt: 'QR-код для оплаты' });
    code.onerror = () => {
      if (!code.isConnected) return;
      hasFailed = true;
      showCode(false);
    };
    hasFailed = false;
    part('.code img').replaceWith(code);
    showCode(qr.text !== '');
    if (qr.text !== '') code.src = `/qr.svg?n=${qr.n}`;
    part('.amount').textContent = roubles(qr.amount);
  }

  /** A reconnection tells the same again, by which a code that could not be loaded gets another try. */
  const isNews = (qr) => qr !== shown && (hasFailed || JSON.stringify(qr) !== JSON.stringify(shown));

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
    if (isNews(qr)) draw(qr);
    shown = qr;
    drawTime(countdown(qr, now));
  };
}
