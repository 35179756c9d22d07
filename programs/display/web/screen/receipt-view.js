// The receipt: its header, its lines and its sums.
import { make } from '/common/dom.js';
import { plural, roubles } from '/common/russian.js';
import { drawLines } from './lines-view.js';
import { paymentKind } from './payment-kinds.js';
import { goodsCount } from './receipt.js';

function sum(className, title, amount) {
  return make('div', { className: `sum ${className}` }, make('dt', { textContent: title }), make('dd', { textContent: amount }));
}

function sums(receipt) {
  const rows = [];
  if (receipt.discountSum !== 0) rows.push(sum('discount-sum', 'Скидка', `−${roubles(receipt.discountSum)}`));
  rows.push(sum('check-sum', 'Итого', roubles(receipt.total)));
  for (const { kind, amount } of receipt.payments) rows.push(sum('payment', paymentKind(kind), roubles(amount)));
  const due = receipt.total - receipt.paid;
  if (!receipt.isPaid && receipt.payments.length > 0 && due > 0) rows.push(sum('due', 'Осталось оплатить', roubles(due)));
  if (receipt.change > 0) rows.push(sum('change', 'Сдача', roubles(receipt.change)));
  return rows;
}

/** Draws the receipt whenever it, its pictures or its room has changed. */
export function receiptView() {
  const root = document.querySelector('#receipt');
  const part = (selector) => root.querySelector(selector);
  let shown = [];

  function draw({ receipt, looks, pictures }) {
    part('h2').textContent = receipt.number === '' ? 'Ваша покупка' : `Чек № ${receipt.number}`;
    const count = goodsCount(receipt);
    part('.goods-count').textContent = looks.showGoodsQuantity ? `${count} ${plural(count, ['товар', 'товара', 'товаров'])}` : '';
    part('.hint').hidden = receipt.positions.length > 0;
    part('.sums').replaceChildren(...sums(receipt));
    part('.thanks').hidden = !receipt.isPaid;
    root.classList.toggle('is-paid', receipt.isPaid);
    drawLines(part('.positions'), receipt, looks, pictures);
  }

  return ({ state, scene, layout }) => {
    root.hidden = scene !== 'receipt';
    if (root.hidden) {
      shown = [];
      return;
    }
    const wanted = [state.receipt, state.looks, state.pictures, layout.scale, layout.receipt.height];
    if (wanted.every((value, at) => value === shown[at])) return;
    shown = wanted;
    draw(state);
  };
}
