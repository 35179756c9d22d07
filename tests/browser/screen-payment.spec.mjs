// Payments: codes to pay by, and announced payments.
import { test, expect } from './support/fixtures.mjs';
import { decodeQr } from './support/qr.mjs';
import { openScreen, purchase, receipt, reconnect, settled } from './support/screen.mjs';

const qr = (page) => page.locator('#qr');

async function showPayment(page, display, payment) {
  await display.post('/configure', {});
  await display.post('/updateDocument', receipt(purchase));
  await display.post('/qrPayment', payment);
  await openScreen(page, display);
  await expect(qr(page)).toBeVisible();
}

async function decodeScreen(page) {
  await page.locator('#qr img').evaluate((image) => image.decode());
  await settled(page);
  return decodeQr(await page.screenshot());
}

const link = 'https://pay.example.com/r/12?sum=196277';
const texts = [
  ['a link', link],
  ['Cyrillic text', 'Оплата покупки № 12: магазин «Берёзка», Ёлочная ул., 5'],
  ['300 characters', `${link}&order=${'0123456789abcdef'.repeat(20)}`.slice(0, 300)],
];

for (const [what, text] of texts)
  for (const [width, height] of [[1280, 720], [800, 480], [768, 1366]])
    test(`A phone reads ${what} off a screen of ${width}x${height}`, async ({ page, display }) => {
      await page.setViewportSize({ width, height });
      await showPayment(page, display, { qrCode: text, amount: 196277, timeout: 60 });
      expect(await decodeScreen(page)).toBe(text);
      const box = await page.locator('#qr img').boundingBox();
      expect(box.height / height).toBeGreaterThanOrEqual(0.45);
    });

test('The amount stands beside the code', async ({ page, display }) => {
  await showPayment(page, display, { qrCode: link, amount: 619560, timeout: 0 });
  await expect(qr(page).locator('.amount')).toHaveText('6 195,60 ₽');
  await expect(qr(page).locator('.countdown')).toBeHidden();
});

test('The time is counted down from the arrival of the payment, and then the code is over', async ({ page, display }) => {
  await page.clock.install();
  await showPayment(page, display, { qrCode: link, amount: 100, timeout: 3600 });
  await expect(qr(page).locator('.left')).toHaveText(/^Осталось (60:00|59:\d\d)$/);
  const barWidth = () => qr(page).locator('.bar').evaluate((bar) => bar.getBoundingClientRect().width / bar.parentElement.clientWidth);
  await page.clock.fastForward('30:00');
  await expect(qr(page).locator('.left')).toHaveText(/^Осталось (30:00|2\d:\d\d)$/);
  await page.clock.fastForward('30:00');
  await expect(qr(page).locator('.left')).toHaveText('Время истекло');
  await expect(qr(page).locator('img')).toHaveCSS('opacity', '0.12');
  await expect.poll(barWidth).toBe(0);
});

test('A new code has its own time', async ({ page, display }) => {
  await showPayment(page, display, { qrCode: link, amount: 100, timeout: 1 });
  await expect(qr(page).locator('.left')).toHaveText('Время истекло');
  await display.post('/qrPayment', { qrCode: 'second', amount: 200, timeout: 60 });
  await expect(qr(page).locator('.left')).toHaveText(/^Осталось/);
  await expect(qr(page).locator('img')).toHaveCSS('opacity', '1');
  expect(await decodeScreen(page)).toBe('second');
});

test('A code goes when it is closed', async ({ page, display }) => {
  await showPayment(page, display, { qrCode: link, amount: 100, timeout: 60 });
  await display.post('/qrPayment', { close: true });
  await expect(qr(page)).toBeHidden();
  await expect(page.locator('#receipt')).toBeVisible();
});

test('A code goes when the receipt is paid', async ({ page, display }) => {
  await showPayment(page, display, { qrCode: link, amount: 100, timeout: 60 });
  await display.post('/updateDocument', receipt(purchase, { state: 'paid' }));
  await expect(qr(page)).toBeHidden();
});

test('A payment without a text says that there is no code', async ({ page, display }) => {
  await showPayment(page, display, { qrCode: '', amount: 100, timeout: 60 });
  await expect(qr(page).locator('.no-code')).toBeVisible();
  await expect(qr(page).locator('img')).toBeHidden();
});

test('A text that is too long for a code says that there is none', async ({ page, display, allowComplaints }) => {
  allowComplaints(/404/);
  await showPayment(page, display, { qrCode: 'x'.repeat(5000), amount: 100, timeout: 60 });
  await expect(qr(page).locator('.no-code')).toBeVisible();
});

test('A code that could not be loaded comes with the next connection', async ({ page, display, allowComplaints }) => {
  allowComplaints(/ERR_FAILED/);
  await page.route('**/qr.svg?*', (route) => route.abort());
  await showPayment(page, display, { qrCode: link, amount: 100, timeout: 0 });
  await expect(qr(page).locator('.no-code')).toBeVisible();
  await page.unroute('**/qr.svg?*');
  await reconnect(page);
  await expect(qr(page).locator('.no-code')).toBeHidden();
  expect(await decodeScreen(page)).toBe(link);
});

test('A code does not stand beside the amount of the next one', async ({ page, display }) => {
  await showPayment(page, display, { qrCode: link, amount: 100, timeout: 0 });
  expect(await decodeScreen(page)).toBe(link);
  let request = null;
  await page.route('**/qr.svg?*', (route) => { request = route; });
  await display.post('/qrPayment', { qrCode: 'second', amount: 200, timeout: 0 });
  await expect(qr(page).locator('.amount')).toHaveText('2,00 ₽');
  await expect.poll(() => request !== null).toBe(true);
  const before = await page.screenshot();
  await expect(decodeQr(before), 'no code is seen').rejects.toThrow();
  await request.continue();
  expect(await decodeScreen(page)).toBe('second');
});

const drafts = [
  ['cash', 'Наличные', ''],
  ['card', 'Банковская карта', 'Приложите карту к терминалу'],
  ['qr', 'QR-код', ''],
  ['Бонусы', 'Бонусы', ''],
];

for (const [kind, words, advice] of drafts)
  test(`A payment by "${kind}" is announced as "${words}"`, async ({ page, display }) => {
    await display.post('/configure', {});
    await display.post('/updateDocument', receipt(purchase));
    await display.post('/paymentdraft', { number: 12, total: 500, kind, amount: 196277 });
    await openScreen(page, display);
    await expect(page.locator('#draft h2')).toHaveText(words);
    await expect(page.locator('#draft .amount')).toHaveText('1 962,77 ₽');
    await expect(page.locator('#draft .advice')).toHaveText(advice);
  });

const ends = [
  ['when the receipt is paid', '/updateDocument', receipt(purchase, { state: 'paid' })],
  ['when another receipt opens', '/updateDocument', receipt([], { number: 13 })],
  ['when there is no receipt any more', '/updateDocument', {}],
  ['when it is empty', '/paymentdraft', {}],
];

for (const [when, path, body] of ends)
  test(`An announced payment goes ${when}`, async ({ page, display }) => {
    await display.post('/configure', {});
    await display.post('/updateDocument', receipt(purchase));
    await display.post('/paymentdraft', { number: 12, kind: 'card', amount: 500 });
    await openScreen(page, display);
    await expect(page.locator('#draft')).toBeVisible();
    await display.post(path, body);
    await expect(page.locator('#draft')).toBeHidden();
  });

test('An announced payment stays over a change of its receipt and over a reload', async ({ page, display }) => {
  await display.post('/configure', {});
  await display.post('/paymentdraft', { number: 12, kind: 'card', amount: 500 });
  await display.post('/updateDocument', receipt(purchase));
  await openScreen(page, display);
  await display.post('/updateDocument', receipt(purchase.slice(1)));
  await expect(page.locator('#receipt .position')).toHaveCount(3);
  await expect(page.locator('#draft')).toBeVisible();
  await page.reload();
  await expect(page.locator('#draft')).toBeVisible();
});
