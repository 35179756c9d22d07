// What the display has told of so far, and its clock.

// What the page keeps; beyond, the oldest goes.
const mostEntries = 5000;
const mostBytes = 100e6;

export class Journal {
  entries = [];
  #bytes = 0;
  #epochMs = 0;
  #monotonicMs = 0;
  #localMs = 0;

  /** Forgets everything and starts from the display's own account; `localMs` is the page's clock. */
  restart({ now, monotonicMs, entries }, localMs) {
    this.#epochMs = now;
    this.#monotonicMs = monotonicMs;
    this.#localMs = localMs;
    this.entries = [];
    this.#bytes = 0;
    entries.forEach((entry) => this.add(entry));
  }

  add(entry) {
    this.entries.push(entry);
    this.#bytes += entry.bytes ?? 0;
    while (this.entries.length > mostEntries || (this.#bytes > mostBytes && this.entries.length > 1))
      this.#bytes -= this.entries.shift().bytes ?? 0;
  }

  /** The moment of an entry's time, in ms since the epoch. */
  epochOf(ms) {
    return this.#epochMs + ms - this.#monotonicMs;
  }

  /** The present on the clock of the entries. */
  nowAt(localMs) {
    return this.#monotonicMs + localMs - this.#localMs;
  }
}

/** What tells an entry from all others, those of a display started later included. */
export function identity({ id, ms }) {
  return `${id} ${ms}`;
}
