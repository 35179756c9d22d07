// A keypad for screens without a keyboard.
import { make } from '/common/dom.js';
import { pressed } from '/cashier/typing.js';

const keys = ['7', '8', '9', '4', '5', '6', '1', '2', '3', ',', '0', 'back'];
const labels = { ',': 'Запятая', back: 'Стереть' };

/** Puts keys into `place` that write into `field`; the first one replaces what it proposes. */
export function addKeypad(place, field) {
  let fresh = true;
  field.addEventListener('input', () => { fresh = false; });
  place.append(...keys.map((key) => make('button', {
    type: 'button',
    textContent: key === 'back' ? '⌫' : key,
    '@aria-label': labels[key] ?? key,
    onclick: () => {
      field.value = pressed(field.value, key, fresh);
      field.dispatchEvent(new Event('input', { bubbles: true }));
    },
  })));
  return {
    /** Proposes a value. */
    propose(text) {
      field.value = text;
      fresh = true;
      field.select();
    },
  };
}
