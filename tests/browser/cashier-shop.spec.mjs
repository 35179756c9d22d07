import { expect, test } from './support/cashier.mjs';
import { keepScreenshot } from './support/screenshots.mjs';

test('the cashier and the customer are side by side, and above each other in portrait', async ({ openCashier, page, shopDisplay }) => {
  const { url } = await openCashier();
  await page.setViewportSize({ width: 1920, height: 1080 });
  await page.goto(`${url}/shop`);
  const cashier = page.frameLocator('iframe[title="Касса"]');
  await cashier.locator('.card').first().click();
  await expect(cashier.getByRole('option')).toHaveCount(1);
  await expect(cashier.locator('#shop')).toBeHidden();
  await expect(page.locator('#screen')).toHaveAttribute('src', `${shopDisplay.url}/`);

  const boxes = async () => Promise.all([0, 1].map((i) => page.locator('iframe').nth(i).boundingBox()));
  const [left, right] = await boxes();
  expect(left.x + left.width).toBeLessThanOrEqual(right.x);
  expect(left.width).toBe(960);
  await keepScreenshot(page, 'cashier-shop');
  await page.setViewportSize({ width: 800, height: 1280 });
  const [above, below] = await boxes();
  expect(above.y + above.height).toBeLessThanOrEqual(below.y);
  expect(above.width).toBe(800);
  await keepScreenshot(page, 'cashier-shop-portrait');
});

test('it leads to the inspector and to each page alone', async ({ openCashier, page, shopDisplay }) => {
  const { url } = await openCashier();
  await page.goto(`${url}/shop`);
  await expect(page.getByRole('link', { name: 'Только экран покупателя' })).toHaveAttribute('href', `${shopDisplay.url}/`);
  await expect(page.getByRole('link', { name: 'Сообщения' })).toHaveAttribute('href', `${shopDisplay.url}/inspector`);
  await page.getByRole('link', { name: 'Только касса' }).click();
  await expect(page).toHaveTitle('Касса');
});
