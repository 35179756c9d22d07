// What the screen does while the display is away.
import { join } from 'node:path';
import { expect, ofTheConnection, test } from './support/fixtures.mjs';
import { openScreen, purchase, receipt } from './support/screen.mjs';

const mark = (page) => page.locator('#connection');

test('The last state stays without a connection, and a display that has restarted shows it at once', async ({ page, folder, startDisplay, allowComplaints }) => {
  allowComplaints(ofTheConnection);
  const args = ['--state', join(folder, 'state.jsonl')];
  const display = await startDisplay({ args });
  await display.post('/configure', {});
  await display.post('/updateDocument', receipt(purchase));
  await openScreen(page, display);
  await expect(page.locator('#receipt .position')).toHaveCount(4);
  await expect(mark(page)).toHaveText('');

  await display.stop();
  await expect(mark(page)).toHaveText('Нет связи');
  await expect(page.locator('#receipt .position')).toHaveCount(4);

  const again = await startDisplay({ port: Number(new URL(display.url).port), args });
  await expect(mark(page)).toHaveText('');
  await expect(page.locator('#receipt .position')).toHaveCount(4);
  await again.post('/updateDocument', receipt(purchase.slice(1)));
  await expect(page.locator('#receipt .position')).toHaveCount(3);
});

test('A short interruption is not worth a word', async ({ page, startDisplay, allowComplaints }) => {
  allowComplaints(ofTheConnection);
  await page.clock.install();
  const display = await startDisplay();
  await openScreen(page, display);
  await page.clock.pauseAt(Date.now() + 3_600_000);
  const lost = page.waitForEvent('requestfailed');
  await display.stop();
  await lost;
  await page.clock.runFor(2500);
  await expect(mark(page)).toHaveText('');
  await page.clock.runFor(1000);
  await expect(mark(page)).toHaveText('Нет связи');
});

test('A display that has lost its messages shows that it waits for the register', async ({ page, display }) => {
  await display.post('/configure', {});
  await display.post('/updateDocument', receipt(purchase));
  await openScreen(page, display);
  await expect(page.locator('#receipt')).toBeVisible();
  await page.request.post(`${display.url}/actions`, { data: { do: 'restart-empty' } });
  await expect(page.locator('#receipt')).toBeHidden();
  await expect(page.locator('.greeting')).toHaveText('Ожидание кассы');
});
