// How many of the next article, or how much of it, are sold.
import { byId } from '/common/dom.js';
import { quantity as shown } from '/common/russian.js';
import { makeAsk } from '/cashier/ask.js';
import { addKeypad } from '/cashier/keypad.js';
import { decimal } from '/cashier/language.js';

/** Asks for quantities; `ask(title, unit, proposal, use)` calls `use` with the number given. */
export function createQuantity() {
  const field = byId('quantity-value');
  const keypad = addKeypad(byId('quantity-keys'), field);
  let useNumber = () => {};

  const ask = makeAsk(byId('quantity-dialog'), () => {
    const number = decimal(field.value);
    if (number === null || number === 0) return 'Введите число больше нуля';
    useNumber(number);
    return undefined;
  });

  const step = (by) => {
    keypad.propose(shown(Math.max(1, (decimal(field.value) ?? 0) + by)));
    field.focus();
  };
  byId('fewer').onclick = () => step(-1);
  byId('more').onclick = () => step(1);

  return (title, unit, proposal, use) => {
    byId('quantity-title').textContent = title;
    byId('quantity-unit').textContent = unit;
    useNumber = use;
    ask.open();
    keypad.propose(proposal);
    field.focus();
  };
}
