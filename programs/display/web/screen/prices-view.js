// A page of the price list.
import { make } from '/common/dom.js';
import { roubles } from '/common/russian.js';
import { numberOf, textOf } from '/common/values.js';
import { pageAfter, pagesOf } from './pages.js';
import { typeset } from './typeset.js';

/** What of the stage is not for the rows, as the style sheet has it. */
const surroundings = { width: 64, height: 96 };
const leastRowHeight = 44;

/** A row holds two lines of its name. */
const rowHeightOf = (looks) => Math.max(leastRowHeight, Math.ceil(looks.positionFontSize * 2.5) + 8) + (looks.isTouch ? 6 : 0);

function row({ code, name, unit, price }) {
  const isPriced = price !== undefined && price !== null;
  const per = textOf(unit) === '' ? '' : ` / ${textOf(unit)}`;
  return make('li', {},
    make('span', { className: 'code', textContent: textOf(code) }),
    make('span', { className: 'name', dataset: { clipped: '' }, textContent: typeset(textOf(name)) }),
    isPriced ? make('span', { className: 'price' }, roubles(numberOf(price)), make('span', { className: 'unit', textContent: per })) : null);
}

/** Draws the page that the register has scrolled to. */
export function pricesView() {
  const root = document.querySelector('#prices');
  const part = (selector) => root.querySelector(selector);
  let shown = [];

  function draw(prices, stage, looks) {
    const room = { width: stage.width - surroundings.width, height: stage.height - surroundings.height };
    const height = rowHeightOf(looks);
    const { columns, rows, pages } = pagesOf(prices.rows.length, prices.columns, room, height);
    const page = pageAfter(prices.scrolls, pages);
    const list = part('.rows');
    list.style.gridTemplate = `repeat(${rows}, minmax(0, 1fr)) / repeat(${columns}, minmax(0, 1fr))`;
    list.replaceChildren(...prices.rows.slice(page * rows * columns, (page + 1) * rows * columns).map(row));
    part('h2').textContent = prices.title;
    part('.page-number').textContent = pages > 1 ? `Страница ${page + 1} из ${pages}` : '';
  }

  return ({ state: { prices, looks }, layout: { stage } }) => {
    root.hidden = prices === null;
    const wanted = [prices, looks, stage.width, stage.height];
    if (prices === null || wanted.every((value, at) => value === shown[at])) return;
    shown = wanted;
    draw(prices, stage, looks);
  };
}
