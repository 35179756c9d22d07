import assert from 'node:assert/strict';
import test from 'node:test';
import { dueOf, isOpen, likelyNotes, positionsOf, selectionAfter } from '../../../programs/register/web/receipt.js';

const receipt = (count, number = 1) => ({ number, state: 'open', positions: Array.from({ length: count }, () => ({})) });

test('a document that is no receipt has no positions', () => {
  for (const document of [null, {}, { positions: 'x' }, { positions: null }]) assert.deepEqual(positionsOf(document), []);
  assert.deepEqual(positionsOf({ positions: [null, 5, { name: 'a' }] }), [{}, {}, { name: 'a' }]);
});

test('only a receipt in the state open is open', () => {
  assert.ok(isOpen({ state: 'open' }));
  for (const document of [null, {}, { state: 'paid' }]) assert.ok(!isOpen(document));
});

test('what is paid already is not due', () => {
  assert.equal(dueOf({ total: 1000 }), 1000);
  assert.equal(dueOf({ total: 1000, payments: [{ amount: 300 }, { amount: 200 }] }), 500);
  assert.equal(dueOf({ total: 1000, payments: [{ amount: 5000 }] }), 0);
  assert.equal(dueOf({ total: 'x', payments: [null, {}] }), 0);
  assert.equal(dueOf(null), 0);
});

test('a new position is selected', () => {
  assert.equal(selectionAfter(0, receipt(2), receipt(3)), 2);
  assert.equal(selectionAfter(-1, null, receipt(0)), -1);
});

test('a selection stays when positions change or go, as far as it can', () => {
  assert.equal(selectionAfter(1, receipt(3), receipt(3)), 1);
  assert.equal(selectionAfter(2, receipt(3), receipt(2)), 1);
  assert.equal(selectionAfter(0, receipt(1), receipt(0)), -1);
});

test('another receipt starts with its last position', () => {
  assert.equal(selectionAfter(0, receipt(5, 1), receipt(2, 2)), 1);
  assert.equal(selectionAfter(3, receipt(5, 1), receipt(0, 2)), -1);
  assert.equal(selectionAfter(3, receipt(5, 1), null), -1);
});

test('likely notes are round sums above what is due, each once', () => {
  assert.deepEqual(likelyNotes(93498), [1000, 2000, 5000]);
  assert.deepEqual(likelyNotes(6490), [100, 500, 1000, 2000]);
  assert.deepEqual(likelyNotes(100000), [2000, 5000]);
  assert.deepEqual(likelyNotes(0), []);
});
