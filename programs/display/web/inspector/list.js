// The time line as a list of which only the rows in sight exist.
import { make } from '/common/dom.js';
import { cellsOf } from './cells.js';

const rowHeight = 24; // as in timeline.css
const spareRows = 8;

export class List {
  #grid;
  #body;
  #newest;
  #onChoose;
  #rows = [];
  #epochOf = (ms) => ms;
  #drawn = new Map(); // row elements by key
  #following = true;
  chosenKey = null;

  /** `onChoose` is told of the row that is chosen by hand. */
  constructor({ grid, body, newest, onChoose }) {
    this.#grid = grid;
    this.#body = body;
    this.#newest = newest;
    this.#onChoose = onChoose;
    grid.addEventListener('scroll', () => this.#scrolled());
    grid.addEventListener('keydown', (event) => this.#pressed(event));
    body.addEventListener('click', (event) => this.#clicked(event));
    newest.addEventListener('click', () => this.#followEnd());
    new ResizeObserver(() => this.#settle()).observe(grid);
  }

  show(rows, epochOf) {
    this.#rows = rows;
    this.#epochOf = epochOf;
    this.#body.style.height = `${rows.length * rowHeight}px`;
    this.#grid.setAttribute('aria-rowcount', rows.length + 1);
    this.#settle();
  }

  #settle() {
    if (this.#following) this.#grid.scrollTop = this.#grid.scrollHeight;
    this.#draw();
  }

  #scrolled() {
    const { scrollTop, clientHeight, scrollHeight } = this.#grid;
    this.#following = scrollTop + clientHeight > scrollHeight - rowHeight;
    this.#draw();
  }

  #followEnd() {
    this.#following = true;
    this.#settle();
    this.#grid.focus();
  }

  #draw() {
    const { scrollTop, clientHeight } = this.#grid;
    const first = Math.max(0, Math.floor(scrollTop / rowHeight) - spareRows);
    const last = Math.min(this.#rows.length, Math.ceil((scrollTop + clientHeight) / rowHeight) + spareRows);
    const drawn = new Map();
    for (let index = first; index < last; index += 1) drawn.set(this.#rows[index].key, this.#element(index));
    this.#drawn = drawn;
    this.#replaceRows([...drawn.values()]);
    this.#newest.hidden = this.#following;

    const chosen = drawn.get(this.chosenKey);
    if (chosen) this.#grid.setAttribute('aria-activedescendant', chosen.id);
    else this.#grid.removeAttribute('aria-activedescendant');
  }

  /** Leaves elements that stay where they are: a press on a row must not lose it. */
  #replaceRows(elements) {
    const wanted = new Set(elements);
    for (const element of [...this.#body.children]) if (!wanted.has(element)) element.remove();
    elements.forEach((element, index) => {
      if (this.#body.children[index] !== element) this.#body.insertBefore(element, this.#body.children[index] ?? null);
    });
  }

  #element(index) {
    const row = this.#rows[index];
    const cells = cellsOf(row, index > 0 ? this.#rows[index - 1].ms : null, this.#epochOf);
    const content = JSON.stringify(cells);
    let element = this.#drawn.get(row.key);
    if (element?.dataset.content !== content) element = rowElement(row.key, cells, content);
    element.style.top = `${index * rowHeight}px`;
    element.setAttribute('aria-rowindex', index + 2);
    element.setAttribute('aria-selected', row.key === this.chosenKey);
    return element;
  }

  #clicked(event) {
    const row = event.target.closest('[role="row"]');
    if (row) this.#choose(this.#rows.findIndex(({ key }) => key === row.dataset.key));
  }

  #pressed(event) {
    const page = Math.max(1, Math.floor(this.#grid.clientHeight / rowHeight) - 2);
    const last = this.#rows.length - 1;
    const at = this.#rows.findIndex(({ key }) => key === this.chosenKey);
    const from = at < 0 ? last + 1 : at;
    const target = {
      ArrowUp: from - 1, ArrowDown: at < 0 ? last : at + 1, PageUp: from - page, PageDown: from + page, Home: 0, End: last,
    }[event.key];
    if (target === undefined || last < 0) return;
    event.preventDefault();
    this.#choose(Math.min(last, Math.max(0, target)));
  }

  #choose(index) {
    if (index < 0) return;
    this.chosenKey = this.#rows[index].key;
    this.#bringIntoView(index);
    this.#draw();
    this.#onChoose(this.#rows[index]);
  }

  #bringIntoView(index) {
    const head = this.#body.offsetTop;
    const top = index * rowHeight;
    const { scrollTop, clientHeight } = this.#grid;
    if (top < scrollTop) this.#grid.scrollTop = top;
    else if (top + rowHeight + head > scrollTop + clientHeight) this.#grid.scrollTop = top + rowHeight + head - clientHeight;
  }
}

function rowElement(key, cells, content) {
  const id = `row ${key}`.replaceAll(/[ .]/g, '-');
  return make('div', { className: 'row', id, '@role': 'row', dataset: { key, content } },
    ...cells.map(({ text, look = '', title = '' }) => make('span', {
      '@role': 'gridcell', className: look, title, textContent: text, '@data-clipped': '',
    })));
}
