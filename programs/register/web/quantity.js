// How many of the next article, or how much of it, are sold.
import { quantity as shown } from '/common/russian.js';
import { makeAsk } from '/cashier/ask.js';
import { addKeypad } from '/cashier/keypad.js';
import { decimal } from '/cashier/language.js';

const element = (id) => document.getElementById(id);

/** Asks for quantities; `ask(title, unit, proposal, use)` calls `use` with the number given. */
export function createQuantity() {
  const field = element('quantity-value');
  const keypad = addKeypad(element('quantity-keys'), field);
  let useNumber = () => {};

  const ask = makeAsk(element('quantity-dialog'), () => {
    const number = decimal(field.value);
    if (number === null || number === 0) return 'Введите число больше нуля';
    useNumber(number);
    return undefined;
  });

  const step = (by) => {
    keypad.propose(shown(Math.max(1, (decimal(field.value) ?? 0) + by)));
    field.focus();
  };
  element('fewer').onclick = () => step(-1);
  element('more').onclick = () => step(1);

  return (title, unit, proposal, use) => {
    element('quantity-title').textContent = title;
    element('quantity-unit').textContent = unit;
    useNumber = use;
    ask.open();
    keypad.propose(proposal);
    field.focus();
  };
}
