// The lines of a receipt: only those that differ are drawn anew, and the newest is kept in view.
import { make } from '/common/dom.js';
import { fixed, quantity, roubles } from '/common/russian.js';
import { numberOf, textOf } from '/common/values.js';
import { fillMask } from './mask.js';
import { typeset } from './typeset.js';

const formats = { fixed, plain: quantity };

function pictureOf(position, pictures) {
  return pictures.get(`GoodsCode:${position.code}`) || pictures.get(`Barcode:${position.barcode}`) || '';
}

/** A picture, or the first letter of the name in its place: the names stay in one line that way. */
function tile(name, uri) {
  const letter = make('span', { className: 'letter', '@aria-hidden': 'true', textContent: [...name][0] ?? '' });
  if (!uri.startsWith('data:image/')) return letter;
  const picture = make('img', { className: 'picture', src: uri, alt: '' });
  picture.onerror = () => picture.replaceWith(letter);
  return picture;
}

function discountRow(position, looks) {
  const amount = numberOf(position.disc_sum);
  if (!looks.showPositionDiscount || amount === 0) return null;
  return make('div', { className: 'position-discount' },
    make('span', { className: 'discount-label', textContent: fillMask(looks.positionDiscountLabelMask, position, formats) }),
    make('span', { className: 'discount-amount', textContent: `−${roubles(amount)}` }));
}

function line(position, looks, picture) {
  const name = textOf(position.name);
  const cell = (className, text) => make('span', { className, textContent: text });
  return make('li', { className: 'position' },
    make('div', { className: 'position-main' },
      looks.showImages ? tile(name, picture) : null,
      make('span', { className: 'name', dataset: { clipped: '' }, textContent: typeset(name) }),
      cell('quantity', `${quantity(numberOf(position.quantity, 1))}\u00a0${textOf(position.unit)}`.trim()),
      looks.positionPriceWidth > 0 ? cell('price', roubles(position.price)) : null,
      cell('line-sum', roubles(position.sum))),
    discountRow(position, looks));
}

const isSame = (one, other) => one.looks === other.looks && one.text === other.text && one.picture === other.picture;

/** How many items at the start of both lists are the same. */
function sameUntil(one, other, limit = Math.min(one.length, other.length)) {
  let count = 0;
  while (count < limit && isSame(one[count], other[count])) ++count;
  return count;
}

/** What the lines drawn in a list were drawn from, in their order. */
const drawn = new WeakMap();

function update(list, items) {
  const before = drawn.get(list) ?? [];
  const head = sameUntil(before, items);
  const rest = Math.min(before.length, items.length) - head;
  const tail = sameUntil(before.toReversed(), items.toReversed(), rest);
  for (const old of [...list.children].slice(head, before.length - tail)) old.remove();
  const after = list.children[head] ?? null;
  for (const { position, looks, picture } of items.slice(head, items.length - tail))
    list.insertBefore(line(position, looks, picture), after);
  drawn.set(list, items);
}

function keepInView(list, item) {
  list.scrollTop = list.scrollHeight;
  if (item && item.offsetTop < list.scrollTop) list.scrollTop = item.offsetTop;
  list.classList.toggle('is-scrolled', list.scrollTop > 0);
}

/** Draws a receipt's lines into a list. */
export function drawLines(list, receipt, looks, pictures) {
  const { positions, newest } = receipt;
  update(list, positions.map((position) => ({
    position,
    looks,
    text: JSON.stringify(position),
    picture: looks.showImages ? pictureOf(position, pictures) : '',
  })));
  for (const [at, item] of [...list.children].entries())
    item.classList.toggle('is-newest', at === newest && !receipt.isPaid);
  keepInView(list, list.children[newest]);
}
