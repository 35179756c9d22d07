// Every main state at the sizes of customer displays: nothing overflows, and anybody can read it.
import { test, expect } from './support/fixtures.mjs';
import { violations } from './support/axe.mjs';
import { overflowingTexts } from './support/overflow.mjs';
import { keepScreenshot } from './support/screenshots.mjs';
import { goods, imageData, openScreen, position, purchase, receipt, settled, shopStyle, touchStyle } from './support/screen.mjs';

const sizes = [[800, 480], [1280, 720], [1920, 1080], [768, 1366]];
const layouts = { classic: shopStyle, touch: touchStyle };

const longName = 'Форель радужная охлаждённая непотрошёная Сверхдлинноенаименованиебезединогопробелакоторомунетконца, выращенная в холодной воде';
const long = Array.from({ length: 12 }, (_, at) => ({ ...position('118', 1.25 * (at + 1), 15), name: longName }));
const many = Array.from({ length: 200 }, (_, at) => position(`${100 + (at % 36)}`, 1 + (at % 3)));
const pictures = await Promise.all(purchase.map(async ({ code }) => ['/image', await imageData(code)]));
const payments = [{ kind: 'card', amount: 10000 }, { kind: 'cash', amount: 500000 }];
const prices = goods.map(({ code, name, unit, price }) => ({ code, name: `${name} ${code === '100' ? longName : ''}`, unit, price }));

/** The main states, each as the messages that follow the settings. */
const states = {
  idle: [],
  receipt: [['/updateDocument', receipt(purchase)], ...pictures],
  empty: [['/updateDocument', receipt([])]],
  'long names': [['/updateDocument', receipt(long)]],
  '200 positions': [['/updateDocument', receipt(many)]],
  paid: [['/updateDocument', receipt(purchase, { state: 'paid', payments, change: 343303 })], ...pictures],
  qr: [['/updateDocument', receipt(purchase)], ['/qrPayment', { qrCode: 'https://pay.example.com/r/12', amount: 2147483647, timeout: 600 }]],
  draft: [['/updateDocument', receipt(purchase)], ['/paymentdraft', { number: 12, kind: 'card', amount: 2147483647 }]],
  prices: [['/priceList', { title: 'Прайс-лист', data: prices, columns: 3 }], ['/priceList', { scroll: 'down' }]],
  'prices first': [['/priceList', { title: longName, data: prices, columns: 2 }]],
  content: [['/updateDocument', receipt(purchase)], ['/content', { data: `${longName} `.repeat(3), type: 'text', hide: false }]],
};

async function show(page, display, style, messages) {
  await display.post('/configure', { ...style, 'View.Logic:closedDocumentTimeout': 600_000 });
  for (const [path, body] of messages) expect(await display.post(path, body)).toBe(200);
  await openScreen(page, display);
}

/** Whether nothing of the page lies outside its window. */
const fitsWindow = (page) => page.evaluate(() => document.documentElement.scrollWidth <= innerWidth
  && document.documentElement.scrollHeight <= innerHeight);

for (const [layout, style] of Object.entries(layouts))
  for (const [width, height] of sizes)
    test(`No text overflows on ${width}x${height} in the ${layout} layout`, async ({ page, display }) => {
      const look = async (state) => {
        await settled(page);
        expect.soft(await overflowingTexts(page), state).toEqual([]);
        expect.soft(await fitsWindow(page), state).toBe(true);
        await keepScreenshot(page, `screen-${layout}-${state.replace(' ', '-')}-${width}x${height}`);
      };
      await page.setViewportSize({ width, height });
      await openScreen(page, display);
      await look('waiting');
      for (const [state, messages] of Object.entries(states)) {
        await show(page, display, style, messages);
        await look(state);
      }
    });

for (const type of [1, 2, 3])
  test(`No text overflows with display type ${type}`, async ({ page, display }) => {
    for (const [width, height] of sizes) {
      await page.setViewportSize({ width, height });
      await show(page, display, { ...shopStyle, 'View.Style:displayType': type }, states.receipt);
      await settled(page);
      expect.soft(await overflowingTexts(page), `${width}x${height}`).toEqual([]);
      await keepScreenshot(page, `screen-type-${type}-${width}x${height}`);
    }
  });

/** Everything that has a colour of its own, in its default colour. */
const defaultColors = { 'View.Style:showPositionDiscount': true, 'GUI:showGoodsQuantity': true, 'View.Style:positionPriceWidth': 90 };

for (const [name, style] of Object.entries({ default: defaultColors, ...layouts }))
  test(`Everybody can read the main states in the ${name} style`, async ({ page, display }) => {
    test.setTimeout(120_000);
    await page.setViewportSize({ width: 1280, height: 720 });
    await openScreen(page, display);
    expect(await violations(page), 'waiting').toEqual([]);
    for (const [state, messages] of Object.entries(states)) {
      await show(page, display, style, messages);
      await settled(page);
      expect.soft(await violations(page), state).toEqual([]);
    }
  });

test('Motion is short, and there is none for those who want none', async ({ page, display }) => {
  const longest = () => page.evaluate(() => {
    const seconds = (value) => value.split(',').map((part) => Number.parseFloat(part));
    const durations = [...document.querySelectorAll('*')].flatMap((element) => {
      const { animationName, animationDuration, transitionDuration } = getComputedStyle(element);
      return [...(animationName === 'none' ? [] : seconds(animationDuration)), ...seconds(transitionDuration)];
    });
    return Math.max(...durations);
  });
  await show(page, display, shopStyle, states.qr);
  expect(await longest()).toBeGreaterThan(0);
  expect(await longest()).toBeLessThanOrEqual(0.25);
  await page.emulateMedia({ reducedMotion: 'reduce' });
  expect(await longest()).toBe(0);
});

test('The page tells its language and has one heading of the first level', async ({ page, display }) => {
  await show(page, display, shopStyle, states.receipt);
  await expect(page.locator('html')).toHaveAttribute('lang', 'ru');
  await expect(page.locator('h1')).toHaveCount(1);
  await expect(page.getByRole('heading', { name: 'Чек № 12' })).toBeVisible();
  await expect(page.getByRole('listitem')).toHaveCount(4);
});
