// The receipt: lines, sums, what happens to it in a sale, and that texts stay texts.
import { test, expect } from './support/fixtures.mjs';
import { imageData, openScreen, position, purchase, receipt, shopStyle } from './support/screen.mjs';

const lines = (page) => page.locator('#receipt .position');
const sums = (page) => page.locator('#receipt .sum');

async function show(page, display, body, style = {}) {
  await display.post('/configure', style);
  await display.post('/updateDocument', body);
  await openScreen(page, display);
}

test('A receipt shows names, quantities and sums as they are written in Russian', async ({ page, display }) => {
  await show(page, display, receipt(purchase));
  await expect(lines(page)).toHaveCount(4);
  await expect(lines(page).locator('.name')).toHaveText(purchase.map(({ name }) => name));
  await expect(lines(page).locator('.quantity')).toHaveText(['1 шт', '2 шт', '0,734 кг', '1,25 кг']);
  await expect(lines(page).locator('.line-sum').last()).toHaveText('1 499,88 ₽');
  await expect(page.locator('#receipt h2')).toHaveText('Чек № 12');
});

test('The total is what is left after the discounts', async ({ page, display }) => {
  await show(page, display, receipt(purchase));
  await expect(sums(page)).toHaveText(['Скидка−224,98 ₽', 'Итого1 666,97 ₽']);
});

test('Without discounts there is no row for them', async ({ page, display }) => {
  await show(page, display, receipt([position('100')]));
  await expect(sums(page)).toHaveText(['Итого64,90 ₽']);
});

test('A line that is sold comes, and one that is voided goes', async ({ page, display }) => {
  await show(page, display, receipt(purchase.slice(0, 2)));
  await display.post('/updateDocument', receipt(purchase));
  await expect(lines(page)).toHaveCount(4);
  await expect(lines(page).last()).toHaveClass(/is-newest/);
  await display.post('/updateDocument', receipt([purchase[0], purchase[3]]));
  await expect(lines(page).locator('.name')).toHaveText([purchase[0].name, purchase[3].name]);
});

test('Of 200 lines the newest is in view, also after a reload', async ({ page, display }) => {
  const many = Array.from({ length: 200 }, (_, at) => position(`${100 + (at % 36)}`));
  await show(page, display, receipt(many));
  const isInside = () => page.evaluate(() => {
    const list = document.querySelector('.positions').getBoundingClientRect();
    const newest = document.querySelector('.is-newest').getBoundingClientRect();
    return newest.top >= list.top && newest.bottom <= list.bottom + 1;
  });
  expect(await isInside()).toBe(true);
  const changed = many.map((each, at) => (at === 3 ? { ...each, quantity: 5 } : each));
  await display.post('/updateDocument', receipt(changed));
  await expect(lines(page).nth(3)).toHaveClass(/is-newest/);
  expect(await isInside()).toBe(true);
  await page.reload();
  await expect(lines(page)).toHaveCount(200);
  expect(await isInside()).toBe(true);
});

test('The number of goods is in the header if it is to be shown', async ({ page, display }) => {
  await show(page, display, receipt(purchase), { 'GUI:showGoodsQuantity': true });
  await expect(page.locator('.goods-count')).toHaveText('5 товаров');
  await display.post('/configure', {});
  await display.post('/updateDocument', receipt(purchase));
  await expect(page.locator('.goods-count')).toHaveText('');
});

test('A paid receipt shows payments and change, and says thank you', async ({ page, display }) => {
  const positions = [position('100')];
  await show(page, display, receipt(positions));
  await expect(page.locator('.thanks')).toBeHidden();
  const payments = [{ kind: 'card', amount: 4000 }, { kind: 'cash', amount: 5000 }, { kind: 'Подарочная карта', amount: 0 }];
  await display.post('/updateDocument', receipt(positions, { state: 'paid', payments, change: 2510 }));
  await expect(sums(page)).toHaveText(['Итого64,90 ₽', 'Банковская карта40,00 ₽', 'Наличные50,00 ₽', 'Подарочная карта0,00 ₽', 'Сдача25,10 ₽']);
  await expect(page.locator('.thanks')).toHaveText('Спасибо за покупку!');
});

test('A receipt that is paid in part tells what is left', async ({ page, display }) => {
  await show(page, display, receipt([position('100')], { payments: [{ kind: 'qr', amount: 5000 }] }));
  await expect(sums(page)).toHaveText(['Итого64,90 ₽', 'QR-код50,00 ₽', 'Осталось оплатить14,90 ₽']);
});

test('A paid receipt gives way to the idle view after the time-out', async ({ page, display }) => {
  await page.clock.install();
  await show(page, display, receipt(purchase, { state: 'paid' }), { 'View.Logic:closedDocumentTimeout': 600_000 });
  await expect(page.locator('#receipt')).toBeVisible();
  await page.clock.fastForward('10:00');
  await expect(page.locator('#receipt')).toBeHidden();
  await expect(page.locator('.greeting')).toHaveText('Добро пожаловать!');
});

test('A page that is opened after the time-out of a paid receipt does not show it', async ({ page, display }) => {
  await show(page, display, receipt(purchase, { state: 'paid' }), { 'View.Logic:closedDocumentTimeout': 0 });
  await expect(page.locator('.greeting')).toBeVisible();
  await expect(page.locator('#receipt')).toBeHidden();
});

test('An open receipt stays beyond the time-out', async ({ page, display }) => {
  await page.clock.install();
  await show(page, display, receipt(purchase), { 'View.Logic:closedDocumentTimeout': 1000 });
  await page.clock.fastForward('10:00');
  await expect(page.locator('#receipt')).toBeVisible();
});

test('Pictures stand in the lines, and a letter where there is none', async ({ page, display }) => {
  await show(page, display, receipt(purchase), shopStyle);
  await expect(lines(page).locator('.letter')).toHaveText(['Х', 'М', 'Я', 'Ф']);
  await display.post('/image', await imageData('100'));
  await display.post('/image', { id: { type: 'Barcode', value: purchase[2].barcode }, uri: (await imageData('112')).uri });
  await display.post('/image', { id: { type: 'GoodsCode', value: '104' }, uri: '' });
  await expect(lines(page).locator('.picture')).toHaveCount(2);
  await expect.poll(() => lines(page).first().locator('.picture').evaluate((picture) => picture.naturalWidth)).toBeGreaterThan(0);
  await expect(lines(page).locator('.letter')).toHaveText(['М', 'Ф']);
});

test('Without pictures in the settings the lines have neither pictures nor letters', async ({ page, display }) => {
  await show(page, display, receipt(purchase));
  await display.post('/image', await imageData('100'));
  await display.post('/updateDocument', receipt(purchase.slice(1)));
  await expect(lines(page)).toHaveCount(3);
  await expect(page.locator('.picture, .letter')).toHaveCount(0);
});

test('HTML in a message is shown as text and does nothing', async ({ page, display }) => {
  const evil = '<img src=x onerror="document.title=1"><script>document.title=2</script><b>жирно</b>';
  await show(page, display, receipt([{ ...position('100'), name: evil, unit: '<i>шт</i>' }], { number: '<u>7</u>' }), { 'theme:name': '"><b>' });
  await display.post('/paymentdraft', { kind: evil, amount: 1 });
  await display.post('/content', { data: evil, type: 'text', hide: false });
  await expect(lines(page).locator('.name')).toHaveText(evil);
  await expect(page.locator('#draft h2')).toHaveText(evil);
  await expect(page.locator('.content p')).toHaveText(evil);
  await display.post('/priceList', { title: evil, data: [{ code: evil, name: evil, unit: evil, price: 1 }], columns: 1 });
  await expect(page.locator('#prices h2')).toHaveText(evil);
  await expect(page.locator('main b, main i, main u, main script, main [onerror]')).toHaveCount(0);
  await expect(page).toHaveTitle('Экран покупателя');
});

test('Messages that make no sense leave the screen working', async ({ page, display }) => {
  await show(page, display, { number: {}, positions: [null, 4, { name: [], quantity: 'x', sum: null }], payments: 'none', total: 'much' });
  await expect(lines(page)).toHaveCount(1);
  await expect(page.locator('.check-sum dd')).toHaveText('0,00 ₽');
  await display.post('/updateDocument', receipt(purchase));
  await expect(lines(page)).toHaveCount(4);
});

test('A part that cannot be drawn leaves the others working', async ({ page, display, allowComplaints }) => {
  allowComplaints(/planted/);
  await page.addInitScript(() => Object.defineProperty(Intl.DateTimeFormat.prototype, 'format', {
    get() { throw new Error('planted'); },
  }));
  await show(page, display, receipt(purchase));
  await display.post('/paymentdraft', { kind: 'card', amount: 500 });
  await expect(page.locator('#draft .amount')).toHaveText('5,00 ₽');
});
