// A discount on the receipt or on one of its positions.
import { byId, make } from '/common/dom.js';
import { makeAsk } from '/cashier/ask.js';
import { addKeypad } from '/cashier/keypad.js';
import { decimal } from '/cashier/language.js';

const usual = [0, 5, 10, 15, 25];

/**
 * @param {(command: object) => Promise<string | undefined>} run returns what is wrong
 * @returns {(position: {index: number, name: string} | null) => void} asks; the index counts from 0
 */
export function createDiscount(run) {
  const field = byId('percent');
  const keypad = addKeypad(byId('percent-keys'), field);
  const [onReceipt, onPosition] = byId('discount-dialog').querySelectorAll('[name=on]');
  let chosen = null;

  const ask = makeAsk(byId('discount-dialog'), () => {
    const percent = decimal(field.value);
    if (percent === null) return 'Введите процент, например 5';
    return run(onPosition.checked
      ? { do: 'discount', percent, position: chosen.index + 1 }
      : { do: 'discount', percent });
  });

  byId('percents').append(...usual.map((percent) => make('button', {
    type: 'button',
    textContent: `${percent} %`,
    onclick: () => {
      keypad.propose(String(percent));
      field.focus();
    },
  })));

  return (position) => {
    chosen = position;
    onReceipt.checked = true;
    onPosition.disabled = position === null;
    byId('discount-position').textContent = position === null
      ? 'На позицию: ни одна не выбрана'
      : `На позицию ${position.index + 1}: ${position.name}`;
    ask.open();
    keypad.propose('5');
    field.focus();
  };
}
