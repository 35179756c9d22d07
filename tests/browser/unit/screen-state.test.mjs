import assert from 'node:assert/strict';
import test from 'node:test';
import { apply, applyAll, nothing } from '../../../programs/display/web/screen/state.js';
import { receiptIsShown, sceneOf } from '../../../programs/display/web/screen/scene.js';

let n = 0;
const message = (type, body, at = 1000) => ({ n: ++n, type, body, at });
const after = (...messages) => applyAll(messages);
const configure = (values = {}) => message('Configure', values);
const receipt = (number, more = {}, at = 1000) => message('UpdateDocument', { number, state: 'open', positions: [], total: 100, ...more }, at);
const bread = { code: '100', name: 'Хлеб', quantity: 1 };
const milk = { code: '104', name: 'Молоко', quantity: 1 };

test('A Configure makes everything before it go', () => {
  const state = after(receipt(1), message('Content', { type: 'text', data: 'a' }), configure());
  assert.equal(state.receipt, null);
  assert.equal(state.content, null);
  assert.equal(state.isConfigured, true);
});

test('Messages of unknown types and broken ones change nothing', () => {
  for (const odd of [null, 7, {}, { type: 'toString', body: {} }, { type: 'Nothing' }]) assert.equal(apply(nothing, odd), nothing);
});

test('Whatever a body holds, it is read without an error', () => {
  const bodies = [null, 7, 'x', [], {}, { positions: 3, payments: {}, data: 'x', id: null, columns: 'many', close: 1, amount: [] },
    { positions: [null, 1, { name: {} }], payments: [null], data: [1, null], number: {}, scroll: 'down', type: 'text' }];
  for (const type of ['Configure', 'UpdateDocument', 'QrPayment', 'PriceList', 'ImageData', 'Content', 'PaymentDraft', 'ShowAd'])
    for (const body of bodies) assert.doesNotThrow(() => apply(after(configure(), receipt(1)), message(type, body)));
});

test('Before the first Configure the screen waits, then it is idle until a receipt comes', () => {
  assert.equal(sceneOf(nothing, 0), 'waiting');
  assert.equal(sceneOf(after(configure()), 0), 'idle');
  assert.equal(sceneOf(after(configure(), receipt(1)), 0), 'receipt');
  assert.equal(sceneOf(after(configure(), receipt(1), message('UpdateDocument', {})), 0), 'idle');
});

test('A paid receipt gives way after the time-out counted from its arrival', () => {
  const state = after(configure({ 'View.Logic:closedDocumentTimeout': 5000 }), receipt(1, { state: 'paid' }, 20_000));
  assert.equal(receiptIsShown(state, 24_999), true);
  assert.equal(receiptIsShown(state, 25_000), false);
});

test('The line that was added, or changed, is the newest', () => {
  const newestAfter = (...lists) => after(...lists.map((positions) => receipt(1, { positions }))).receipt.newest;
  assert.equal(newestAfter([bread]), 0);
  assert.equal(newestAfter([bread], [bread, milk]), 1);
  assert.equal(newestAfter([bread, milk], [{ ...bread, quantity: 2 }, milk]), 0);
  assert.equal(newestAfter([bread, milk], [bread, milk]), 1);
  assert.equal(newestAfter([bread, milk], [bread]), 0);
  assert.equal(newestAfter([]), -1);
});

test('A code to pay by goes when it is closed and when the receipt is paid', () => {
  const qr = message('QrPayment', { qrCode: 'x', amount: 5, timeout: 60 }, 3000);
  const shown = after(configure(), receipt(1), qr);
  assert.deepEqual(shown.qr, { n: qr.n, text: 'x', amount: 5, timeoutMs: 60_000, at: 3000 });
  assert.equal(apply(shown, message('QrPayment', { close: true })).qr, null);
  assert.equal(apply(shown, receipt(1, { state: 'paid' })).qr, null);
  assert.notEqual(apply(shown, receipt(1, { total: 200 })).qr, null);
  assert.equal(apply(shown, receipt(2)).qr, null);
});

test('A payment that a paid receipt has overtaken is not announced any more', () => {
  const paid = after(configure(), receipt(1, { state: 'paid' }, 1000));
  assert.equal(apply(paid, message('QrPayment', { qrCode: 'x' }, 1200)).qr, null);
  assert.equal(apply(paid, message('PaymentDraft', { kind: 'card' }, 1200)).draft, null);
  assert.notEqual(apply(paid, message('QrPayment', { qrCode: 'x' }, 60_000)).qr, null, 'the receipt is not on the screen any more');
});

test('An announced payment goes with its receipt, with the next one and when it is empty', () => {
  for (const number of [{ number: 1 }, {}]) {
    const shown = after(configure(), receipt(1), message('PaymentDraft', { kind: 'card', amount: 7, ...number }));
    assert.equal(shown.draft.amount, 7);
    assert.equal(apply(shown, receipt(1, { state: 'paid' })).draft, null);
    assert.equal(apply(shown, receipt(2)).draft, null);
    assert.equal(apply(shown, message('UpdateDocument', {})).draft, null);
    assert.equal(apply(shown, message('PaymentDraft', {})).draft, null);
    assert.notEqual(apply(shown, receipt(1, { total: 5 })).draft, null);
  }
});

test('An announced payment is for its receipt whichever of them comes first', () => {
  assert.notEqual(after(configure(), message('PaymentDraft', { number: 1, kind: 'card' }), receipt(1)).draft, null);
  assert.equal(after(configure(), message('PaymentDraft', { number: 1, kind: 'card' }), receipt(2)).draft, null);
  assert.equal(after(configure(), receipt(2), message('PaymentDraft', { number: 1, kind: 'card' })).draft, null);
});

test('A price list remembers how it was scrolled until the next one comes', () => {
  const list = message('PriceList', { title: 'Цены', data: [{ name: 'a' }, 3], columns: 2 });
  const scrolled = after(list, message('PriceList', { scroll: 'down' }), message('PriceList', { scroll: 'sideways' }));
  assert.deepEqual(scrolled.prices.scrolls, ['down']);
  assert.deepEqual(scrolled.prices.rows, [{ name: 'a' }]);
  assert.deepEqual(apply(scrolled, list).prices.scrolls, []);
  assert.equal(apply(scrolled, message('PriceList', { close: true })).prices, null);
  assert.equal(after(message('PriceList', { scroll: 'down' })).prices, null);
});

test('Content is a text or a picture that the page may show, anything else is nothing', () => {
  const contentOf = (body) => after(message('Content', body)).content;
  assert.equal(contentOf({ type: 'text', data: 'Привет' }).kind, 'text');
  assert.equal(contentOf({ type: 'image', data: 'data:image/png;base64,AA==' }).kind, 'picture');
  assert.equal(contentOf({ type: 'image', data: '/look/logo' }).kind, 'picture');
  for (const body of [{ type: 'text', data: 'a', hide: true }, { type: 'text', data: '' }, { type: 'text', data: {} },
    { type: 'image', data: 'http://example.com/a.png' }, { type: 'image', data: '//example.com/a.png' },
    { type: 'image', data: '/\\example.com/a.png' },
    { type: 'image', data: 'javascript:alert(1)' }, { type: 'film', data: 'x' }])
    assert.equal(contentOf(body), null, JSON.stringify(body));
});

test('A picture replaces the earlier one of the same goods', () => {
  const id = { type: 'GoodsCode', value: '100' };
  const state = after(message('ImageData', { id, uri: 'data:image/png,a' }), message('ImageData', { id, uri: '' }));
  assert.deepEqual([...state.pictures], [['GoodsCode:100', '']]);
});

test('Of more than 2000 pictures the oldest go', () => {
  const picture = (_, at) => message('ImageData', { id: { type: 'GoodsCode', value: `${at}` }, uri: '' });
  const kept = [...after(...Array.from({ length: 2003 }, picture)).pictures.keys()];
  assert.equal(kept.length, 2000);
  assert.equal(kept[0], 'GoodsCode:3');
});

test('Beyond 32 MiB the oldest pictures go', () => {
  const picture = (value, megabytes) => message('ImageData', { id: { type: 'GoodsCode', value }, uri: 'x'.repeat(megabytes * 1_048_576) });
  const kept = (...messages) => [...after(...messages).pictures.keys()];
  assert.deepEqual(kept(picture('1', 10), picture('2', 10), picture('3', 10)), ['GoodsCode:1', 'GoodsCode:2', 'GoodsCode:3']);
  assert.deepEqual(kept(picture('1', 15), picture('2', 15), picture('3', 15)), ['GoodsCode:2', 'GoodsCode:3']);
  assert.deepEqual(kept(picture('1', 15), picture('2', 15), picture('1', 15), picture('3', 15)), ['GoodsCode:1', 'GoodsCode:3'],
    'a picture that came again is a new one');
  assert.deepEqual(kept(picture('1', 33)), []);
});

test('Of the scrolls of a price list the newest 200 are kept', () => {
  const scrolls = Array.from({ length: 250 }, (_, at) => message('PriceList', { scroll: at < 50 ? 'up' : 'down' }));
  assert.deepEqual(after(message('PriceList', { data: [] }), ...scrolls).prices.scrolls, Array(200).fill('down'));
});
