// The payment that the cashier has announced.
import { roubles } from '/common/russian.js';
import { paymentAdvice, paymentKind } from './payment-kinds.js';

/** Draws the announced payment, unless a code to pay by is on the screen. */
export function draftView() {
  const root = document.querySelector('#draft');
  const part = (selector) => root.querySelector(selector);
  let shown = null;

  return ({ state: { draft, qr } }) => {
    root.hidden = draft === null || qr !== null;
    if (draft === shown || draft === null) return;
    shown = draft;
    part('h2').textContent = paymentKind(draft.kind);
    const amount = roubles(draft.amount);
    part('.amount').textContent = amount;
    part('.amount').style.setProperty('--characters', amount.length);
    part('.advice').textContent = paymentAdvice(draft.kind);
  };
}
