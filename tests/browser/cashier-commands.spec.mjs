import { writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { expect, ofTheConnection, test } from './support/cashier.mjs';
import { reconnect } from './support/screen.mjs';

test.use({ viewport: { width: 1440, height: 900 } });

/** Sells one article, and forgets the commands of that. */
async function withReceipt(cashier) {
  await cashier.card('Хлеб бородинский').click();
  await cashier.expectCommands([{ do: 'open' }, { do: 'sell', goods: '100' }]);
  await cashier.page.locator('#log').evaluate((log) => log.replaceChildren());
}

const buttons = [
  ['opens a receipt', [['#new-receipt']], [{ do: 'open' }]],
  ['takes the selected position out', [['#void']], [{ do: 'void', position: 1 }]],
  ['gives a discount on the receipt', [['#discount'], ['text=15 %'], ['text=Дать скидку']], [{ do: 'discount', percent: 15 }]],
  ['gives a discount on a position', [['#discount'], ['text=На позицию 1'], ['text=Дать скидку']], [{ do: 'discount', percent: 5, position: 1 }]],
  ['shows a QR code', [['#qr']], [{ do: 'qr' }]],
  ['shows the price list', [['#prices']], [{ do: 'prices', columns: 2 }]],
  ['scrolls and closes the price list', [['#prices'], ['text=Вниз'], ['text=Вверх'], ['text=Закрыть']],
    [{ do: 'prices', columns: 2 }, { do: 'scroll', to: 'down' }, { do: 'scroll', to: 'up' }, { do: 'close-dialog', dialogId: 1 }]],
  ['announces a card', [['#pay'], ['#draft-card']], [{ do: 'draft', kind: 'card' }]],
  ['announces cash', [['#pay'], ['#draft-cash']], [{ do: 'draft', kind: 'cash' }]],
  ['shows a QR code while paying', [['#pay'], ['#pay-show-qr']], [{ do: 'qr' }]],
  ['takes a card', [['#pay'], ['#pay-card']], [{ do: 'pay', kind: 'card' }]],
  ['takes a QR payment', [['#pay'], ['#pay-qr']], [{ do: 'pay', kind: 'qr' }]],
  ['takes cash', [['#pay'], ['text=1 000'], ['text=Принять наличные']], [{ do: 'pay', kind: 'cash', amount: 100000 }]],
  ['shows a text', [['#screen'], ['#content', 'Привет'], ['text=Показать >> visible=true']], [{ do: 'content', text: 'Привет' }]],
  ['hides the text', [['#screen'], ['#hide-content']], [{ do: 'content', hide: true }]],
];

for (const [deed, steps, commands] of buttons) {
  test(`a button ${deed}`, async ({ openCashier, page }) => {
    const cashier = await openCashier();
    await withReceipt(cashier);
    for (const [selector, text] of steps) {
      const target = page.locator(selector).locator('visible=true').last();
      if (text) await target.fill(text);
      else await target.click();
    }
    await cashier.expectCommands(commands);
  });
}

test('the answers shown are the lines that the register prints', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await withReceipt(cashier);
  await page.locator('#line').fill('{"do":"void","position":7}');
  await page.keyboard.press('Enter');
  await expect(page.locator('#log .answer')).toHaveCount(1);
  const shown = await page.locator('#log .answer').allTextContents();
  await expect.poll(() => cashier.register.output.split('\n').slice(2, -1)).toEqual(shown);
});

test('the commands copied are a script that the register runs', async ({ context, folder, openCashier, page, startRegister }) => {
  await context.grantPermissions(['clipboard-read', 'clipboard-write']);
  const cashier = await openCashier();
  await withReceipt(cashier);
  await page.locator('#pay').click();
  await page.locator('#pay-qr').click();
  await cashier.expectCommands([{ do: 'pay', kind: 'qr' }]);
  await page.locator('#copy').click();
  await expect(page.locator('#copied')).toHaveText('Скопировано: 3 команды');
  const copied = await page.evaluate(() => navigator.clipboard.readText());
  expect(copied).toBe('{"do":"open"}\n{"do":"sell","goods":"100"}\n{"do":"pay","kind":"qr"}\n');

  const script = join(folder, 'copied.jsonl');
  await writeFile(script, copied);
  const again = await startRegister({ settings: '[ViewConnector]\nport = 0\nserver = "http://127.0.0.1:9"\n', args: ['--commands', script] });
  expect(await again.ended).toEqual([0, null]);
});

test('the commands are copied where the browser offers no clipboard to scripts', async ({ openCashier, page }) => {
  await page.addInitScript(() => Object.defineProperty(Navigator.prototype, 'clipboard', { get: () => undefined }));
  const cashier = await openCashier();
  await withReceipt(cashier);
  await page.locator('#copy').click();
  await expect(page.locator('#copied')).toHaveText('Скопировано: 2 команды');
  await page.locator('#line').focus();
  await page.keyboard.press('Control+v');
  await expect(page.locator('#line')).toHaveValue(/^\{"do":"open"\}\s*\{"do":"sell","goods":"100"\}\s*$/);
});

test('commands of a script are shown as they run, and change the page', async ({ openCashier, page }) => {
  const cashier = await openCashier({ args: ['--commands', '-', '--stay'] });
  cashier.register.command({ do: 'open', number: 41 });
  cashier.register.command({ do: 'sell', goods: '101', quantity: 2 });
  await cashier.expectCommands([{ do: 'open', number: 41 }, { do: 'sell', goods: '101', quantity: 2 }]);
  await expect(page.locator('#log .source')).toHaveText(['сценарий', 'сценарий']);
  await expect(page.getByRole('heading', { name: 'Чек № 41' })).toBeVisible();
  await expect(page.getByRole('option')).toContainText('105,80');
  await cashier.card('Хлеб бородинский').click();
  await expect(page.locator('#log .source')).toHaveText(['сценарий', 'сценарий', 'касса']);
  await expect(page.locator('#log .answer').last()).toHaveText('{"n":3,"do":"sell","ok":true}');
});

test('a command can be typed, also one that is none', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await page.keyboard.press('F1');
  await page.keyboard.type('{"do":"open","number":9}\n');
  await expect(page.getByRole('heading', { name: 'Чек № 9' })).toBeVisible();
  await page.keyboard.type('rubbish\n');
  await expect(page.getByRole('alert').first()).toContainText('the line is no JSON');
  await cashier.expectCommands([{ do: 'open', number: 9 }, 'rubbish']);
});

test('what is wrong with a command is told beside it and to the cashier, until the next one', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await page.keyboard.type('999\n');
  const reason = '"goods" names no article of the shop: give a code or a bar code as text';
  await expect(page.locator('#problem')).toHaveText(`Команда sell не выполнена: ${reason}`);
  await expect(page.locator('#log .failed .why')).toHaveText(`Не выполнена: ${reason}`);
  await cashier.card('Батон').click();
  await expect(page.locator('#problem')).toBeEmpty();
});

test('a dialog tells what is wrong and stays', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  await withReceipt(cashier);
  await page.keyboard.press('F4');
  await page.keyboard.type('150\n');
  await expect(page.locator('#discount-dialog .wrong')).toContainText('"percent" must be from 0 to 100');
  await page.keyboard.press('Control+a');
  await page.keyboard.type('пять\n');
  await expect(page.locator('#discount-dialog .wrong')).toHaveText('Введите процент, например 5');
  await page.keyboard.press('Escape');
  await expect(page.locator('#discount-dialog')).toBeHidden();
});

test('quit ends the register, and the page says that it is gone', async ({ openCashier, page, allowComplaints }) => {
  allowComplaints(ofTheConnection);
  const cashier = await openCashier();
  await page.locator('#line').fill('{"do":"quit"}');
  await page.keyboard.press('Enter');
  expect(await cashier.register.ended).toEqual([0, null]);
  await expect(page.locator('#connection')).toHaveText('Нет связи с кассой');
  await cashier.card('Батон').click();
  await expect(page.locator('#problem')).toContainText('Касса не отвечает');
});

test('a button to scroll by keeps the focus while the receipt changes', async ({ openCashier, page }) => {
  const cashier = await openCashier({ args: ['--commands', '-', '--stay'] });
  await page.keyboard.press('F7');
  const down = page.getByRole('button', { name: 'Вниз' });
  await down.focus();
  for (const command of [{ do: 'open' }, { do: 'sell', goods: '101' }]) cashier.register.command(command);
  await expect(page.getByRole('option')).toHaveCount(1);
  await expect(down).toBeFocused();
});

test('a key that is held does what it does once, but goes on scrolling', async ({ openCashier, page }) => {
  const cashier = await openCashier();
  const hold = async (key) => { // each press after the first one is a repetition
    for (let count = 0; count < 3; ++count) await page.keyboard.down(key);
    await page.keyboard.up(key);
  };
  await page.locator('#positions').evaluate((list) => list.blur());
  await hold('Insert');
  await hold('F7');
  await expect(page.getByRole('button', { name: 'Вниз' })).toBeVisible();
  await page.keyboard.down('Alt');
  await hold('ArrowDown');
  await page.keyboard.up('Alt');
  const scroll = { do: 'scroll', to: 'down' };
  await cashier.expectCommands([{ do: 'open' }, { do: 'prices', columns: 2 }, scroll, scroll, scroll]);
});

test('goods that cannot be had are told of, and had when the register is back', async ({ openCashier, page, allowComplaints }) => {
  allowComplaints(/ERR_FAILED/);
  const { url } = await openCashier();
  await page.route('**/goods', (route) => route.abort());
  await page.goto(url);
  await expect(page.locator('#problem')).toContainText('Касса не отвечает');
  await page.locator('#find-text').fill('100');
  await page.keyboard.press('Enter');
  await expect(page.locator('#find-text')).toHaveValue('100');
  await page.unroute('**/goods');
  await reconnect(page);
  await expect(page.locator('.card')).toHaveCount(36);
  await expect(page.locator('#problem')).toBeEmpty();
});
