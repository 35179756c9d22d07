// The JSON of a row: to read, to copy, to reach by keyboard.
import { expect, test } from './support/fixtures.mjs';
import { openInspector, rows } from './support/inspector.mjs';

const uri = `data:image/png;base64,${'iVBORw0KGgo'.repeat(500)}`;

async function chosenPicture(page, display) {
  await openInspector(page, display);
  await display.post('/image', { id: { type: 'GoodsCode', value: '100' }, uri });
  await rows(page, 'ImageData').click();
}

test('The JSON of the chosen row is indented, coloured and its long texts shortened', async ({ page, display }) => {
  await chosenPicture(page, display);
  const json = page.locator('.json');
  await expect(json).toContainText('{\n  "id": {\n    "type": "GoodsCode",\n    "value": "100"\n  },\n');
  await expect(json).toContainText('  "uri": "data:image/png;base64,iVBOR');
  await expect(json).toContainText(`(${uri.length.toLocaleString('en-US')} characters)`);
  expect((await json.textContent()).length).toBeLessThan(400);
  const colours = await json.evaluate((element) => ['key', 'string', 'mark'].map(
    (kind) => getComputedStyle(element.querySelector(`.${kind}`)).color));
  expect(new Set(colours).size).toBe(3);
});

test('The JSON is copied whole', async ({ page, display, context }) => {
  await context.grantPermissions(['clipboard-read', 'clipboard-write']);
  await chosenPicture(page, display);
  await page.getByRole('button', { name: 'Copy JSON' }).click();
  await expect(page.getByText('Copied')).toBeVisible();
  const copied = await page.evaluate(() => navigator.clipboard.readText());
  expect(JSON.parse(copied)).toEqual({ id: { type: 'GoodsCode', value: '100' }, uri });
});

test('The JSON is copied whole where the browser offers no clipboard to scripts', async ({ page, display }) => {
  await page.addInitScript(() => Object.defineProperty(Navigator.prototype, 'clipboard', { get: () => undefined }));
  await chosenPicture(page, display);
  await page.getByRole('button', { name: 'Copy JSON' }).click();
  await expect(page.getByText('Copied')).toBeVisible();
  await page.getByRole('searchbox').focus();
  await page.keyboard.press('Control+v');
  const pasted = await page.getByRole('searchbox').inputValue(); // on one line
  expect(JSON.parse(pasted)).toEqual({ id: { type: 'GoodsCode', value: '100' }, uri });
});

test('Rows are reached by arrow keys, their JSON by Enter', async ({ page, display }) => {
  await openInspector(page, display);
  for (const number of [1, 2, 3]) await display.post('/content', { number });
  await expect(rows(page, 'Content')).toHaveCount(3);
  const shows = (number) => expect(page.locator('.json')).toContainText(`"number": ${number}`);
  await page.locator('#timeline').focus();
  await page.keyboard.press('ArrowUp');
  await shows(3);
  await page.keyboard.press('ArrowUp');
  await shows(2);
  await expect(rows(page).nth(2)).toHaveAttribute('aria-selected', 'true');
  await expect(page.locator('#timeline')).toHaveAttribute('aria-activedescendant', await rows(page).nth(2).getAttribute('id'));
  await page.keyboard.press('End');
  await shows(3);
  await page.keyboard.press('Home');
  await expect(page.locator('#details-title')).toHaveText('Note');
  await page.keyboard.press('ArrowDown');
  await shows(1);
  await page.keyboard.press('Enter');
  await expect(page.locator('#details')).toBeFocused();
  await page.keyboard.press('Escape');
  await expect(page.locator('#timeline')).toBeFocused();
  await page.keyboard.press('Space');
  await expect(page.getByRole('button', { name: 'Resume' })).toBeVisible();
});

test('HTML in bodies, paths and types is text', async ({ page, display }) => {
  const html = '<img src=x onerror="document.title=\'harmed\'"><script>document.title=\'harmed\'</script>';
  await openInspector(page, display);
  await display.post('/content', { [html]: html, type: 'text', data: html });
  await display.post('/%3Cimg%20src=x%20onerror=1%3E', {});
  await rows(page, 'Content').click();
  await expect(page.locator('.json')).toContainText('<img src=x onerror=');
  await expect(rows(page)).toHaveCount(3);
  expect(await page.locator('main img, main script').count()).toBe(0);
  await expect(page).toHaveTitle('Display inspector');
});

test('Of a body of several megabytes the beginning is shown', async ({ page, display }) => {
  await openInspector(page, display);
  const data = Array.from({ length: 60_000 }, (_, index) => ({ code: `${index}`, name: 'Хлеб ржаной', price: 6490 }));
  expect(JSON.stringify({ data }).length).toBeGreaterThan(3e6);
  await display.post('/priceList', { data });
  await display.post('/image', { id: {}, uri: `data:image/png;base64,${'A'.repeat(6_000_000)}` });
  await expect(rows(page, 'ImageData')).toBeVisible();

  await rows(page, 'PriceList').click();
  await expect(page.getByText('Only the first 3,000 lines are shown; the copy is whole.')).toBeAttached();
  await rows(page, 'ImageData').click();
  await expect(page.locator('.json')).toContainText('(6,000,022 characters)');
});
