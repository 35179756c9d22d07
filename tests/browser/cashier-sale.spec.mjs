import { expect, letAnswer, openReceipt, test } from './support/cashier.mjs';
import { keepScreenshot } from './support/screenshots.mjs';

test.use({ viewport: { width: 1440, height: 900 } });

test('a tapped article is on the receipt of the page and of the display', async ({ openCashier, page, shopDisplay }) => {
  const cashier = await openCashier();
  await openReceipt(page, shopDisplay);
  await cashier.card('Хлеб бородинский').click();
  await expect(page.getByRole('option', { name: 'Хлеб бородинский' })).toContainText('64,90 ₽');
  await expect(page.getByRole('heading', { name: 'Чек № 1' })).toBeVisible();
  await expect(page.locator('#pay')).toContainText('64,90 ₽');
  await expect.poll(async () => (await shopDisplay.messages('/updateDocument')).at(-1)?.total).toBe(6490);
  await keepScreenshot(page, 'cashier-sale');
});

test('the first article opens a receipt, and both commands are shown', async ({ openCashier }) => {
  const cashier = await openCashier();
  await cashier.card('Хлеб бородинский').click();
  await cashier.card('Батон').click();
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '100' }, { do: 'sell', goods: '101' }]);
});

test('articles tapped in quick succession are on one receipt, in their order', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await page.evaluate(() => {
    for (const card of [...document.querySelectorAll('.card')].slice(0, 4)) card.click();
  });
  await cashier.expectCommands([{ do: 'open' }, ...['100', '101', '102', '103'].map((goods) => ({ do: 'sell', goods }))]);
  await expect(page.getByRole('option')).toHaveCount(4);
});

test('a paid receipt is followed by a new one', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await cashier.card('Батон').click();
  await page.locator('#pay').click();
  await page.locator('#pay-card').click();
  await expect(page.locator('#receipt-state')).toHaveText('оплачен');
  await expect(page.locator('#pay')).toBeDisabled();
  await cashier.card('Батон').click();
  await expect(page.getByRole('heading', { name: 'Чек № 2' })).toBeVisible();
});

test('what a scanner types is sold wherever the focus is', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await page.locator('#positions').or(page.locator('#new-receipt')).first().focus();
  await page.keyboard.type('4600000001005\n');
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '4600000001005' }]);
  await expect(page.locator('#find-text')).toHaveValue('');
});

test('what is sold by weight is weighed first', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await cashier.card('Бананы').click();
  await expect(page.locator('#quantity-dialog')).toBeVisible();
  for (const key of ['0', 'Запятая', '7', '3', '4']) await page.getByRole('button', { name: key, exact: true }).click();
  await page.getByRole('button', { name: 'Готово' }).click();
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '113', quantity: 0.734 }]);
  await expect(page.getByRole('option')).toContainText('0,734 кг');
});

test('the quantity given before goes for one article only', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await page.locator('#quantity').click();
  await page.getByRole('button', { name: '+ 1' }).click();
  await page.getByRole('button', { name: 'Готово' }).click();
  await cashier.card('Батон').click();
  await cashier.card('Батон').click();
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '101', quantity: 2 }, { do: 'sell', goods: '101' }]);
});

test('goods are found while a name is typed, and the only one left is sold', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await page.locator('#find-text').fill('молоко');
  await expect(page.locator('.card:visible')).toHaveCount(1);
  await page.keyboard.press('Enter');
  await expect(page.locator('.card:visible')).toHaveCount(36);
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '104' }]);
  await page.locator('#find-text').fill('нет такого');
  await expect(page.getByText('Ничего не найдено')).toBeVisible();
});

test('a whole sale needs no more than the keyboard', async ({ openCashier, page, shopDisplay }) => {
  const cashier = await openCashier();
  const keys = page.keyboard;
  await keys.press('Insert');
  await keys.type('2*100\n');
  await keys.type('112\n0,5\n'); // weighed
  await keys.type('101\n');
  await expect(page.getByRole('option')).toHaveCount(3);
  await page.locator('#positions').focus();
  await keys.press('ArrowUp');
  await keys.press('ArrowUp');
  await keys.press('Delete');
  await expect(page.getByRole('option')).toHaveCount(2);
  await keys.press('F4');
  await keys.type('10\n');
  await expect(page.locator('#sums')).toContainText('Скидка');
  await letAnswer();
  await keys.press('F9');
  await keys.type('500\n');
  await expect(page.locator('#receipt-state')).toHaveText('оплачен');
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '100', quantity: 2 },
    { do: 'sell', goods: '112', quantity: 0.5 }, { do: 'sell', goods: '101' }, { do: 'void', position: 1 },
    { do: 'discount', percent: 10 }, { do: 'pay', kind: 'cash', amount: 50000 }]);
  await expect(page.locator('#sums')).toContainText('Сдача');
  await expect.poll(async () => (await shopDisplay.messages('/updateDocument')).at(-1)?.state).toBe('paid');
});

/** Holds the commands back until `release()`, as a register that is slow does. */
async function holdCommands(page) {
  let release;
  const released = new Promise((done) => { release = done; });
  await page.route('**/commands', async (route) => {
    await released;
    await route.continue();
  });
  return release;
}

test('Enter pressed twice on a part of the sum pays it once', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await cashier.card('Хлеб бородинский').click();
  await expect(page.locator('#pay')).toBeEnabled();
  await page.keyboard.press('F9');
  await expect(page.locator('#pay-dialog')).toBeVisible();
  const release = await holdCommands(page);
  await page.keyboard.type('10\n\n');
  await page.keyboard.press('F6'); // nor is it paid by card as well
  release();
  await expect(page.locator('#pay-dialog')).toBeHidden();
  await page.keyboard.press('F8');
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '100' }, { do: 'pay', kind: 'cash', amount: 1000 }, { do: 'qr' }]);
});

test('two positions are taken out in quick succession', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  for (const goods of ['100', '101', '102']) await page.keyboard.type(`${goods}\n`);
  await expect(page.getByRole('option')).toHaveCount(3);
  const release = await holdCommands(page);
  await page.locator('#positions').focus();
  await page.keyboard.press('Delete');
  await page.keyboard.press('Delete');
  release();
  await expect(page.getByRole('option')).toHaveCount(1);
  await expect(page.getByRole('option')).toContainText('Хлеб бородинский');
  await expect.poll(async () => (await cashier.commands()).slice(-2)).toEqual(['{"do":"void","position":3}', '{"do":"void","position":2}']);
  await expect(page.locator('#problem')).toBeEmpty();
});

test('paying right after a scan asks for the whole sum', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await cashier.card('Хлеб бородинский').click();
  await expect(page.locator('#pay')).toContainText('64,90 ₽');
  const release = await holdCommands(page);
  await page.keyboard.type('101\n');
  await page.keyboard.press('F9');
  await expect(page.locator('#pay-dialog')).toBeHidden();
  release();
  await expect(page.locator('#pay-title')).toHaveText('К оплате 117,80 ₽');
});
