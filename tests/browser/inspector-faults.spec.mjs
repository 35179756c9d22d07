// The switches and actions, and what they do on the wire.
import { expect, test } from './support/fixtures.mjs';
import { cell, now, openInspector, rows, startPlugin } from './support/inspector.mjs';

const fault = (page, name) => page.getByRole('switch', { name });
const isOn = (page, name, on = true) => expect(fault(page, name)).toHaveAttribute('aria-checked', `${on}`);

test('A display that is down answers nothing', async ({ page, display }) => {
  await openInspector(page, display);
  await fault(page, 'Down').click();
  await isOn(page, 'Down');
  await expect(display.post('/content', { number: 1 })).rejects.toThrow();
  await expect(cell(rows(page, 'Content'), 'status')).toHaveText('cut');
  await expect(cell(rows(page, 'Content'), 'status')).toHaveAttribute('title', 'The connection was closed without an answer');
  await fault(page, 'Down').click();
  await isOn(page, 'Down', false);
  expect(await display.post('/content', { number: 2 })).toBe(200);
});

test('A display that fails answers 500', async ({ page, display }) => {
  await openInspector(page, display);
  await fault(page, 'Answer 500').click();
  await isOn(page, 'Answer 500');
  expect(await display.post('/content', {})).toBe(500);
  await expect(cell(rows(page, 'Content'), 'status')).toHaveText('500');
  await fault(page, 'Answer 500').click();
  await isOn(page, 'Answer 500', false);
  expect(await display.post('/content', {})).toBe(200);
});

test('A slow display takes at least as long as is set', async ({ page, display }) => {
  await openInspector(page, display);
  await page.getByLabel('Answers late by').fill('300');
  await fault(page, 'Slow').click();
  await isOn(page, 'Slow');
  const start = now();
  expect(await display.post('/content', {})).toBe(200);
  expect(now() - start).toBeGreaterThanOrEqual(299);
  await expect(cell(rows(page, 'Content'), 'answered')).toHaveText(/^[3-9]\d\d ms$| s$/);

  await page.getByLabel('Answers late by').fill('1');
  await page.getByLabel('Answers late by').press('Tab');
  await expect(rows(page).filter({ hasText: '1 ms slow' })).toBeVisible();
  await fault(page, 'Slow').click();
  await isOn(page, 'Slow', false);
});

test('A message that was sent again before its answer is shown as answered too late', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/switches', { slowMs: 500 });
  await Promise.all([display.post('/content', { number: 1 }), display.post('/content', { number: 2 })]);
  await expect(rows(page, 'Content')).toHaveCount(2);
  await expect(cell(rows(page, 'Content').first(), 'status')).toHaveText('late');
  await expect(cell(rows(page, 'Content').last(), 'try')).toHaveText('2');
});

test('Two inspectors agree', async ({ page, display, context }) => {
  await openInspector(page, display);
  const other = await openInspector(await context.newPage(), display);
  await fault(page, 'Answer 500').click();
  await isOn(other, 'Answer 500');
  await other.getByLabel('Answers late by').fill('1200');
  await fault(other, 'Slow').click();
  await isOn(page, 'Slow');
  await expect(page.getByLabel('Answers late by')).toHaveValue('1200');
  await fault(page, 'Slow').click();
  await isOn(other, 'Slow', false);
  await other.reload();
  await isOn(other, 'Answer 500');
  await isOn(other, 'Down', false);
});

test('A restart without memory empties the screen', async ({ page, display }) => {
  await openInspector(page, display);
  await display.post('/configure', {});
  const bread = { name: 'Хлеб ржаной', quantity: 1, price: 6490, sum: 6490, total: 6490 };
  await display.post('/updateDocument', { number: 7, state: 'open', positions: [bread], total: 6490 });
  const screen = page.frameLocator('iframe');
  await expect(screen.getByText('Хлеб ржаной').first()).toBeVisible();
  await page.getByRole('button', { name: 'Restart empty' }).click();
  await expect(screen.getByText('Хлеб ржаной').first()).toBeHidden();
  await expect(rows(page).filter({ hasText: 'restart-empty' })).toBeVisible();
});

test('Requests of the actions reach the plug-in and are told of', async ({ page, startDisplay }) => {
  const plugin = await startPlugin();
  try {
    const display = await startDisplay({ pluginUrl: plugin.url });
    await openInspector(page, display);
    await page.getByRole('button', { name: 'Ask for unknown image' }).click();
    await expect.poll(() => plugin.requests.length).toBe(1);
    expect(plugin.requests[0]).toMatchObject({ type: 'request', name: 'getImage' });
    await expect(cell(rows(page, 'getImage'), 'way')).toHaveText('out');
    await expect(cell(rows(page, 'getImage'), 'status')).toHaveText('ok');
    await rows(page, 'getImage').click();
    await expect(page.locator('.json')).toContainText('"GoodsCode"');

    // An advertisement that nothing but the actions will report of: it lasts an hour.
    await display.post('/showAD', { id: 'a', index: 1, url: `${plugin.url}/picture`, time: 3600 });
    const results = () => plugin.requests.filter(({ name }) => name === 'adResult').map(({ value }) => value);
    await page.getByRole('button', { name: 'Duplicate ad result' }).click();
    await expect.poll(() => results()).toEqual([true]);
    await page.getByRole('button', { name: 'Failed ad result' }).click();
    await expect.poll(() => results()).toEqual([true, false]);
    await expect(rows(page, 'adResult')).toHaveCount(2);
  } finally {
    await plugin.stop();
  }
});

test('An action that cannot be done says why', async ({ page, display, allowComplaints }) => {
  allowComplaints(/409/);
  await openInspector(page, display);
  await page.getByRole('button', { name: 'Failed ad result' }).click();
  await expect(page.getByRole('alert')).toContainText('no advertisement has come yet');
});

test('A request that the plug-in does not take is shown as failed', async ({ page, display }) => {
  await openInspector(page, display);
  await page.getByRole('button', { name: 'Ask for unknown image' }).click();
  await expect(cell(rows(page, 'getImage'), 'status')).toHaveText('failed');
});
