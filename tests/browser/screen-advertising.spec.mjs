// The advertising area and the idle view: pictures, films, streams, and what the register puts there.
import { createServer } from 'node:http';
import { once } from 'node:events';
import { readFile } from 'node:fs/promises';
import { test as base, expect } from './support/fixtures.mjs';
import { recordFilm } from './support/film.mjs';
import { sourcePath } from './support/program.mjs';
import { imageData, openScreen, purchase, receipt, settled } from './support/screen.mjs';
import { keepScreenshot } from './support/screenshots.mjs';

const demoFile = (name) => readFile(sourcePath(`demo/${name}`));

/** An ad service of the test's own: `contents` by path, each bytes or a function that answers; it
    also takes what the display reports to the plug-in. */
const test = base.extend({
  service: async ({}, use) => {
    const contents = new Map();
    const reports = [];
    const server = createServer(async (request, response) => {
      if (request.method === 'POST') {
        reports.push(JSON.parse(Buffer.concat(await request.toArray())));
        response.end();
        return;
      }
      const content = contents.get(new URL(request.url, 'http://localhost').pathname);
      if (content instanceof Function) content(response);
      else response.writeHead(content ? 200 : 404).end(content);
    }).listen(0, '127.0.0.1');
    await once(server, 'listening');
    await use({ contents, reports, url: `http://127.0.0.1:${server.address().port}` });
    server.closeAllConnections();
    server.close();
  },
});

const area = (page) => page.locator('#advertising');
const shownPicture = (page) => page.locator('.medium:not(.is-leaving) > img:not(.backdrop)');

test('Before the first settings the screen waits for the register', async ({ page, display }) => {
  await openScreen(page, display);
  await expect(page.locator('.greeting')).toHaveText('Ожидание кассы');
  await display.post('/configure', {});
  await expect(page.locator('.greeting')).toHaveText('Добро пожаловать!');
});

test('Without a receipt the screen welcomes with the time of day', async ({ page, display }) => {
  await display.post('/configure', {});
  await openScreen(page, display);
  const now = new Intl.DateTimeFormat('ru-RU', { hour: '2-digit', minute: '2-digit', timeZone: 'Europe/Moscow' });
  await expect.poll(async () => (await page.locator('.clock').textContent()) === now.format(new Date())).toBe(true);
  await expect(area(page)).toHaveCSS('width', await page.locator('#stage').evaluate((stage) => getComputedStyle(stage).width));
});

test('A picture is shown full screen without a receipt, and beside it with one', async ({ page, display, service }) => {
  service.contents.set('/coffee.svg', await demoFile('ads/coffee.svg'));
  await display.post('/configure', {});
  await display.post('/showAD', { id: 'coffee', index: 1, url: `${service.url}/coffee.svg`, time: 60 });
  await openScreen(page, display);
  await expect(shownPicture(page)).toBeVisible();
  await expect(page.locator('.greeting')).toBeHidden();
  const full = await area(page).boundingBox();
  expect([Math.round(full.width), Math.round(full.height)]).toEqual([1280, 720]);
  await settled(page);
  await keepScreenshot(page, 'screen-advertisement');
  await display.post('/updateDocument', receipt(purchase));
  await expect(page.locator('#receipt')).toBeVisible();
  await expect(shownPicture(page)).toBeVisible();
  expect((await area(page).boundingBox()).width).toBeLessThan(640);
  await settled(page);
  await keepScreenshot(page, 'screen-advertisement-beside-receipt');
});

test('The next picture takes the place of the one before, which stays until then', async ({ page, display, service }) => {
  service.contents.set('/coffee.svg', await demoFile('ads/coffee.svg'));
  service.contents.set('/bread.svg', await demoFile('ads/bread.svg'));
  await display.post('/configure', {});
  await display.post('/showAD', { id: 'coffee', index: 1, url: `${service.url}/coffee.svg`, time: 60 });
  await openScreen(page, display);
  await expect(shownPicture(page)).toHaveAttribute('src', /\/ad\?n=1&/);
  let answer = null;
  service.contents.set('/slow.svg', (response) => { answer = response; });
  await display.post('/showAD', { id: 'bread', index: 2, url: `${service.url}/slow.svg`, time: 60 });
  await expect.poll(() => answer !== null).toBe(true);
  await expect(shownPicture(page)).toHaveAttribute('src', /\/ad\?n=1&/);
  answer.end(service.contents.get('/bread.svg'));
  await expect(shownPicture(page)).toHaveAttribute('src', /\/ad\?n=2&/);
  await expect(page.locator('.medium')).toHaveCount(1);
});

test('What is neither a picture nor a film leaves the welcome', async ({ page, display, service }) => {
  service.contents.set('/text', Buffer.from('no picture'));
  await display.post('/configure', {});
  await openScreen(page, display);
  await display.post('/showAD', { id: 'text', index: 1, url: `${service.url}/text`, time: 60 });
  await display.program.printed(/neither a picture nor a film/);
  await page.reload();
  await expect(page.locator('.greeting')).toBeVisible();
  await expect(page.locator('.medium')).toHaveCount(0);
});

test('A film plays silently and again and again', async ({ page, context, display, service }) => {
  service.contents.set('/film.webm', await recordFilm(context));
  await display.post('/configure', {});
  await display.post('/showAD', { id: 'film', index: 1, url: `${service.url}/film.webm`, time: 60 });
  await openScreen(page, display);
  const film = page.locator('video');
  await expect(film).toBeVisible();
  await expect.poll(() => film.evaluate((video) => video.currentTime)).toBeGreaterThan(0.1);
  expect(await film.evaluate((video) => [video.muted, video.loop, video.paused])).toEqual([true, true, false]);
});

test('A film that the browser cannot play is reported, and the welcome stays', async ({ page, context, startDisplay, service }) => {
  const display = await startDisplay({ pluginUrl: service.url });
  const film = await recordFilm(context);
  service.contents.set('/film.webm', Buffer.concat([film.subarray(0, 64), Buffer.alloc(2000, 0x55)]));
  await display.post('/configure', {});
  await openScreen(page, display);
  await display.post('/showAD', { id: 'film', index: 1, url: `${service.url}/film.webm`, time: 60 });
  await expect.poll(() => service.reports).toContainEqual({ type: 'result', name: 'adResult', value: false });
  await expect(page.locator('video')).toHaveCount(0);
  await expect(page.locator('.greeting')).toBeVisible();
});

test('A film that breaks while it plays is reported once, and goes', async ({ page, context, startDisplay, service }) => {
  const display = await startDisplay({ pluginUrl: service.url });
  service.contents.set('/film.webm', await recordFilm(context));
  const reported = [];
  page.on('request', (request) => { if (request.url().endsWith('/ad-failed')) reported.push(request.postDataJSON()); });
  await display.post('/configure', {});
  await openScreen(page, display);
  await display.post('/showAD', { id: 'film', index: 1, url: `${service.url}/film.webm`, time: 3600 });
  await expect(page.locator('video')).toBeVisible();
  await page.locator('video').evaluate((film) => {
    for (let count = 0; count < 2; ++count) film.dispatchEvent(new Event('error'));
  });
  await expect.poll(() => service.reports).toContainEqual({ type: 'result', name: 'adResult', value: false });
  expect(reported).toEqual([{ n: 1, reason: expect.stringContaining('the film cannot be played') }]);
  await expect(page.locator('video')).toHaveCount(0);
  await expect(page.locator('.greeting')).toBeVisible();
});

test('Each picture of a stream follows the one before without a gap', async ({ page, display, service }) => {
  const picture = (hue) => `<?xml version="1.0"?><svg xmlns="http://www.w3.org/2000/svg" width="64" height="36"><rect width="64" height="36" fill="hsl(${hue} 70% 50%)"/></svg>`;
  let stream = null;
  service.contents.set('/streams/5', (response) => {
    stream = response;
    response.writeHead(200, { 'Content-Type': 'multipart/x-mixed-replace; boundary=next' });
  });
  const send = (hue) => stream.write(`--next\r\nContent-Type: image/svg+xml\r\nContent-Length: ${picture(hue).length}\r\n\r\n${picture(hue)}\r\n`);
  await display.post('/configure', {});
  await openScreen(page, display);
  await display.post('/showAD', { index: 0, url: `${service.url.replace('http', 'ads')}?stream=5&key=a`, time: 2147483647 });
  await expect.poll(() => stream !== null).toBe(true);
  send(0);
  await expect(shownPicture(page)).toHaveAttribute('src', /frame=1$/);
  await page.evaluate(() => {
    globalThis.gaps = 0;
    const player = document.querySelector('.player');
    new MutationObserver(() => { if (!player.querySelector('img')?.complete) ++globalThis.gaps; })
      .observe(player, { childList: true, subtree: true });
  });
  for (let frame = 2; frame <= 6; ++frame) {
    send(frame * 50);
    await expect(shownPicture(page)).toHaveAttribute('src', new RegExp(`frame=${frame}$`));
  }
  expect(await page.evaluate(() => globalThis.gaps)).toBe(0);
  stream.end();
  await expect(page.locator('.medium')).toHaveCount(0);
  await expect(page.locator('.greeting')).toBeVisible();
});

test('A text of the register is shown large beside the receipt and full screen without one', async ({ page, display }) => {
  await display.post('/configure', {});
  await display.post('/content', { data: 'Касса закрыта', type: 'text', hide: false });
  await openScreen(page, display);
  const content = page.locator('.content');
  await expect(content).toHaveText('Касса закрыта');
  expect(Math.round((await content.boundingBox()).width)).toBe(1280);
  await display.post('/updateDocument', receipt(purchase));
  await expect(page.locator('#receipt')).toBeVisible();
  await expect(content).toBeVisible();
  expect((await content.boundingBox()).width).toBeLessThan(640);
  await display.post('/content', { data: '', type: 'text', hide: true });
  await expect(content).toBeHidden();
});

test('A picture of the register is shown, and what is neither text nor picture is not', async ({ page, display }) => {
  await display.post('/configure', {});
  await openScreen(page, display);
  await display.post('/content', { data: (await imageData('100')).uri, type: 'image', hide: false });
  await expect(page.locator('.content img')).toBeVisible();
  await display.post('/content', { data: 'x', type: 'film', hide: false });
  await expect(page.locator('.content')).toBeHidden();
  await display.post('/content', { data: 'data:image/png;base64,AAAA', type: 'image', hide: false });
  await expect(page.locator('.content')).toBeHidden();
});

test('A picture of the register that fails late leaves what has come since', async ({ page, display, allowComplaints }) => {
  allowComplaints(/ERR_FAILED/);
  let request = null;
  await page.route('**/late.png', (route) => { request = route; });
  await display.post('/configure', {});
  await openScreen(page, display);
  await display.post('/content', { data: '/late.png', type: 'image', hide: false });
  await expect.poll(() => request !== null).toBe(true);
  await page.locator('.content img').evaluate((picture) => {
    globalThis.failed = new Promise((done) => { picture.addEventListener('error', () => done()); });
  });
  await display.post('/content', { data: 'Касса закрыта', type: 'text', hide: false });
  await expect(page.locator('.content')).toHaveText('Касса закрыта');
  await request.abort();
  await page.evaluate(() => globalThis.failed);
  await expect(page.locator('.content')).toBeVisible();
});

test('The logo and the picture behind the screen come from the settings', async ({ page, display, service }) => {
  service.contents.set('/coffee.svg', await demoFile('ads/coffee.svg'));
  await display.post('/configure', {
    'View.Style:appLogoPath': sourcePath('demo/pictures/bread-rye.svg'),
    'View.Style:backgroundImagePath': sourcePath('demo/ads/fruit.svg'),
  });
  await openScreen(page, display);
  const logo = page.locator('.welcome .logo');
  await expect(logo).toBeVisible();
  await expect.poll(() => logo.evaluate((image) => image.naturalWidth)).toBeGreaterThan(0);
  await expect(page.locator('#stage')).toHaveCSS('background-image', /\/look\/background\?n=\d+/);
  expect((await page.request.get(`${display.url}/look/background?n=1`)).status()).toBe(200);
  await display.post('/showAD', { id: 'coffee', index: 1, url: `${service.url}/coffee.svg`, time: 60 });
  await expect(page.locator('.logo.corner')).toBeVisible();
  await display.post('/configure', {});
  await expect(logo).toBeHidden();
  await expect(page.locator('#stage')).toHaveCSS('background-image', 'none');
});
