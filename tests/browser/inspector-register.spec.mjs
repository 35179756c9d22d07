// What a real register asks for, as the inspector shows it.
import { expect, test } from './support/fixtures.mjs';
import { cell, chip, openInspector, rows } from './support/inspector.mjs';

const sell = (register, goods) => goods.forEach((code) => register.command({ do: 'sell', goods: code }));

test('Messages of a register are shown with what they waited, superseded and how often they were tried', async ({ page, display, startRegister }) => {
  await openInspector(page, display);
  const register = await startRegister({
    settings: `[ViewConnector]\nport = 0\ninterval = 200\nserver = "${display.url}"\n`,
    args: ['--commands', '-', '--stay', '--inspector', display.url],
  });
  await expect(chip(page, 'Configure')).toHaveAccessibleDescription(/^1 asked, 1 sent, 0 superseded/);
  await page.getByRole('switch', { name: 'Answer 500' }).click();
  await expect(rows(page).filter({ hasText: 'error on' })).toBeVisible();
  register.command({ do: 'open' });
  await expect(cell(rows(page, 'UpdateDocument').nth(1), 'try')).toHaveText('2');
  sell(register, ['100', '101', '102']);
  await expect(page.locator('#pending li')).toHaveText([/^UpdateDocument .* supersedes \d/]);
  await page.getByRole('switch', { name: 'Answer 500' }).click();

  await expect(page.locator('#pending')).toHaveText('nothing');
  await expect(chip(page, 'UpdateDocument')).toHaveAccessibleDescription(/^4 asked, 1 sent, 3 superseded/);
  const last = rows(page, 'UpdateDocument').last();
  await expect(cell(last, 'status')).toHaveText('200');
  await expect(cell(last, 'waited')).toHaveText(/\d (ms|s)$/);
  await expect(page.frameLocator('iframe').locator('#receipt .position')).toHaveCount(3);
});
