// What waits at the plug-in of one type, as far as it can be told from outside.
import { waitsInOrder } from './types.js';

export class TypeQueue {
  #type;
  #asks; // all of them, by time
  #next = 0; // the first one that is asked for later than what has been looked at
  #waiting = [];
  #gone = []; // what a restart of the register took with it
  #attempts = 0; // in vain, since the last success

  /** @param {{id: number, ms: number}[]} asked by time */
  constructor(type, asked) {
    this.#type = type;
    this.#asks = asked.map(({ id, ms }) => ({ id, ms, lostWith: null }));
  }

  /** Goes on to a moment; what was asked for before the register's last start has gone. */
  advanceTo(ms, startedMs) {
    for (; this.#asks[this.#next]?.ms <= ms; this.#next += 1) this.#waiting.push(this.#asks[this.#next]);
    if (!(this.#waiting[0]?.ms < startedMs)) return;
    this.#gone.push(...this.#waiting.filter((ask) => ask.ms < startedMs));
    this.#waiting = this.#waiting.filter((ask) => ask.ms >= startedMs);
  }

  /** What a message that arrives now carries; the rest of what waits is superseded by it. */
  carry(ms) {
    const inOrder = waitsInOrder(this.#type);
    const ask = (inOrder ? this.#waiting[0] : this.#waiting.at(-1)) ?? null;
    const superseded = inOrder ? [] : this.#waiting.slice(0, -1).map((older) => older.ms);
    if (!inOrder) this.#waiting = this.#waiting.slice(-1);
    if (ask) ask.lostWith = null; // it has come after all
    return { askedMs: ask?.ms ?? null, waitedMs: ask && ms - ask.ms, superseded, attempt: this.#attempts + 1 };
  }

  /** The message was not accepted: what it carries goes on waiting. */
  fail() {
    this.#attempts += 1;
  }

  /** The message was accepted: what is asked for until then is forgotten with it. */
  accept(number, untilMs) {
    this.#attempts = 0;
    this.#waiting.shift();
    if (waitsInOrder(this.#type)) return;
    for (let late = this.#next; this.#asks[late]?.ms <= untilMs; late += 1) this.#asks[late].lostWith = number;
  }

  /** @returns {import('./timeline.js').Lost[]} */
  lost() {
    return [...this.#gone, ...this.#waiting.filter(({ lostWith }) => lostWith !== null)]
      .map(({ id, ms, lostWith }) => ({ id, type: this.#type, ms, withMessage: lostWith }));
  }

  /** @returns {import('./timeline.js').Waiting[]} */
  pending() {
    const type = this.#type;
    const times = this.#waiting.filter(({ lostWith }) => lostWith === null).map(({ ms }) => ms);
    if (waitsInOrder(type))
      return times.map((askedMs, index) => ({ type, askedMs, supersedes: [], attempts: index === 0 ? this.#attempts : 0 }));
    return times.length === 0 ? []
      : [{ type, askedMs: times.at(-1), supersedes: times.slice(0, -1), attempts: this.#attempts }];
  }
}
