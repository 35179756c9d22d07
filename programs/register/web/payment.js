// Paying: what the buyer is shown, and what is taken.
import { byId, make } from '/common/dom.js';
import { quantity, roubles } from '/common/russian.js';
import { makeAsk } from '/cashier/ask.js';
import { addKeypad } from '/cashier/keypad.js';
import { kopecks } from '/cashier/language.js';
import { dueOf, likelyNotes } from '/cashier/receipt.js';

/** Commands of the buttons that take no number, and whether they end the dialog. */
const buttons = [
  ['draft-card', { do: 'draft', kind: 'card' }, false],
  ['draft-cash', { do: 'draft', kind: 'cash' }, false],
  ['pay-show-qr', { do: 'qr' }, false],
  ['pay-card', { do: 'pay', kind: 'card' }, true],
  ['pay-qr', { do: 'pay', kind: 'qr' }, true],
];

/**
 * @param {(command: object) => Promise<string | undefined>} run returns what is wrong
 * @returns {(receipt: object) => void} asks how the receipt is paid
 */
export function createPayment(run) {
  const field = byId('cash');
  const keypad = addKeypad(byId('cash-keys'), field);
  let due = 0;

  const ask = makeAsk(byId('pay-dialog'), () => {
    const amount = kopecks(field.value);
    if (amount === null) return 'Введите сумму в рублях, например 500';
    return run({ do: 'pay', kind: 'cash', amount });
  });

  for (const [id, command, ends] of buttons) {
    byId(id).onclick = () => ask.attempt(() => run(command), ends);
  }

  const showChange = () => {
    const amount = kopecks(field.value);
    const text = amount === null ? '' : amount < due
      ? `Не хватает ${roubles(due - amount)}`
      : `Сдача ${roubles(amount - due)}`;
    byId('change').textContent = text;
  };
  field.addEventListener('input', showChange);

  const propose = (text) => {
    keypad.propose(text);
    showChange();
    field.focus();
  };
  const chip = (label, text) => make('button', { type: 'button', textContent: label, onclick: () => propose(text) });
  const plain = (amount) => (amount / 100).toFixed(2).replace('.', ',');

  return (receipt) => {
    due = dueOf(receipt);
    byId('pay-title').textContent = `К оплате ${roubles(due)}`;
    byId('notes').replaceChildren(
      chip('Без сдачи', plain(due)),
      ...likelyNotes(due).map((note) => chip(quantity(note), String(note))),
    );
    ask.open();
    propose(plain(due));
  };
}
