// Looking for goods.

const folded = (text) => String(text ?? '').toLocaleLowerCase('ru-RU').replaceAll('ё', 'е');

/** The article whose code or bar code this is, as a scanner gives it; null if there is none. */
export function articleOf(goods, text) {
  return goods.find((item) => text !== '' && (item.code === text || item.barcode === text)) ?? null;
}

/** Whether an article fits what is being typed: every word is in its name, or a code starts so. */
export function fits(item, text) {
  const words = folded(text).split(/\s+/).filter((word) => word !== '');
  const name = folded(item.name);
  return words.every((word) => name.includes(word)
    || folded(item.code).startsWith(word) || folded(item.barcode).startsWith(word));
}

/** Whether it is sold by weight, so that a quantity has to be asked for. */
export function isWeighed(item) {
  return item.unit === 'кг';
}
