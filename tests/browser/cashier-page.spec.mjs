import { writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { violations } from './support/axe.mjs';
import { expect, test } from './support/cashier.mjs';
import { sourcePath } from './support/program.mjs';
import { overflowingTexts } from './support/overflow.mjs';
import { keepScreenshot } from './support/screenshots.mjs';

const sizes = [[1024, 600], [1280, 800], [960, 1040], [768, 1024], [800, 1280], [1920, 1080]];

/** What the page looks like while it is used: a name, and what leads to it from the state before. */
const states = [
  ['empty', async () => {}],
  ['selling', async (page) => {
    for (const goods of ['100', '2*101', '3*104', '12*117', '0,734*108', '111']) await page.keyboard.type(`${goods}\n`);
    await expect(page.getByRole('option')).toHaveCount(6);
    for (const key of ['F7', 'F8']) await page.keyboard.press(key);
    await page.keyboard.type('999\n');
    await expect(page.locator('#problem')).not.toBeEmpty();
  }],
  ['quantity', (page) => page.keyboard.press('F3')],
  ['discount', async (page) => {
    await page.keyboard.press('Escape');
    await page.keyboard.press('F4');
  }],
  ['payment', async (page) => {
    await page.keyboard.press('Enter');
    await expect(page.locator('#discount-dialog')).toBeHidden();
    await page.keyboard.press('F9');
  }],
  ['paid', async (page) => {
    await page.keyboard.type('5000\n');
    await expect(page.locator('#receipt-state')).toHaveText('оплачен');
  }],
  ['screen', (page) => page.keyboard.press('F10')],
  ['commands', async (page) => {
    await page.keyboard.press('Escape');
    await page.keyboard.press('F1');
  }],
];

/** Descriptions of what is too small to be tapped. */
const smallTargets = (page) => page.evaluate(() => [...document.querySelectorAll('button, a, input, textarea, .position, .choice')]
  .filter((target) => target.checkVisibility() && target.type !== 'radio')
  .map((target) => [target, target.getBoundingClientRect()])
  .filter(([, box]) => box.width < 43.5 || box.height < 43.5)
  .map(([target, box]) => `${target.id || target.className || target.textContent}: ${box.width}x${box.height}`));

const pageScrolls = (page) => page.evaluate(() => document.documentElement.scrollWidth > innerWidth
  || document.documentElement.scrollHeight > innerHeight);

test('every state fits every window, can be tapped, and is accessible', async ({ openCashier, page }) => {
  await openCashier();
  for (const [state, lead] of states) {
    await lead(page);
    for (const [width, height] of sizes) {
      await page.setViewportSize({ width, height });
      const where = `${state} at ${width}x${height}`;
      expect.soft(await overflowingTexts(page), where).toEqual([]);
      expect.soft(await smallTargets(page), where).toEqual([]);
      expect.soft(await pageScrolls(page), where).toBe(false);
      await keepScreenshot(page, `cashier-${state}-${width}x${height}`);
    }
    await page.setViewportSize({ width: 1024, height: 600 });
    expect.soft(await violations(page), state).toEqual([]);
  }
});

test('the focus is seen on each thing that Tab leads to, and every key is shown on its button', async ({ openCashier, page }) => {
  await openCashier();
  for (let i = 0; i < 12; ++i) {
    await page.keyboard.press('Tab');
    expect(await page.evaluate(() => getComputedStyle(document.activeElement).outlineStyle)).toBe('solid');
  }
  const unnamed = await page.evaluate(() => [...document.querySelectorAll('button[data-key]')]
    .filter((button) => !button.querySelector('kbd')?.textContent).map((button) => button.id));
  expect(unnamed).toEqual([]);
});

test('the keypad takes the place of a keyboard', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await cashier.card('Батон').click();
  await page.locator('#pay').click();
  for (const key of ['5', '0', 'Стереть', '0', '0']) await page.locator('#cash-keys').getByRole('button', { name: key }).click();
  await expect(page.locator('#cash')).toHaveValue('500');
  await expect(page.locator('#change')).toHaveText(/Сдача 447,10/);
});

test('the commands are called up over the page where there is no room beside it', async ({ openCashier, page }) => {
  await page.setViewportSize({ width: 1024, height: 600 });
  const cashier = await openCashier();
  await expect(page.locator('#commands')).toBeHidden();
  await cashier.card('Батон').click();
  await expect(page.locator('#last')).toHaveText('{"do":"sell","goods":"101"} → ok');
  await page.keyboard.press('F1');
  await expect(page.locator('#line')).toBeFocused();
  await page.keyboard.press('Escape');
  await expect(page.locator('#commands')).toBeHidden();
  await expect(page.locator('#open-commands')).toBeFocused();
});

test('names that look like HTML are shown as they are', async ({ folder, page, start }) => {
  const evil = '<img src=x onerror="document.title=1">';
  await writeFile(join(folder, 'goods.toml'), `goods = [{ code = '<b>1', name = '${evil}', unit = '<i>', price = 100 }]\n`);
  await writeFile(join(folder, 'shop.toml'), '[Shop]\ngoods = "goods.toml"\n[ViewConnector]\nport = 0\nserver = "http://127.0.0.1:9"\n');
  const register = start('register', ['--config', join(folder, 'shop.toml'), '--page', '0', '--commands', '-', '--stay']);
  await expect.poll(() => register.errors).toMatch(/page at (\S+)/);
  await page.goto(register.errors.match(/page at (\S+)/)[1]);
  await page.locator('.card').click();
  await expect(page.getByRole('option')).toContainText(evil);
  register.command({ do: 'document', properties: { number: evil, state: evil, positions: [{ name: evil, unit: evil }, 5], sum: evil } });
  await expect(page.locator('#receipt-name')).toHaveText(`Чек № ${evil}`);
  await page.keyboard.press('F1');
  await page.locator('#line').fill(`{"do":"${evil.replaceAll('"', '\\"')}"}`);
  await page.locator('#line').press('Enter');
  await expect(page.locator('#problem')).toContainText(evil);
  expect(await page.locator('img[src=x], .position i, .card b b').count()).toBe(0);
  expect(await page.title()).toBe('Касса');
  await page.goto('about:blank');
});

test('a catalogue without pictures shows letters instead', async ({ folder, page, start }) => {
  await writeFile(join(folder, 'shop.toml'), `[Shop]\ngoods = "${sourcePath('demo/goods.toml')}"\n[ViewConnector]\nport = 0\nserver = "http://127.0.0.1:9"\n`);
  const register = start('register', ['--config', join(folder, 'shop.toml'), '--page', '0']);
  await expect.poll(() => register.errors).toMatch(/page at (\S+)/);
  await page.goto(register.errors.match(/page at (\S+)/)[1]);
  await expect(page.locator('.card .no-picture')).toHaveCount(36);
  await page.goto('about:blank');
});

test('pages of other sites are refused, unknown paths are not found', async ({ openCashier }) => {
  const { url } = await openCashier();
  const order = (headers) => fetch(`${url}/commands`, { method: 'POST', headers, body: '{"do":"open"}' });
  expect((await order({ Origin: 'http://example.com' })).status).toBe(403);
  expect((await order({ Origin: 'null' })).status).toBe(403);
  expect((await order({ Origin: url })).status).toBe(200);
  expect((await fetch(`${url}/goods`, { headers: { Origin: 'http://example.com' } })).status).toBe(403);
  for (const path of ['/none', '/cashier/none.js', '/pictures/none', '/cashier/..%2Fmain.cpp'])
    expect((await fetch(url + path)).status, path).toBe(404);
  expect((await fetch(`${url}/commands`)).status).toBe(405);
});
