// Sends commands to the register, one after the other.

/**
 * A queue of commands. Each is sent when the page has heard what the one before has led to, so that
 * what is sent can depend on it.
 */
export class Commander {
  #post;
  #patienceMs;
  #last = Promise.resolve();
  #heard = 0;
  #waiting = new Set();

  /**
   * @param {(text: string) => Promise<{n: number, ok: boolean, error?: string}>} post
   * @param {number} [patienceMs] how long the page waits to hear of a command that was answered
   */
  constructor(post, patienceMs = 2000) {
    this.#post = post;
    this.#patienceMs = patienceMs;
  }

  /**
   * Sends texts, which are made when their turn has come, until one of them fails.
   *
   * @param {() => string[]} makeTexts
   * @returns {Promise<boolean>} whether all were done; rejected if the register cannot be reached
   */
  send(makeTexts) {
    const sent = this.#last.then(() => this.#sendAll(makeTexts()));
    this.#last = sent.catch(() => {});
    return sent;
  }

  /** Resolved when all that has been given to it so far is done with. */
  idle() {
    return this.#last;
  }

  /** The page has heard of the command with this number, and of all that it changed. */
  hear(n) {
    this.#heard = n;
    for (const check of this.#waiting) check();
  }

  /** The page is connected anew, maybe to a register that has started later: it counts from 1. */
  forget() {
    this.#heard = 0;
  }

  async #sendAll(texts) {
    for (const text of texts) {
      const answer = await this.#post(text);
      await this.#untilHeard(answer.n);
      if (!answer.ok) return false;
    }
    return true;
  }

  #untilHeard(n) {
    return new Promise((resolve) => {
      const done = () => {
        clearTimeout(timer);
        this.#waiting.delete(check);
        resolve();
      };
      const check = () => { if (this.#heard >= n) done(); };
      const timer = setTimeout(done, this.#patienceMs);
      this.#waiting.add(check);
      check();
    });
  }
}
