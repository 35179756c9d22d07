// Receipts of the sample shop as the register sends them, and the customer's screen that shows them.
import { readFile } from 'node:fs/promises';
import { sourcePath } from './program.mjs';

const catalogue = await readFile(sourcePath('demo/goods.toml'), 'utf8');
const article = /code = "(.*)"\nbarcode = "(.*)"\nname = "(.*)"\nunit = "(.*)"\nprice = (\d+)\npicture = "(.*)"/g;

/** The articles of the sample shop. */
export const goods = [...catalogue.matchAll(article)].map(([, code, barcode, name, unit, price, picture]) => (
  { code, barcode, name, unit, price: Number(price), picture }));

/** A line of a receipt; `percent` is its discount. */
export function position(code, quantity = 1, percent = 0) {
  const { picture, ...rest } = goods.find((each) => each.code === code);
  const sum = Math.round(rest.price * quantity);
  const discount = Math.round((sum * percent) / 100);
  return { ...rest, quantity, sum, disc_perc: percent, disc_sum: discount, total: sum - discount };
}

/** A receipt with these positions. */
export function receipt(positions, more = {}) {
  const add = (key) => positions.reduce((sum, each) => sum + each[key], 0);
  return {
    number: 12, state: 'open', positions, sum: add('sum'), discountSum: add('disc_sum'), total: add('total'),
    payments: [], change: 0, ...more,
  };
}

/** Bread, milk by the piece, apples by weight, and a fish with a discount. */
export const purchase = [position('100'), position('104', 2), position('112', 0.734), position('118', 1.25, 15)];

/** The picture of an article as the register sends it. */
export async function imageData(code) {
  const file = sourcePath(`demo/pictures/${goods.find((each) => each.code === code).picture}`);
  const uri = `data:image/svg+xml;base64,${(await readFile(file)).toString('base64')}`;
  return { id: { type: 'GoodsCode', value: code }, uri };
}

/** The looks of the sample shop. */
export const shopStyle = {
  'View.Style:backgroundColor': 'eef2f5',
  'View.Style:receiptBackgroundColor': 'ffffff',
  'View.Style:receiptBorderColor': 'c3ccd4',
  'View.Style:headerFontSize': 18,
  'View.Style:positionFontSize': 16,
  'View.Style:positionWrapLineCount': 2,
  'View.Style:showPositionDiscount': true,
  'View.Style:checkSumFontSize': 32,
  'View.Style:checkSumFontBold': true,
  'View.Style:showImages': true,
  'GUI:showGoodsQuantity': true,
};

export const touchStyle = { ...shopStyle, 'View.Interface:touchng': true, 'theme:name': 'touch' };

/** Opens the customer's screen; it is there once it has drawn the state. */
export async function openScreen(page, display) {
  await page.goto(display.url);
  await page.locator('#stage:not([data-scene="none"])').waitFor();
}

/** Once nothing moves any more but the bar that counts the time down. */
export const settled = (page) => page.waitForFunction(() => document.getAnimations()
  .every(({ playState, effect }) => playState === 'finished' || effect.target.matches('.bar')));

/** Makes the page connect anew: a hidden page closes its connection until it is seen again. */
export async function reconnect(page) {
  for (const hidden of [true, false])
    await page.evaluate((isHidden) => {
      Object.defineProperty(document, 'hidden', { get: () => isHidden, configurable: true });
      document.dispatchEvent(new Event('visibilitychange'));
    }, hidden);
}
