// A shop for the tests of the cashier's page: a display, and a register that serves the page.
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { test as base, expect, ofTheConnection } from './fixtures.mjs';

export { expect, ofTheConnection };

/** The page of a register that has started. */
class Cashier {
  constructor(page, register, url) {
    this.page = page;
    this.register = register;
    this.url = url;
  }

  /** The commands that the page shows, as it shows them. */
  commands() {
    return this.page.locator('#log .command').allTextContents();
  }

  /** Waits until exactly these commands are shown. */
  async expectCommands(commands) {
    await expect.poll(() => this.commands()).toEqual(
      commands.map((command) => (typeof command === 'string' ? command : JSON.stringify(command))));
  }

  card(name) {
    return this.page.locator('.card', { hasText: name });
  }
}

/** Lets the plug-in hear the display's answer: a change before that goes with the message that is being
    posted, and reaches the display with the next one. */
export const letAnswer = () => new Promise((done) => { setTimeout(done, 300); });

/** Opens a receipt on the cashier's page, which may be in a frame, and waits until the display has it. */
export async function openReceipt(page, display) {
  await page.locator('#new-receipt').click();
  await expect.poll(() => display.messages('/updateDocument')).toHaveLength(1);
  await letAnswer();
}

export const test = base.extend({
  /** The display of the shop, which keeps a record: `messages(path)` are the bodies it got. */
  shopDisplay: async ({ folder, startDisplay }, use) => {
    const record = join(folder, 'record.jsonl');
    const display = await startDisplay({ args: ['--record', record] });
    display.messages = async (path) => (await readFile(record, 'utf8')).split('\n').slice(0, -1)
      .map((line) => JSON.parse(line)).filter((message) => message.path === path).map(({ body }) => body);
    await use(display);
  },

  /** Starts the register and opens its page; `args` are further options of the register. */
  openCashier: async ({ page, shopDisplay, startRegister }, use) => {
    await use(async ({ args = [] } = {}) => {
      const register = await startRegister({
        settings: `[ViewConnector]\nport = 0\ninterval = 20\nserver = "${shopDisplay.url}"\n`,
        args: ['--page', '0', ...args],
      });
      const address = /Cashier's page at (http:\/\/127\.0\.0\.1:\d+)\//;
      await expect.poll(() => register.errors).toMatch(address);
      const [, url] = register.errors.match(address);
      await page.goto(url);
      await expect(page.locator('.card').first()).toBeVisible();
      return new Cashier(page, register, url);
    });
  },
});
