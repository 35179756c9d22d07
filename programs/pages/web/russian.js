// Money and numbers as they are written in Russian.
import { numberOf } from './values.js';

const money = new Intl.NumberFormat('ru-RU', { minimumFractionDigits: 2, maximumFractionDigits: 2 });
const plain = new Intl.NumberFormat('ru-RU', { maximumFractionDigits: 3 });

/** 123450 kopecks are "1 234,50 ₽", with spaces that do not break. */
export function roubles(kopecks) {
  return `${money.format(numberOf(kopecks) / 100)}\u00a0₽`;
}

/** 0.734 is "0,734". */
export function quantity(value) {
  return plain.format(numberOf(value));
}

/** As many digits after the comma as every browser can write. */
const mostDigits = 20;

/** A number with this many digits after the comma, 20 at most. */
export function fixed(value, digits) {
  const count = Math.min(digits, mostDigits);
  return new Intl.NumberFormat('ru-RU', { minimumFractionDigits: count, maximumFractionDigits: count })
    .format(numberOf(value));
}

/** The form of a word that goes with a number: plural(5, ['товар', 'товара', 'товаров']). */
export function plural(count, [one, few, many]) {
  const forms = { one, few };
  return forms[new Intl.PluralRules('ru-RU').select(count)] ?? many;
}
