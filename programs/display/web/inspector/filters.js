// The chips that choose which types are shown, with their counts.
import { byId, make } from '/common/dom.js';
import { groups } from './rows.js';

const kinds = ['asked', 'sent', 'superseded', 'retried'];
const onlyCounted = new Set(['Requests', 'Notes']);

export class Filters {
  /** The groups that are wanted; none means all. */
  chosen = new Set();
  #chips = new Map();

  constructor(onChange) {
    const legend = make('p', { className: 'legend' }, make('span', { textContent: 'asked · sent' }),
      make('span', {}, make('span', { className: 'superseded', textContent: 'superseded' }), ' · ',
        make('span', { className: 'retried', textContent: 'retried' })));
    byId('filters').append(legend, ...groups.map((group) => {
      const counts = make('span', { className: 'counts' });
      const chip = make('button', { type: 'button', className: 'chip', '@aria-pressed': 'false', dataset: { group } },
        make('span', { className: 'name', textContent: group }), counts);
      chip.addEventListener('click', () => {
        if (!this.chosen.delete(group)) this.chosen.add(group);
        chip.setAttribute('aria-pressed', this.chosen.has(group));
        onChange();
      });
      this.#chips.set(group, { chip, counts, shown: '' });
      return chip;
    }));
  }

  /** @param {ReturnType<import('./rows.js').countByGroup>} countsByGroup */
  show(countsByGroup) {
    for (const [group, counts] of countsByGroup) {
      const known = this.#chips.get(group);
      const words = onlyCounted.has(group) ? ['sent'] : kinds;
      const title = onlyCounted.has(group) ? String(counts.sent) : words.map((kind) => `${counts[kind]} ${kind}`).join(', ');
      if (title === known.shown) continue;
      known.shown = title;
      known.chip.title = title;
      known.counts.replaceChildren(...words.map((kind) => (
        make('span', { className: counts[kind] > 0 ? kind : 'zero', textContent: counts[kind] }))));
    }
  }
}
