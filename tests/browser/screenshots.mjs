// Makes the pictures of the README from the running sample shop: screenshots.mjs FOLDER
import { chromium } from '@playwright/test';
import { mkdtemp, rm } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import config from './playwright.config.mjs';
import { Program, sourcePath } from './support/program.mjs';
import { settled } from './support/screen.mjs';

const size = { width: 1600, height: 900 };
const folder = process.argv[2];
const home = await mkdtemp(join(tmpdir(), 'viewconnector-'));
const programs = [];

async function start(name, args) {
  programs.push(new Program(name, args, home));
  return programs.at(-1);
}

async function take(browser, url, name, prepare) {
  const page = await browser.newPage({ viewport: size, locale: 'ru-RU', timezoneId: 'Europe/Moscow' });
  await page.goto(url);
  await prepare(page);
  await page.screenshot({ path: join(folder, `${name}.png`) });
  await page.close();
}

async function shoot(browser) {
  const display = await start('display', ['--port', '38080', '--state', '']);
  const [, address] = await display.printed(/^Display at (http:\S+),/m);
  await start('adservice', ['--port', '38083', '--ads', sourcePath('demo/ads'), '--answer-after', '600000']);
  const register = await start('register', ['--config', sourcePath('demo/shop.toml'),
    '--images', sourcePath('demo/pictures'), '--commands', '-', '--stay',
    '--page', '38082', '--inspector', address]);

  register.command({ do: 'open' });
  for (const goods of ['100', '104', '112', '117', '126']) register.command({ do: 'sell', goods });
  register.command({ do: 'discount', position: 2, percent: 15 });
  const lastPicture = /ImageData {6,}.*"126"/;
  await display.printed(lastPicture);

  await take(browser, 'http://127.0.0.1:38082/shop', 'shop', async (page) => {
    await page.frameLocator('iframe').last().getByText('Итого').waitFor();
    for (const frame of page.frames()) await settled(frame);
  });
  register.command({ do: 'qr' });
  await display.printed(/QrPayment/);
  await take(browser, `${address}/inspector`, 'inspector', async (page) => {
    await fetch(`${address}/switches`, { method: 'POST', body: '{"error":true}' });
    for (const goods of ['100', '101', '102']) register.command({ do: 'sell', goods });
    register.command({ do: 'content', text: 'Добро пожаловать!' });
    await page.getByText('500', { exact: true }).nth(2).waitFor();
    await page.locator('#rows .row', { hasText: 'UpdateDocument' }).last().click();
  });
}

const browser = await chromium.launch(config.use.launchOptions);
try {
  await shoot(browser);
} finally {
  await browser.close();
  await Promise.all(programs.map((program) => program.stop()));
  await rm(home, { recursive: true });
}
