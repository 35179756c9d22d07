// Exports, and their replay.
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { expect, test } from './support/fixtures.mjs';
import { ask, cell, chip, journalOf, now, openInspector, rows } from './support/inspector.mjs';

const session = [
  ['/configure', { 'View.Style:showImages': true }],
  ['/updateDocument', { number: 1, positions: [{ name: 'Хлеб "ржаной"\nс тмином' }] }],
  ['/image', { id: { type: 'GoodsCode', value: '100' }, uri: `data:image/png;base64,${'A'.repeat(5000)}` }],
  ['/updateDocument', { number: 1, positions: [] }],
];

const send = async (display, messages) => { for (const [path, body] of messages) await display.post(path, body); };

async function exported(page) {
  const [download] = await Promise.all([page.waitForEvent('download'), page.getByRole('button', { name: 'Export' }).click()]);
  expect(download.suggestedFilename()).toMatch(/^display-\d{8}T\d{6}\.jsonl$/);
  return readFile(await download.path(), 'utf8');
}

const file = (text, name = 'session.jsonl') => ({ name, mimeType: 'application/jsonl', buffer: Buffer.from(text) });
const choose = (page, text) => page.locator('#recording').setInputFiles(file(text));
const start = (page) => page.getByRole('button', { name: 'Start', exact: true }).click();
const status = (page) => page.locator('#replay-status');
const line = (ms, number) => (
  `${JSON.stringify({ n: number, ms, path: '/content', body: { number }, status: 200 })}\n`);

/** What came of messages, without what differs each time. */
async function messagesOf(display) {
  const { entries } = await journalOf(display);
  return entries.filter(({ kind }) => kind === 'message');
}
const contentOf = (messages) => messages.map(({ path, body, status: answer }) => [path, body, answer]);

test('An export holds what was sent, one entry a line', async ({ page, display }) => {
  await openInspector(page, display);
  await ask(display, 'Configure', 1000.5);
  await send(display, session);
  await display.post('/nowhere', {});
  await expect(rows(page)).toHaveCount(6); // with the note of the start; what was asked for is no row

  const lines = (await exported(page)).trimEnd().split('\n').map((text) => JSON.parse(text));
  const { entries } = await journalOf(display);
  expect(lines).toEqual(entries);
  expect(lines.filter(({ kind }) => kind === 'message').map(({ path, body, status: answer }) => [path, body, answer]))
    .toEqual([...session.map(([path, body]) => [path, body, 200]), ['/nowhere', null, 404]]);
  expect(lines.find(({ kind }) => kind === 'asked')).toMatchObject({ type: 'Configure', ms: 1000.5 });
});

test('An export leaves out what was cleared, not what is filtered', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/content', { number: 1 });
  await expect(rows(page, 'Content')).toHaveCount(1);
  await page.getByRole('button', { name: 'Clear' }).click();
  await display.post('/content', { number: 2 });
  await display.post('/configure', {});
  await chip(page, 'Content').click();
  await expect(rows(page)).toHaveCount(1);
  const lines = (await exported(page)).trimEnd().split('\n').map((text) => JSON.parse(text));
  expect(lines.map(({ path }) => path)).toEqual(['/content', '/configure']);
});

test('The replay of an export leads to the same messages on another display, marked as replayed', async ({
  page, display, startDisplay,
}) => {
  await openInspector(page, display);
  await send(display, session.slice(0, 2));
  await display.post('/switches', { error: true });
  await display.post('/qrPayment', { close: true });
  await display.post('/switches', { error: false });
  await send(display, session.slice(2));
  await expect(rows(page, 'UpdateDocument')).toHaveCount(2);
  const recording = await exported(page);

  const other = await startDisplay();
  await openInspector(page, other);
  await choose(page, recording);
  await expect(page.locator('#replay-summary'))
    .toHaveText(/^session\.jsonl: 4 messages, .*, 1 left out that the display had not accepted$/);
  await page.getByLabel('Speed').selectOption('at once');
  await start(page);
  await expect(status(page)).toHaveText('4 of 4 sent; done');

  const replayed = await messagesOf(other);
  expect(contentOf(replayed)).toEqual(contentOf((await messagesOf(display)).filter((message) => message.status === 200)));
  expect(replayed.every(({ replay }) => replay)).toBe(true);
  expect((await messagesOf(display)).some(({ replay }) => replay)).toBe(false);
  await expect(cell(rows(page, 'ImageData'), 'way')).toHaveText('replay');
});

test('What was recorded by --record is replayed at its distances', async ({ page, folder, startDisplay }) => {
  const record = join(folder, 'record.jsonl');
  const display = await startDisplay({ args: ['--record', record] });
  await send(display, session);
  const text = (await readFile(record, 'utf8')).trimEnd().split('\n')
    .map((recorded, index) => `${JSON.stringify({ ...JSON.parse(recorded), ms: 500 + index * 150 })}\n`).join('');

  const other = await startDisplay();
  await openInspector(page, other);
  await choose(page, text);
  const before = now();
  await start(page);
  await expect(status(page)).toHaveText('4 of 4 sent; done');
  const replayed = await messagesOf(other);
  expect(contentOf(replayed)).toEqual(session.map(([path, body]) => [path, body, 200]));
  expect(replayed[3].ms - before).toBeGreaterThan(440);
});

test('Ten times the speed takes a tenth of the time', async ({ page, display }) => {
  await openInspector(page, display);
  await choose(page, line(0, 1) + line(10_000, 2));
  await page.getByLabel('Speed').selectOption('× 10');
  const before = now();
  await start(page);
  await expect(status(page)).toHaveText('2 of 2 sent; done');
  const [, second] = await messagesOf(display);
  expect(second.ms - before).toBeGreaterThan(990);
  expect(second.ms - before).toBeLessThan(10_000);
});

test('A replay is stopped', async ({ page, display }) => {
  await openInspector(page, display);
  await choose(page, line(0, 1) + line(3_600_000, 2));
  await start(page);
  await expect(status(page)).toHaveText('1 of 2 sent');
  await expect(page.getByRole('button', { name: 'Start', exact: true })).toBeDisabled();
  await page.getByRole('button', { name: 'Stop' }).click();
  await expect(status(page)).toHaveText('1 of 2 sent; stopped');
  await expect(page.getByRole('button', { name: 'Start', exact: true })).toBeEnabled();
  expect(await messagesOf(display)).toHaveLength(1);
});

test('A file that is chosen during a replay takes its place', async ({ page, display }) => {
  await openInspector(page, display);
  await choose(page, line(0, 1) + line(3_600_000, 2));
  await start(page);
  await expect(status(page)).toHaveText('1 of 2 sent');
  await choose(page, line(0, 3));
  await expect(page.locator('#replay-summary')).toHaveText('session.jsonl: 1 message, 0.0 ms');
  await expect(page.getByRole('button', { name: 'Start', exact: true })).toBeEnabled();
  await expect(status(page)).toHaveText('');
  await start(page);
  await expect(status(page)).toHaveText('1 of 1 sent; done');
  expect((await messagesOf(display)).map(({ body }) => body.number)).toEqual([1, 3]);
});

test('A broken line is named with its number and nothing is sent', async ({ page, display }) => {
  await openInspector(page, display);
  await choose(page, `${line(0, 1)}\n{"path":"/content","bo`);
  await expect(page.getByRole('alert')).toHaveText(/session\.jsonl: Line 3 is no JSON: /);
  await expect(page.getByRole('button', { name: 'Start', exact: true })).toBeDisabled();
  expect(await messagesOf(display)).toHaveLength(0);
  await page.getByRole('alert').getByRole('button', { name: 'Close' }).click();
  await expect(page.getByRole('alert')).toBeHidden();
});

test('A replay tells what the display does not accept', async ({ page, display, allowComplaints }) => {
  allowComplaints(/500/);
  await openInspector(page, display);
  await display.post('/switches', { error: true });
  await choose(page, line(0, 1) + line(1, 2));
  await start(page);
  await expect(status(page)).toHaveText('2 of 2 sent, 2 not accepted; done');
  await expect(rows(page, 'Content')).toHaveCount(2);
  await expect(cell(rows(page, 'Content').last(), 'try')).toHaveText('');
});
