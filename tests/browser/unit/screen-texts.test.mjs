import assert from 'node:assert/strict';
import test from 'node:test';
import { fixed, quantity } from '../../../programs/pages/web/russian.js';
import { countdown } from '../../../programs/display/web/screen/countdown.js';
import { fillMask } from '../../../programs/display/web/screen/mask.js';
import { pageAfter, pagesOf } from '../../../programs/display/web/screen/pages.js';
import { typeset } from '../../../programs/display/web/screen/typeset.js';
import { goodsCount, receiptOf } from '../../../programs/display/web/screen/receipt.js';

const fill = (mask, position) => fillMask(mask, position, { fixed, plain: quantity });

test('A mask is filled in with numbers as they are written in Russian', () => {
  const position = { disc_perc: 15, disc_sum: 1234.5, name: 'Сыр' };
  assert.equal(fill('Скидка %(position.disc_perc[.2f])%', position), 'Скидка 15,00%');
  assert.equal(fill('−%(position.disc_perc)% на %(position.name)', position), '−15% на Сыр');
  assert.equal(fill('%(position.disc_perc[.0f]) %(position.disc_sum[.1f])', position), '15 1\u00a0234,5');
});

test('A mask may ask for more digits than a browser can write', () => {
  assert.equal(fill('%(position.disc_perc[.99f])', { disc_perc: 1 }), `1,${'0'.repeat(20)}`);
});

test('What a mask names and a position lacks is left out', () => {
  assert.equal(fill('a%(position.none)b', {}), 'ab');
  assert.equal(fill('%(position.list)', { list: [1] }), '');
});

test('A mask without a place, or with a broken one, stays as it is', () => {
  for (const mask of ['Скидка', '100 %', '%(position.)', '%(disc_perc)', '%(position.a', '$& $1']) assert.equal(fill(mask, { a: 1 }), mask);
});

test('A text that is filled in is not taken for a pattern', () => {
  assert.equal(fill('[%(position.name)]', { name: '$& %(position.name)' }), '[$& %(position.name)]');
});

test('The time left is counted down from the arrival to zero', () => {
  const qr = { at: 1000, timeoutMs: 90_000 };
  assert.deepEqual(countdown(qr, 1000), { isOver: false, left: '1:30', share: 1 });
  assert.deepEqual(countdown(qr, 46_000), { isOver: false, left: '0:45', share: 0.5 });
  assert.equal(countdown(qr, 90_999).isOver, false);
  assert.deepEqual(countdown(qr, 91_000), { isOver: true, left: '0:00', share: 0 });
  assert.equal(countdown(qr, 0).left, '1:30', 'a clock that is behind does not lengthen it');
});

test('Without a time-out nothing is counted down', () => assert.equal(countdown({ at: 0, timeoutMs: 0 }, 5), null));

test('A price list has fewer columns where they would be too narrow', () => {
  assert.equal(pagesOf(10, 3, { width: 1200, height: 400 }, 40).columns, 3);
  assert.equal(pagesOf(10, 3, { width: 700, height: 400 }, 40).columns, 2);
  assert.equal(pagesOf(10, 3, { width: 100, height: 400 }, 40).columns, 1);
});

test('A price list has as many pages as its rows need', () => {
  const room = { width: 700, height: 400 };
  assert.deepEqual(pagesOf(36, 2, room, 40), { columns: 2, rows: 10, pages: 2 });
  assert.equal(pagesOf(40, 2, room, 40).pages, 2);
  assert.equal(pagesOf(41, 2, room, 40).pages, 3);
  assert.equal(pagesOf(0, 2, room, 40).pages, 1);
});

test('Scrolling stops at both ends', () => {
  assert.equal(pageAfter([], 3), 0);
  assert.equal(pageAfter(['up', 'down'], 3), 1);
  assert.equal(pageAfter(['down', 'down', 'down', 'down', 'up'], 3), 1);
  assert.equal(pageAfter(['bottom'], 3), 2);
  assert.equal(pageAfter(['bottom', 'top'], 3), 0);
});

test('Pieces are counted one by one, and what is weighed once', () => {
  const positions = [{ quantity: 2 }, { quantity: 0.734 }, {}, { quantity: 'x' }];
  assert.equal(goodsCount(receiptOf({ number: 1, positions })), 5);
});

test('A number stays in one line with its unit, and nothing else changes', () => {
  assert.equal(typeset('Хлеб, 400 г'), 'Хлеб, 400\u00a0г');
  assert.equal(typeset('Молоко 3,2 %, 930 мл'), 'Молоко 3,2\u00a0%, 930\u00a0мл');
  for (const text of ['10 груш', 'Сорт 1 манго', 'а г', '']) assert.equal(typeset(text), text);
});
