// Each setting of the display's looks has its effect: the README's table, key by key.
import { readFile } from 'node:fs/promises';
import { test, expect } from './support/fixtures.mjs';
import { sourcePath } from './support/program.mjs';
import { openScreen, position, purchase, receipt } from './support/screen.mjs';

const rgb = (hex) => `rgb(${[0, 2, 4].map((at) => Number.parseInt(hex.slice(at, at + 2), 16)).join(', ')})`;
const color = (key, css, selector, value, initial) => ({ key, css, selector, value, expected: rgb(value), initial: rgb(initial) });
const pixels = (key, css, selector, value, initial) => ({ key, css, selector, value, expected: `${value}px`, initial: `${initial}px` });
const bold = (key, selector) => ({ key, css: 'font-weight', selector, value: true, expected: '700', initial: '400' });
const font = (key, selector, value) => ({ key, css: 'font-family', selector, value, expected: new RegExp(`^"${value}"`), initial: /sans-serif$/ });

const line = '#receipt .position';
const label = '.discount-label';

/** Colours differ from their defaults where those are too faint to be read. */
const styles = [
  color('backgroundColor', 'background-color', '#stage', '102030', 'ece1e1'),
  pixels('elementsMargin', 'left', '#receipt', 17, 10),
  pixels('headerHeight', 'height', '#receipt > header', 52, 40),
  pixels('receiptWidth', 'width', '#receipt', 610, 500),
  pixels('receiptHeight', 'height', '#receipt', 560, 500),
  color('receiptBackgroundColor', 'background-color', '#receipt', 'fffff0', 'fcf8f8'),
  color('receiptBorderColor', 'border-top-color', '#receipt', '112233', 'd0b5b5'),
  color('additionalFontColor', 'color', '.goods-count', '443322', '7d6f6f'),
  pixels('positionPaddingRightLeft', 'padding-left', line, 9, 5),
  pixels('positionMarginTopBottom', 'margin-top', line, 7, 5),
  pixels('positionHeight', 'height', '.position-main', 58, 50),
  pixels('positionQuantityWidth', 'width', '.quantity', 91, 60),
  pixels('positionSumWidth', 'width', '.line-sum', 141, 130),
  { ...pixels('positionPriceWidth', 'width', '.position .price', 121, 0), initial: null },
  pixels('positionDiscountHeight', 'height', '.position-discount', 27, 15),
  pixels('discountSumHeight', 'height', '.discount-sum', 37, 30),
  pixels('checkSumHeight', 'height', '.check-sum', 62, 40),
  font('headerFontType', '#receipt-title', 'DejaVu Serif'),
  color('headerFontColor', 'color', '#receipt-title', '001122', '000000'),
  bold('headerFontBold', '#receipt-title'),
  pixels('headerFontSize', 'font-size', '#receipt-title', 21, 14),
  color('positionFontColor', 'color', '.position .name', '002211', '000000'),
  font('positionFontType', '.position .name', 'Nimbus Sans'),
  pixels('positionFontSize', 'font-size', '.position .name', 17, 14),
  bold('positionFontBold', '.position .name'),
  font('positionDiscountFontType', label, 'DejaVu Sans Mono'),
  color('positionDiscountFontColor', 'color', label, '003300', '2e832e'),
  color('positionDiscountAdditionalFontColor', 'color', '.discount-amount', '550000', 'd61821'),
  pixels('positionDiscountFontSize', 'font-size', label, 18, 13),
  bold('positionDiscountFontBold', label),
  font('positionPriceFontType', '.position .price', 'Noto Sans Mono'),
  { ...color('positionPriceFontColor', 'color', '.position .price', '330044', '7d6f6f'), initial: null },
  { ...pixels('positionPriceFontSize', 'font-size', '.position .price', 12, 14), initial: null },
  bold('positionPriceFontBold', '.position .price'),
  font('footerFontType', '.check-sum dt', 'Nimbus Roman'),
  color('footerFontColor', 'color', '.check-sum dt', '330000', '000000'),
  pixels('discountSumTitleFontSize', 'font-size', '.discount-sum dt', 15, 12),
  pixels('discountSumFontSize', 'font-size', '.discount-sum dd', 16, 12),
  bold('discountSumFontBold', '.discount-sum dd'),
  pixels('checkSumTitleFontSize', 'font-size', '.check-sum dt', 25, 20),
  pixels('checkSumFontSize', 'font-size', '.check-sum dd', 36, 24),
  bold('checkSumFontBold', '.check-sum dd'),
].map((style) => ({ ...style, key: `View.Style:${style.key}` }));

/** What has no style of its own to look at, with the tests here and elsewhere that show its effect. */
const others = [
  'View.Style:displayType', 'View.Style:positionWrapLineCount', 'View.Style:showPositionDiscount',
  'View.Style:positionDiscountLabelMask', 'View.Style:appLogoPath', 'View.Style:backgroundImagePath',
  'View.Style:showImages', 'GUI:showGoodsQuantity', 'View.Logic:closedDocumentTimeout',
  'theme:name', 'View.QmlStyle:displayType', 'View.QmlStyle:advertisingWidth', 'View.QmlStyle:advertisingHeight',
];

/** One line with a discount, narrow enough for every column to have its least width. */
const small = receipt([{ ...position('100', 1, 10), name: 'Хлеб' }]);

async function show(page, display, settings, body = small) {
  await page.setViewportSize({ width: 1920, height: 1080 });
  await display.post('/configure', { 'View.Style:showPositionDiscount': true, 'GUI:showGoodsQuantity': true, ...settings });
  await display.post('/updateDocument', body);
  await openScreen(page, display);
  await expect(page.locator('#receipt')).toBeVisible();
}

test('Every key of the README\'s table is tested', async () => {
  const readme = await readFile(sourcePath('README.md'), 'utf8');
  const section = readme.split('### The display\'s looks and behaviour')[1].split('### The reference host')[0];
  const keys = [...section.matchAll(/^\| `([^`]+)`/gm)].map(([, key]) => key);
  expect(keys.length).toBeGreaterThan(40);
  expect([...styles.map(({ key }) => key), ...others].sort()).toEqual(keys.sort());
});

test('Each setting changes what it names', async ({ page, display }) => {
  await show(page, display, Object.fromEntries(styles.map(({ key, value }) => [key, value])));
  for (const { key, selector, css, expected } of styles)
    await expect.soft(page.locator(selector).first(), key).toHaveCSS(css, expected, { timeout: 1000 });
});

test('Without settings everything has its default', async ({ page, display }) => {
  await show(page, display, {});
  const isThere = ({ key, initial }) => initial !== null && !key.includes('positionPriceFont');
  for (const { key, selector, css, initial } of styles.filter(isThere))
    await expect.soft(page.locator(selector).first(), key).toHaveCSS(css, initial, { timeout: 1000 });
  await expect(page.locator('.position .price')).toHaveCount(0);
});

test('Each setting changes what it names on its own', async ({ page, display }) => {
  test.setTimeout(150_000);
  await show(page, display, {});
  for (const { key, value, selector, css, expected } of styles) {
    const columns = key.startsWith('View.Style:positionPriceFont') ? { 'View.Style:positionPriceWidth': 90 } : {};
    await display.post('/configure', { 'View.Style:showPositionDiscount': true, 'GUI:showGoodsQuantity': true, ...columns, [key]: value });
    await display.post('/updateDocument', small);
    await expect.soft(page.locator(selector).first(), key).toHaveCSS(css, expected, { timeout: 3000 });
  }
});

test('A sum that is too long for its width takes more room rather than being cut', async ({ page, display }) => {
  const long = { ...purchase[0], sum: 999_999_999_99, price: 999_999_999_99, quantity: 123456.789 };
  const widths = ['Sum', 'Quantity', 'Price'].map((column) => [`View.Style:position${column}Width`, 20]);
  await show(page, display, Object.fromEntries(widths), receipt([long]));
  for (const selector of ['.line-sum', '.quantity', '.position .price'])
    expect(await page.locator(selector).evaluate((cell) => cell.scrollWidth <= cell.clientWidth && cell.clientWidth > 20)).toBe(true);
});

for (const count of [1, 2, 3])
  test(`A long name takes at most ${count} lines`, async ({ page, display }) => {
    const name = 'Чай чёрный байховый среднелистовой, сто пакетиков по два грамма с ярлычками, в подарочной коробке';
    await show(page, display, { 'View.Style:positionWrapLineCount': count }, receipt([{ ...purchase[0], name }]));
    const lines = await page.locator('.position .name').evaluate((element) => element.clientHeight / Number.parseFloat(getComputedStyle(element).lineHeight));
    expect(Math.round(lines)).toBe(count);
  });

test('The discount of a position is shown by its mask, or not at all', async ({ page, display }) => {
  await show(page, display, {}, receipt(purchase));
  await expect(page.locator('.position-discount')).toHaveText(['Скидка 15,00%−224,98 ₽']);
  await show(page, display, { 'View.Style:positionDiscountLabelMask': 'Акция: −%(position.disc_perc)% на «%(position.name)», %(position.disc_sum[.1f])' }, receipt(purchase));
  await expect(page.locator(label)).toHaveText(`Акция: −15% на «${purchase[3].name}», 22 498,0`);
  await show(page, display, { 'View.Style:showPositionDiscount': false }, receipt(purchase));
  await expect(page.locator(line)).toHaveCount(4);
  await expect(page.locator('.position-discount')).toHaveCount(0);
});

test('The layout is the one that is set', async ({ page, display }) => {
  const boxes = async (type) => {
    await show(page, display, { 'View.Style:displayType': type });
    return { receipt: await page.locator('#receipt').boundingBox(), advertising: await page.locator('#advertising').boundingBox() };
  };
  const left = await boxes(0);
  expect(left.advertising.x).toBeGreaterThan(left.receipt.x + left.receipt.width);
  const right = await boxes(1);
  expect(right.receipt.x).toBeGreaterThan(right.advertising.x + right.advertising.width);
  const alone = await boxes(2);
  expect(alone.advertising).toBeNull();
  expect(alone.receipt.width).toBeGreaterThan(1800);
  const below = await boxes(3);
  expect(below.receipt.y).toBeGreaterThan(below.advertising.y + below.advertising.height);
  expect(await boxes(42)).toEqual(left);
});

const touch = { 'View.Interface:touchng': true, 'theme:name': 'touch' };

test('With the touch interface its own settings come first', async ({ page, display }) => {
  await show(page, display, { ...touch, 'View.Style:headerHeight': 44, 'View.QmlStyle:headerHeight': 66,
    'View.QmlStyle:displayType': 1, 'View.QmlStyle:advertisingWidth': 420, 'View.QmlStyle:advertisingHeight': 210 });
  await expect(page.locator('#receipt > header')).toHaveCSS('height', '66px');
  await expect(page.locator('#advertising')).toHaveCSS('width', '420px');
  await expect(page.locator('#advertising')).toHaveCSS('height', '210px');
  const [receiptBox, advertisingBox] = [await page.locator('#receipt').boundingBox(), await page.locator('#advertising').boundingBox()];
  expect(receiptBox.x).toBeGreaterThan(advertisingBox.x);
});

test('The theme "touch" is rounded with soft shadows, others and the classic layout are flat', async ({ page, display }) => {
  await show(page, display, touch);
  await expect(page.locator('html')).toHaveAttribute('data-theme', 'touch');
  await expect(page.locator('#receipt')).toHaveCSS('border-radius', '16px');
  await expect(page.locator('#receipt')).not.toHaveCSS('box-shadow', 'none');
  for (const settings of [{ ...touch, 'theme:name': 'plain' }, { 'theme:name': 'touch' }]) {
    await show(page, display, settings);
    await expect(page.locator('html')).not.toHaveAttribute('data-theme', 'touch');
    await expect(page.locator('#receipt')).toHaveCSS('border-radius', '0px');
    await expect(page.locator('#receipt')).toHaveCSS('box-shadow', 'none');
  }
});

test('A text of 14 px can be read from two metres off a full HD screen', async ({ page, display }) => {
  await show(page, display, {});
  const height = await page.locator('.position .name').evaluate((name) => Number.parseFloat(getComputedStyle(name).fontSize)
    * new DOMMatrix(getComputedStyle(document.querySelector('#stage')).transform).a);
  expect(height).toBeGreaterThan(28);
  expect(height).toBeLessThan(30);
});
