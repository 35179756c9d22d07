// The price list.
import { test, expect } from './support/fixtures.mjs';
import { goods, openScreen } from './support/screen.mjs';

const rows = goods.map(({ code, name, unit, price }) => ({ code, name, unit, price }));
const list = (page) => page.locator('#prices');
const pageNumber = (page) => list(page).locator('.page-number');
const shownCodes = (page) => list(page).locator('.code').allTextContents();

async function showPrices(page, display, body = {}) {
  await display.post('/configure', {});
  await display.post('/priceList', { title: 'Прайс-лист', data: rows, columns: 2, ...body });
  await openScreen(page, display);
  await expect(list(page)).toBeVisible();
}

test('A price list shows its title, and of each article what there is', async ({ page, display }) => {
  await showPrices(page, display, { data: [rows[0], { name: 'Пакет', price: 900 }, { name: 'Без цены', unit: 'кг' }, 'нет'] });
  await expect(list(page).locator('h2')).toHaveText('Прайс-лист');
  await expect(list(page).locator('li')).toHaveText(['100Хлеб бородинский, 400 г64,90 ₽ / шт', 'Пакет9,00 ₽', 'Без цены']);
  await expect(pageNumber(page)).toHaveText('');
});

const columnCount = (page) => list(page).locator('li').evaluateAll(
  (items) => new Set(items.map((item) => Math.round(item.getBoundingClientRect().left))).size,
);

test('A price list has the columns that are asked for, but no more than the window has room for', async ({ page, display }) => {
  await page.setViewportSize({ width: 1280, height: 720 });
  await showPrices(page, display);
  expect(await columnCount(page)).toBe(2);
  await page.setViewportSize({ width: 480, height: 800 });
  await expect.poll(() => columnCount(page)).toBe(1);
  await page.setViewportSize({ width: 1280, height: 720 });
  await display.post('/priceList', { title: 'Прайс-лист', data: rows, columns: 1 });
  await expect.poll(() => columnCount(page)).toBe(1);
});

test('Scrolling shows page after page, every article once, and stops at the ends', async ({ page, display }) => {
  await showPrices(page, display);
  const text = await pageNumber(page).textContent();
  const pages = Number(text.match(/^Страница 1 из (\d+)$/)[1]);
  expect(pages).toBeGreaterThan(1);
  const seen = await shownCodes(page);
  for (let at = 2; at <= pages; ++at) {
    await display.post('/priceList', { scroll: 'down' });
    await expect(pageNumber(page)).toHaveText(`Страница ${at} из ${pages}`);
    seen.push(...await shownCodes(page));
  }
  expect(seen).toEqual(rows.map(({ code }) => code));
  await display.post('/priceList', { scroll: 'down' });
  await display.post('/priceList', { scroll: 'up' });
  await expect(pageNumber(page)).toHaveText(`Страница ${pages - 1} из ${pages}`);
  await display.post('/priceList', { scroll: 'bottom' });
  await expect(pageNumber(page)).toHaveText(`Страница ${pages} из ${pages}`);
  await display.post('/priceList', { scroll: 'top' });
  await expect(pageNumber(page)).toHaveText(`Страница 1 из ${pages}`);
});

test('A reload shows the same page', async ({ page, display }) => {
  await showPrices(page, display);
  await display.post('/priceList', { scroll: 'down' });
  await expect(pageNumber(page)).toHaveText(/^Страница 2 из/);
  const before = await shownCodes(page);
  await page.reload();
  await expect(pageNumber(page)).toHaveText(/^Страница 2 из/);
  expect(await shownCodes(page)).toEqual(before);
});

test('A closed price list goes, and the next one starts on its first page', async ({ page, display }) => {
  await showPrices(page, display);
  await display.post('/priceList', { scroll: 'down' });
  await expect(pageNumber(page)).toHaveText(/^Страница 2 из/);
  await display.post('/priceList', { close: true });
  await expect(list(page)).toBeHidden();
  await display.post('/priceList', { title: 'Прайс-лист', data: rows, columns: 2 });
  await expect(pageNumber(page)).toHaveText(/^Страница 1 из/);
});
