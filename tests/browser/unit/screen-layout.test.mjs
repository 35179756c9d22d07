import assert from 'node:assert/strict';
import test from 'node:test';
import { layoutOf } from '../../../programs/display/web/screen/layout.js';
import { looksOf } from '../../../programs/display/web/screen/looks.js';

const windows = [[800, 480], [1024, 600], [1024, 768], [1280, 720], [1366, 768], [1920, 1080], [480, 800], [768, 1366], [1080, 1920]]
  .map(([width, height]) => ({ width, height }));
const fullHd = { width: 1920, height: 1080 };
const classic = (displayType = 0, more = {}) => looksOf({ 'View.Style:displayType': displayType, ...more });
const touch = (displayType = 0, more = {}) => looksOf({ 'View.Interface:touchng': true, 'View.QmlStyle:displayType': displayType, ...more });

const extreme = {
  'View.Style:elementsMargin': 250, 'View.Style:receiptHeight': 3000, 'View.Style:receiptWidth': 2000,
  'View.QmlStyle:advertisingWidth': 3000, 'View.QmlStyle:advertisingHeight': 3000,
};
const tiny = {
  'View.Style:elementsMargin': 0, 'View.Style:receiptHeight': 1, 'View.Style:receiptWidth': 1,
  'View.QmlStyle:advertisingWidth': 1, 'View.QmlStyle:advertisingHeight': 1,
};

function assertWithin(box, { width, height }, what) {
  assert.ok(box.x >= -0.01 && box.y >= -0.01, `${what} begins on the stage`);
  assert.ok(box.x + box.width <= width + 0.01 && box.y + box.height <= height + 0.01, `${what} ends on the stage`);
  assert.ok(box.width > 0 && box.height > 0, `${what} has a size`);
}

const overlap = (a, b) => a.x + a.width > b.x + 0.01 && b.x + b.width > a.x + 0.01
  && a.y + a.height > b.y + 0.01 && b.y + b.height > a.y + 0.01;

test('In every window and layout the parts are on the stage and none covers the other', () => {
  for (const window of windows)
    for (const looks of [0, 1, 2, 3].flatMap((type) => [classic(type), touch(type), ...[extreme, tiny].map((more) => touch(type, more))])) {
      const layout = layoutOf(window, looks, true);
      const what = `${window.width}x${window.height} type ${looks.displayType}`;
      assertWithin(layout.receipt, layout.stage, `receipt in ${what}`);
      assertWithin(layout.code.box, layout.stage, `code in ${what}`);
      assertWithin(layout.panel, layout.stage, `panel in ${what}`);
      if (layout.advertising === null) continue;
      assertWithin(layout.advertising, layout.stage, `advertising in ${what}`);
      assert.ok(!overlap(layout.receipt, layout.advertising), `parts overlap in ${what}`);
    }
});

test('A text of 14 px is about 29 px high on a full HD screen', () => {
  const size = 14 * layoutOf(fullHd, classic(), true).scale;
  assert.ok(size > 28 && size < 30, `${size} px`);
});

test('The receipt has the size that is set where there is room for it', () => {
  const { receipt } = layoutOf(fullHd, classic(0, { 'View.Style:receiptWidth': 620, 'View.Style:receiptHeight': 540 }), true);
  assert.deepEqual([receipt.width, receipt.height], [620, 540]);
});

test('In a low window the receipt is lower than set, and texts keep their size', () => {
  const { scale, receipt } = layoutOf({ width: 800, height: 480 }, classic(), true);
  assert.ok(scale >= 1);
  assert.ok(receipt.height < 500 && receipt.height > 400);
  assert.equal(receipt.width, 500);
});

test('The receipt is on the left, or on the right with type 1', () => {
  const left = layoutOf(fullHd, classic(0), true);
  const right = layoutOf(fullHd, classic(1), true);
  assert.ok(left.receipt.x < left.advertising.x);
  assert.ok(right.receipt.x > right.advertising.x);
});

test('With type 2 the receipt is alone and as wide as the stage lets it', () => {
  const { receipt, advertising, stage } = layoutOf(fullHd, classic(2), true);
  assert.equal(advertising, null);
  assert.equal(receipt.width, stage.width - 20);
});

test('With type 3 the advertising is above the receipt', () => {
  const { receipt, advertising } = layoutOf(fullHd, classic(3), true);
  assert.ok(advertising.y + advertising.height <= receipt.y);
});

test('An unknown type lies as type 0 does', () => {
  assert.deepEqual(layoutOf(fullHd, classic(7), true), layoutOf(fullHd, classic(0), true));
});

test('In a portrait window the parts are above each other', () => {
  const { receipt, advertising } = layoutOf({ width: 768, height: 1366 }, classic(0), true);
  assert.ok(receipt.y + receipt.height <= advertising.y);
});

test('Without a receipt the advertising has the whole stage, whatever the type', () => {
  for (const type of [0, 1, 2, 3]) {
    const { advertising, stage } = layoutOf(fullHd, classic(type), false);
    assert.deepEqual(advertising, { x: 0, y: 0, ...stage });
  }
});

test('With the touch interface the advertising area has its own size', () => {
  const { advertising } = layoutOf(fullHd, touch(0, { 'View.QmlStyle:advertisingWidth': 480, 'View.QmlStyle:advertisingHeight': 270 }), true);
  assert.deepEqual([advertising.width, advertising.height], [480, 270]);
});

test('Above each other, too, the advertising area of the touch interface has its size', () => {
  const { advertising } = layoutOf({ width: 768, height: 1366 }, touch(0), true);
  assert.deepEqual([advertising.width, advertising.height].map(Math.round), [560, 256]);
});

test('A code to pay by has about half of the height in every window and layout', () => {
  for (const window of windows)
    for (const looks of [0, 1, 2, 3].flatMap((type) => [classic(type), touch(type)])) {
      const { stage, code } = layoutOf(window, looks, true);
      const share = code.side / stage.height;
      assert.ok(share >= 0.45 || code.side >= 0.8 * stage.width, `${share} in ${window.width}x${window.height} type ${looks.displayType}`);
      assert.ok(code.side <= Math.min(code.box.width, code.box.height));
    }
});

test('The elements keep the distance that is set', () => {
  const { receipt, advertising } = layoutOf(fullHd, classic(0, { 'View.Style:elementsMargin': 24 }), true);
  assert.equal(receipt.x, 24);
  assert.equal(advertising.x - receipt.x - receipt.width, 24);
});
