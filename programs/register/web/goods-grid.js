// The goods to tap.
import { byId, make } from '/common/dom.js';
import { roubles } from '/common/russian.js';
import { fits } from '/cashier/catalogue.js';

function picture(item) {
  const none = () => make('span', { className: 'no-picture', textContent: String(item.name).slice(0, 1), '@aria-hidden': 'true' });
  if (item.picture === null) return none();
  const image = make('img', { src: item.picture, alt: '', loading: 'lazy', draggable: false });
  image.onerror = () => image.replaceWith(none());
  return image;
}

/**
 * Fills the grid of the page.
 *
 * @param {(item: object) => void} choose called with the article that was tapped
 */
export function createGoodsGrid(goods, choose) {
  const nothing = byId('nothing');
  const cards = goods.map((item) => make('li', {}, make('button', {
    type: 'button', className: 'card', title: item.name, onclick: () => choose(item),
  },
  picture(item),
  make('span', { className: 'name', textContent: item.name, dataset: { clipped: '' } }),
  make('span', { className: 'price' },
    make('b', { textContent: roubles(item.price) }),
    make('span', { textContent: ` за ${item.unit}` })))));
  byId('goods').replaceChildren(...cards);

  return {
    /** Shows those that fit what is typed. */
    filter(text) {
      goods.forEach((item, i) => { cards[i].hidden = !fits(item, text); });
      nothing.hidden = cards.some((card) => !card.hidden);
    },
    /** Those that are shown. */
    shown: () => goods.filter((item, i) => !cards[i].hidden),
  };
}
