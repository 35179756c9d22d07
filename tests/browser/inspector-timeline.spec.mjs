// What the inspector tells of the messages on the wire and of those that wait.
import { expect, test } from './support/fixtures.mjs';
import { ask, cell, chip, journalOf, now, openInspector, rows } from './support/inspector.mjs';
import { keepScreenshot } from './support/screenshots.mjs';

const receipt = { number: 7, state: 'open', positions: [{ name: 'Хлеб ржаной', price: 6490 }], total: 6490 };

test('A message appears while one looks on, with its times, status and size', async ({ page, display }) => {
  await openInspector(page, display);
  await ask(display, 'UpdateDocument', now() - 40);
  await display.post('/updateDocument', receipt);

  const row = rows(page, 'UpdateDocument');
  await expect(row).toHaveCount(1);
  await expect(cell(row, 'time')).toHaveText(/^\d\d:\d\d:\d\d\.\d{3}$/);
  await expect(cell(row, 'since')).toHaveText(/ (ms|s)$/);
  await expect(cell(row, 'way')).toHaveText('in');
  await expect(cell(row, 'status')).toHaveText('200');
  await expect(cell(row, 'waited')).toHaveText(/^[4-9]\d ms$|^\d{3} ms$|^\d+\.\d\d s$/);
  await expect(cell(row, 'answered')).toHaveText(/ (ms|s)$/);
  await expect(cell(row, 'size')).toHaveText(`${Buffer.byteLength(JSON.stringify(receipt))} B`);
  await expect(cell(row, 'superseded')).toHaveText('');
  await expect(cell(row, 'try')).toHaveText('');
});

test('The time of day is that of the message\'s arrival', async ({ page, display }) => {
  await openInspector(page, display);
  const before = Date.now();
  await display.post('/content', {});
  const after = Date.now();
  const shown = await cell(rows(page, 'Content'), 'time').textContent();
  const day = new Date(before).toLocaleDateString('en-CA', { timeZone: 'Europe/Moscow' });
  const at = Date.parse(`${day}T${shown}+03:00`);
  expect(at).toBeGreaterThanOrEqual(before - 50);
  expect(at).toBeLessThanOrEqual(after + 50);
});

test('What a message superseded is counted, and its times unfold', async ({ page, display }) => {
  await openInspector(page, display);
  for (const ago of [90, 80, 70]) await ask(display, 'UpdateDocument', now() - ago);
  await display.post('/updateDocument', receipt);

  const row = rows(page, 'UpdateDocument');
  await expect(cell(row, 'superseded')).toHaveText('2');
  await row.click();
  const older = page.locator('#details details');
  await expect(older.locator('li').first()).toBeHidden();
  await older.getByText('2 older ones').click();
  await expect(older.locator('li')).toHaveText([/^asked for at \d\d:\d\d:\d\d\.\d{3}$/, /^asked for at/]);
});

test('What the register tells late belongs to the message that has come', async ({ page, display }) => {
  await openInspector(page, display);
  const asked = now();
  await display.post('/updateDocument', receipt);
  await expect(rows(page, 'UpdateDocument')).toHaveCount(1);
  await expect(cell(rows(page, 'UpdateDocument'), 'waited')).toHaveText('');
  await ask(display, 'UpdateDocument', asked);
  await expect(cell(rows(page, 'UpdateDocument'), 'waited')).toHaveText(/ (ms|s)$/);
  await expect(page.locator('#pending')).toHaveText('nothing');
});

test('What waits is shown by urgency with an age that goes on, and goes when it comes', async ({ page, display }) => {
  await openInspector(page, display);
  await expect(page.locator('#pending')).toHaveText('nothing');
  await ask(display, 'PaymentDraft');
  await ask(display, 'UpdateDocument');
  await ask(display, 'UpdateDocument');
  const waiting = page.locator('#pending li');
  await expect(waiting).toHaveText([/^UpdateDocument .* supersedes 1$/, /^PaymentDraft /]);
  const age = async () => Number.parseFloat((await waiting.first().textContent()).match(/([\d.]+) s/)?.[1] ?? '0');
  await expect.poll(age).toBeGreaterThan(1);
  const first = await age();
  await expect.poll(age).toBeGreaterThan(first);

  await display.post('/updateDocument', receipt);
  await expect(waiting).toHaveText([/^PaymentDraft /]);
  await display.post('/paymentdraft', {});
  await expect(page.locator('#pending')).toHaveText('nothing');
});

test('A message that was refused waits with its tries, and the next try has its number', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/switches', { error: true });
  await ask(display, 'QrPayment');
  await display.post('/qrPayment', { close: true });
  await display.post('/qrPayment', { close: true });
  await expect(page.locator('#pending li')).toHaveText([/^QrPayment .*, tried 2 times$/]);
  await display.post('/switches', { error: false });
  await display.post('/qrPayment', { close: true });

  await expect(rows(page, 'QrPayment')).toHaveCount(3);
  const column = (name) => Promise.all([0, 1, 2].map((index) => cell(rows(page, 'QrPayment').nth(index), name).textContent()));
  expect(await column('status')).toEqual(['500', '500', '200']);
  expect(await column('try')).toEqual(['', '2', '3']);
  await expect(page.locator('#pending')).toHaveText('nothing');
  await expect(chip(page, 'QrPayment')).toHaveAccessibleDescription('1 asked, 1 sent, 0 superseded, 2 retried');
});

test('What is asked for while a message is being answered is shown as lost with it', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/switches', { slowMs: 200 });
  await display.post('/content', { data: 'first' });
  const message = (await journalOf(display)).entries.find(({ kind }) => kind === 'message');
  await ask(display, 'Content', message.ms + message.tookMs / 2);
  const lost = rows(page).filter({ hasText: 'lost' });
  await lost.click();
  await expect(page.locator('#details')).toContainText('Asked for while message 1 was being answered, and forgotten with it');
  await expect(page.locator('#pending')).toHaveText('nothing');
});

test('What the display refuses is shown with the reason', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/nowhere', {});
  await display.post('/configure', [1]);
  await cell(rows(page, '/nowhere'), 'status').click();
  await expect(page.locator('#details')).toContainText('404 · no message is posted to this path');
  await rows(page, 'Configure').click();
  await expect(page.locator('#details')).toContainText('400 · not a JSON object');
  await expect(page.getByRole('button', { name: 'Copy JSON' })).toBeHidden();
});

test('Types are chosen by their chips, which count them', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/configure', {});
  await ask(display, 'UpdateDocument');
  await display.post('/updateDocument', receipt);
  await display.post('/content', {});
  await expect(chip(page, 'UpdateDocument')).toHaveAccessibleDescription('1 asked, 1 sent, 0 superseded, 0 retried');
  await expect(rows(page)).toHaveCount(4); // and the note of the start

  await chip(page, 'UpdateDocument').click();
  await expect(rows(page)).toHaveCount(1);
  await chip(page, 'Notes').click();
  await expect(rows(page)).toHaveCount(2);
  await expect(chip(page, 'Notes')).toHaveAttribute('aria-pressed', 'true');
  await display.post('/content', {});
  await display.post('/updateDocument', receipt);
  await expect(rows(page)).toHaveCount(3);
  await chip(page, 'UpdateDocument').click();
  await chip(page, 'Notes').click();
  await expect(rows(page)).toHaveCount(6);
});

test('The search finds words of bodies', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/updateDocument', receipt);
  await display.post('/content', { data: 'Добро пожаловать' });
  await page.keyboard.press('/');
  await page.keyboard.type('хлеб');
  await expect(rows(page)).toHaveCount(1);
  await expect(rows(page, 'UpdateDocument')).toBeVisible();
  await page.getByRole('searchbox').fill('nothing has this');
  await expect(page.getByText('No row matches the filter.')).toBeVisible();
  await page.keyboard.press('Escape');
  await expect(rows(page)).toHaveCount(3);
});

test('A pause keeps the view and counts what comes meanwhile', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/content', {});
  await expect(rows(page, 'Content')).toHaveCount(1);
  await page.getByRole('button', { name: 'Pause' }).click();
  for (let count = 0; count < 3; count += 1) await display.post('/content', {});
  await expect(page.getByRole('button', { name: 'Resume (3 new)' })).toBeVisible();
  await expect(rows(page, 'Content')).toHaveCount(1);
  await page.getByRole('button', { name: 'Resume' }).click();
  await expect(rows(page, 'Content')).toHaveCount(4);
  await expect(page.getByRole('button', { name: 'Pause' })).toBeVisible();
});

test('A clear hides what has come', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/content', {});
  await expect(rows(page)).toHaveCount(2);
  await page.getByRole('button', { name: 'Clear' }).click();
  await expect(page.getByText('Nothing has arrived yet.')).toBeVisible();
  await display.post('/configure', {});
  await expect(rows(page)).toHaveCount(1);
  await expect(chip(page, 'Content')).toHaveAccessibleDescription('0 asked, 0 sent, 0 superseded, 0 retried');
});

test('The time line follows its end until one scrolls up', async ({ page, display }) => {
  await openInspector(page, display);
  const send = async (count, number) => { for (let i = 0; i < count; i += 1) await display.post('/content', { number }); };
  await send(60, 1);
  await expect(chip(page, 'Content')).toHaveAccessibleDescription(/ 60 sent/);
  await expect(rows(page).last()).toBeInViewport();
  const scrollTop = () => page.locator('#timeline').evaluate((element) => element.scrollTop);
  await page.locator('#timeline').evaluate((element) => { element.scrollTop -= 400; });
  await expect(page.getByRole('button', { name: 'Newest' })).toBeVisible();
  const place = await scrollTop();
  await send(5, 2);
  await expect(chip(page, 'Content')).toHaveAccessibleDescription(/ 65 sent/);
  expect(await scrollTop()).toBe(place);
  await page.getByRole('button', { name: 'Newest' }).click();
  await expect(page.getByRole('button', { name: 'Newest' })).toBeHidden();
  await expect(rows(page).last()).toBeInViewport();
});

test('A session is shown whole', async ({ page, display }) => {
  await openInspector(page, display);
  await ask(display, 'Configure');
  await display.post('/configure', { 'View.Style:showImages': false });
  for (let number = 1; number <= 12; number += 1) {
    for (let count = 0; count < number % 4; count += 1) await ask(display, 'UpdateDocument');
    await display.post('/updateDocument', { ...receipt, number });
  }
  await display.post('/switches', { error: true });
  await ask(display, 'QrPayment');
  await display.post('/qrPayment', { qrCode: 'https://example.org', amount: 6490, timeout: 60 });
  await ask(display, 'PriceList');
  await display.post('/actions', { do: 'ask-unknown-image' });
  await rows(page, 'UpdateDocument').last().click();
  await expect(page.locator('.json')).toContainText('Хлеб ржаной');
  await keepScreenshot(page, 'inspector-session');
});
