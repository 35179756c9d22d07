// The inspector's page as a whole: its connection, its looks, its size.
import { expect, ofTheConnection, test } from './support/fixtures.mjs';
import { violations } from './support/axe.mjs';
import { ask, cell, chip, openInspector, rows } from './support/inspector.mjs';
import { overflowingTexts } from './support/overflow.mjs';
import { reconnect } from './support/screen.mjs';
import { keepScreenshot } from './support/screenshots.mjs';

/** Something of everything that the page can show. */
async function fill(display) {
  await ask(display, 'Configure');
  await display.post('/configure', { 'View.Style:positionFontType': 'Sans Serif', none: null, yes: true, number: 14 });
  for (let count = 0; count < 30; count += 1) {
    await ask(display, 'UpdateDocument');
    await ask(display, 'UpdateDocument');
    await display.post('/updateDocument', { number: count, positions: [{ name: 'Хлеб '.repeat(60), price: 1e12 }] });
  }
  await display.post(`/${'a-path-that-is-long'.repeat(8)}`, {});
  await display.post('/switches', { error: true });
  for (const type of ['QrPayment', 'PriceList', 'Content', 'PaymentDraft']) await ask(display, type);
  await display.post('/qrPayment', { qrCode: 'https://example.org' });
  await display.post('/qrPayment', { qrCode: 'https://example.org' });
  await display.post('/actions', { do: 'ask-unknown-image' });
}

async function openFilled(page, display) {
  await fill(display);
  await openInspector(page, display);
  await expect(page.locator('#pending li').first()).toContainText('QrPayment');
  await page.locator('#recording').setInputFiles({
    name: 'a-recording-with-a-long-name-of-the-whole-day.jsonl',
    mimeType: 'text/plain',
    buffer: Buffer.from('{"status":500}\nbroken'),
  });
  await expect(page.getByRole('alert')).toBeVisible();
  await rows(page, 'UpdateDocument').last().click();
  await page.locator('#details summary').click();
}

for (const colorScheme of ['light', 'dark'])
  test(`The page is accessible in the ${colorScheme} scheme`, async ({ page, display }) => {
    await page.emulateMedia({ colorScheme });
    await openFilled(page, display);
    await chip(page, 'UpdateDocument').click();
    await display.post('/switches', { down: true, slowMs: 3000 });
    await expect(page.getByRole('switch', { name: 'Slow' })).toHaveAttribute('aria-checked', 'true');
    expect(await violations(page)).toEqual([]);
    await rows(page, 'UpdateDocument').last().hover();
    expect(await violations(page)).toEqual([]);
    await chip(page, 'UpdateDocument').click();
    await keepScreenshot(page, `inspector-${colorScheme}`);
  });

for (const [width, height] of [[800, 480], [1024, 600], [1280, 720], [1920, 1080], [800, 1280]])
  test(`Every text has its room at ${width}x${height}`, async ({ page, display }) => {
    await page.setViewportSize({ width, height });
    await openFilled(page, display);
    expect(await overflowingTexts(page)).toEqual([]);
    expect(await page.evaluate(() => document.documentElement.scrollWidth)).toBeLessThanOrEqual(width);
    expect(await page.evaluate(() => document.documentElement.scrollHeight)).toBeLessThanOrEqual(height);
    await expect(rows(page).last()).toBeVisible();
    await keepScreenshot(page, `inspector-${width}x${height}`);
  });

test('The screen is beside the wire and can be folded away', async ({ page, display }) => {
  await openInspector(page, display);
  const screen = page.locator('#screen');
  const box = await screen.boundingBox();
  expect(box.width / box.height).toBeGreaterThan(1);
  const details = page.locator('#details');
  const before = (await details.boundingBox()).height;
  await page.getByRole('button', { name: 'Screen' }).click();
  await expect(screen).toBeHidden();
  expect((await details.boundingBox()).height).toBeGreaterThan(before + 100);
  await page.getByRole('button', { name: 'Screen' }).click();
  await expect(screen).toBeVisible();
});

test('A lost connection is shown, and the journal read anew when it is back', async ({ page, startDisplay, allowComplaints }) => {
  allowComplaints(ofTheConnection);
  const first = await startDisplay();
  await openInspector(page, first);
  await first.post('/content', { number: 1 });
  await first.post('/content', { number: 2 });
  await expect(rows(page, 'Content')).toHaveCount(2);
  await first.stop();
  await expect(page.getByText('Connection lost, trying again…')).toBeVisible();
  await expect(rows(page, 'Content')).toHaveCount(2);
  await page.getByRole('button', { name: 'Restart empty' }).click();
  await expect(page.getByRole('alert')).toContainText('The display does not answer.');

  const second = await startDisplay({ port: Number(new URL(first.url).port) });
  await second.post('/content', { number: 3 });
  await expect(page.getByText('Connected', { exact: true })).toBeVisible();
  await expect(rows(page, 'Content')).toHaveCount(1);
  await second.post('/content', { number: 4 });
  await expect(rows(page, 'Content')).toHaveCount(2);
  await expect(chip(page, 'Content')).toHaveAccessibleDescription(/ 2 sent/);
});

test('A connection that comes back to the same display shows nothing twice', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/content', { number: 1 });
  await expect(rows(page, 'Content')).toHaveCount(1);
  await reconnect(page);
  await display.post('/content', { number: 2 });
  await expect(rows(page, 'Content')).toHaveCount(2);
  await expect(chip(page, 'Content')).toHaveAccessibleDescription(/ 2 sent/);
});

test('With thousands of entries few rows exist, and the newest is among them', async ({ page, display }) => {
  const many = 1500; // and as many entries of what was asked for
  for (let sent = 0; sent < many; sent += 10) {
    const numbers = Array.from({ length: 10 }, (_, index) => sent + index);
    await Promise.all(numbers.map(() => ask(display, 'Content')));
    await Promise.all(numbers.map((number) => display.post('/content', { number, text: 'x'.repeat(400) })));
  }
  await openInspector(page, display);
  await expect(chip(page, 'Content')).toHaveAccessibleDescription(/^1500 asked, 1500 sent/);
  expect(await rows(page).count()).toBeLessThan(80);

  for (let number = 0; number < 40; number += 1) await display.post('/content', { number });
  await expect(chip(page, 'Content')).toHaveAccessibleDescription(/^1500 asked, 1540 sent/);
  await page.locator('#timeline').focus();
  await page.keyboard.press('End');
  await expect(cell(rows(page).last(), 'type')).toHaveText('Content');
  await expect(page.locator('.json')).toContainText('"number": 39');
});
