import { violations } from './support/axe.mjs';
import { expect, openReceipt, test } from './support/cashier.mjs';
import { overflowingTexts } from './support/overflow.mjs';
import { settled } from './support/screen.mjs';
import { keepScreenshot } from './support/screenshots.mjs';

const cashierIn = (page) => page.frameLocator('iframe[title="Касса"]');
const customerIn = (page) => page.frameLocator('#screen');

async function openShop(page, openCashier, { width, height }) {
  const { url } = await openCashier();
  await page.setViewportSize({ width, height });
  await page.goto(`${url}/shop`);
  await expect(cashierIn(page).locator('.card')).toHaveCount(36);
}

/** Taps the first article, and waits until the customer sees it. */
async function sellBread(page, display) {
  await openReceipt(cashierIn(page), display);
  await cashierIn(page).locator('.card', { hasText: 'Хлеб бородинский' }).click();
  const receipt = customerIn(page).locator('#receipt');
  await expect(receipt.locator('.position')).toHaveCount(1);
  await expect(receipt.locator('.position .name')).toContainText('Хлеб бородинский');
  await expect(receipt.locator('.position .line-sum')).toHaveText('64,90 ₽');
  await expect(receipt.locator('.check-sum')).toHaveText('Итого64,90 ₽');
}

test('what the cashier taps is rendered on the customer\'s screen beside it', async ({ openCashier, page, shopDisplay }) => {
  await openShop(page, openCashier, { width: 1920, height: 1080 });
  await sellBread(page, shopDisplay);
});

for (const [width, height] of [[1920, 1080], [800, 1280]])
  test(`at ${width}x${height} every text has its room, and everybody can use it`, async ({ openCashier, page, shopDisplay }) => {
    await openShop(page, openCashier, { width, height });
    await sellBread(page, shopDisplay);
    for (const frame of page.frames()) {
      await settled(frame);
      expect.soft(await overflowingTexts(frame), frame.url()).toEqual([]);
      expect.soft(await violations(frame), frame.url()).toEqual([]);
    }
    await keepScreenshot(page, `cashier-shop-${width}x${height}`);
  });

test('the cashier and the customer are side by side, and above each other in portrait', async ({ openCashier, page, shopDisplay }) => {
  await openShop(page, openCashier, { width: 1920, height: 1080 });
  await expect(cashierIn(page).locator('#shop')).toBeHidden();
  await expect(page.locator('#screen')).toHaveAttribute('src', `${shopDisplay.url}/`);

  const boxes = async () => Promise.all([0, 1].map((i) => page.locator('iframe').nth(i).boundingBox()));
  const [left, right] = await boxes();
  expect(left.x + left.width).toBeLessThanOrEqual(right.x);
  expect(left.width).toBe(960);
  await page.setViewportSize({ width: 800, height: 1280 });
  const [above, below] = await boxes();
  expect(above.y + above.height).toBeLessThanOrEqual(below.y);
  expect(above.width).toBe(800);
});

test('it leads to the inspector and to each page alone', async ({ openCashier, page, shopDisplay }) => {
  const { url } = await openCashier();
  await page.goto(`${url}/shop`);
  await expect(page.getByRole('link', { name: 'Только экран покупателя' })).toHaveAttribute('href', `${shopDisplay.url}/`);
  await expect(page.getByRole('link', { name: 'Сообщения' })).toHaveAttribute('href', `${shopDisplay.url}/inspector`);
  await page.getByRole('link', { name: 'Только касса' }).click();
  await expect(page).toHaveTitle('Касса');
});
