// What waits at the plug-in, with ages that go on.
import { byId, make } from '/common/dom.js';
import { count, duration } from './format.js';

const tickMs = 100;

export class Pending {
  #list = byId('pending');
  #now;
  #ages = []; // of what is shown: when it was asked for, and where its age stands
  #shown = '';

  /** `now` tells the present on the clock of the entries. */
  constructor(now) {
    this.#now = now;
    setInterval(() => this.#tick(), tickMs);
    this.show([]);
  }

  /** @param {import('./timeline.js').Waiting[]} pending */
  show(pending) {
    if (JSON.stringify(pending) === this.#shown) return;
    this.#shown = JSON.stringify(pending);
    this.#ages = pending.map(({ askedMs }) => ({ askedMs, place: make('span') }));
    this.#list.replaceChildren(...pending.map((waiting, index) => item(waiting, this.#ages[index].place)));
    if (pending.length === 0) this.#list.append(make('li', { className: 'none', textContent: 'nothing' }));
    this.#tick();
  }

  #tick() {
    const now = this.#now();
    for (const { askedMs, place } of this.#ages) place.textContent = duration(now - askedMs);
  }
}

function item({ type, supersedes, attempts }, age) {
  const more = [
    supersedes.length > 0 ? `, supersedes ${supersedes.length}` : '',
    attempts > 0 ? `, tried ${count(attempts, 'time')}` : '',
  ].join('');
  return make('li', {}, `${type} `, age, more);
}
