// What every test of the pages gets: programs that end with it, and a page that may not complain.
import { test as base, expect } from '@playwright/test';
import { mkdtemp, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { Program, sourcePath } from './program.mjs';

export { expect };

/** What the browser says of a program that ends or has ended. */
export const ofTheConnection = /ERR_|\b503\b/;

/** A display that has started: its address, and messages to it as the plug-in posts them. */
class Display {
  constructor(program, url) {
    this.program = program;
    this.url = url;
  }

  async post(path, body) {
    const answer = await fetch(new URL(path, this.url), {
      method: 'POST',
      headers: { 'Content-Type': 'application/json' },
      body: JSON.stringify(body),
    });
    return answer.status;
  }

  stop() {
    return this.program.stop();
  }
}

export const test = base.extend({
  /** A folder of the test's own. */
  folder: async ({}, use) => {
    const folder = await mkdtemp(join(tmpdir(), 'viewconnector-'));
    await use(folder);
    await rm(folder, { recursive: true });
  },

  /** Starts a program that is ended with the test. */
  start: async ({ folder }, use) => {
    const started = [];
    await use((name, args) => {
      const program = new Program(name, args, folder);
      started.push(program);
      return program;
    });
    await Promise.all(started.map((program) => program.stop()));
  },

  /** Starts a display at a port of the system's choice unless one is given. */
  startDisplay: async ({ start }, use) => {
    await use(async ({ port = 0, pluginUrl = 'http://127.0.0.1:9', args = [] } = {}) => {
      const program = start('display', ['--port', `${port}`, '--plugin-url', pluginUrl, ...args]);
      const [, url] = await program.printed(/^Display at (http:\/\/127\.0\.0\.1:\d+)/m);
      return new Display(program, url);
    });
  },

  display: async ({ startDisplay }, use) => {
    await use(await startDisplay());
  },

  /** Starts a register with the sample shop's goods; `settings` is TOML that takes the place of the
      sample shop's own. */
  startRegister: async ({ folder, start }, use) => {
    await use(async ({ settings, args = [] }) => {
      const config = join(folder, 'shop.toml');
      await writeFile(config, `[Host]\nlanguage = "ru"\n[Shop]\ngoods = "${sourcePath('demo/goods.toml')}"\n${settings}`);
      return start('register', ['--config', config, '--images', sourcePath('demo/pictures'), ...args]);
    });
  },

  /** Every page must stay without errors in its console but for those that the test allows, as the
      browser's own about a connection that the test cuts: `allowComplaints(/pattern/)`. */
  allowComplaints: [async ({ context, start }, use) => { // looks at them before the programs end
    const complaints = [];
    const allowed = [];
    context.on('console', (message) => {
      if (message.type() === 'error' || message.type() === 'warning') complaints.push(message.text());
    });
    context.on('weberror', (error) => complaints.push(String(error.error())));
    await use((pattern) => allowed.push(pattern));
    const others = complaints.filter((complaint) => !allowed.some((pattern) => pattern.test(complaint)));
    expect(others, 'errors in the console').toEqual([]);
  }, { auto: true }],
});
