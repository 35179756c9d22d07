// The receipt with its positions, one of which is selected.
import { byId, make } from '/common/dom.js';
import { fixed, quantity, roubles } from '/common/russian.js';
import { dueOf, isOpen, positionsOf, selectionAfter } from '/cashier/receipt.js';

const text = (value) => (value === undefined || value === null ? '' : String(value));
const percent = (value) => `${Number.isInteger(value) ? value : fixed(value, 2)}\u00a0%`;

function discount(position) {
  return position.disc_sum > 0
    ? make('span', { className: 'saving', textContent: `скидка ${percent(position.disc_perc)}: −${roubles(position.disc_sum)}` })
    : null;
}

function row(position, index) {
  return make('div', { className: 'position', id: `position-${index}`, '@role': 'option' },
    make('span', { className: 'number', textContent: index + 1 }),
    make('span', { className: 'name', textContent: text(position.name) }),
    make('b', { className: 'total', textContent: roubles(position.total) }),
    make('span', { className: 'count', textContent: `${quantity(position.quantity)}\u00a0${text(position.unit)} × ${roubles(position.price)}` }),
    discount(position));
}

function sums(receipt) {
  const lines = [['Без скидки', receipt.sum, receipt.discountSum > 0], ['Скидка', receipt.discountSum, receipt.discountSum > 0],
    ['Итого', receipt.total, true], ['Оплачено', receipt.total - dueOf(receipt), !isOpen(receipt) || dueOf(receipt) < receipt.total],
    ['Сдача', receipt.change, receipt.change > 0]];
  return lines.filter(([, , wanted]) => wanted).flatMap(([label, amount]) => [
    make('dt', { textContent: label, className: label === 'Итого' ? 'main' : '' }),
    make('dd', { textContent: label === 'Скидка' ? `−${roubles(amount)}` : roubles(amount), className: label === 'Итого' ? 'main' : '' }),
  ]);
}

/** What the heading calls the current document. */
function nameOf(receipt) {
  if (receipt === null) return 'Чек не открыт';
  return receipt.number === undefined ? 'Документ' : `Чек № ${text(receipt.number)}`;
}

export function createReceiptView() {
  const list = byId('positions');
  let receipt = null;
  let selected = -1;

  function select(index) {
    selected = index;
    [...list.children].forEach((option, i) => option.setAttribute('aria-selected', String(i === index)));
    if (list.children[index]) {
      list.setAttribute('aria-activedescendant', list.children[index].id);
      list.children[index].scrollIntoView({ block: 'nearest' });
    } else {
      list.removeAttribute('aria-activedescendant');
    }
    byId('void').disabled = !isOpen(receipt) || index < 0;
  }

  list.addEventListener('click', (event) => {
    const index = [...list.children].findIndex((option) => option.contains(event.target));
    if (index >= 0) select(index);
  });
  list.addEventListener('keydown', (event) => {
    const last = list.children.length - 1;
    const to = { ArrowDown: selected + 1, ArrowUp: selected - 1, Home: 0, End: last }[event.key];
    if (to === undefined || last < 0) return;
    event.preventDefault();
    select(Math.max(0, Math.min(last, to)));
  });

  return {
    show(next) {
      const positions = positionsOf(next);
      const selection = selectionAfter(selected, receipt, next);
      receipt = next;
      list.replaceChildren(...positions.map(row));
      list.hidden = positions.length === 0;
      byId('no-positions').hidden = positions.length > 0;
      select(selection);

      byId('receipt-name').textContent = nameOf(next);
      byId('receipt-state').hidden = next === null;
      byId('receipt-state').textContent = { open: 'открыт', paid: 'оплачен' }[next?.state] ?? '';
      byId('receipt-state').dataset.state = text(next?.state);
      byId('sums').replaceChildren(...(next === null ? [] : sums(next)));
      byId('due').textContent = isOpen(next) ? roubles(dueOf(next)) : '';
      for (const id of ['discount', 'qr', 'pay']) byId(id).disabled = !isOpen(next);
    },
    /** The selected position, index counted from 0; null if there is none. */
    selected() {
      const position = positionsOf(receipt)[selected];
      return position === undefined ? null : { index: selected, name: text(position.name) };
    },
  };
}
