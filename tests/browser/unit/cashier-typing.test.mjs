import assert from 'node:assert/strict';
import test from 'node:test';
import { pressed } from '../../../programs/register/web/typing.js';

const typed = (keys, start = '', fresh = false) => keys.reduce(
  (text, key, i) => pressed(text, key, fresh && i === 0), start);

test('digits follow one another', () => {
  assert.equal(typed(['1', '0', '5']), '105');
});

test('the first key replaces a proposal', () => {
  assert.equal(typed(['7', '5'], '1', true), '75');
  assert.equal(typed([',', '5'], '1', true), '0,5');
  assert.equal(typed(['back'], '934,98', true), '');
});

test('there is one comma, and a number does not begin with it', () => {
  assert.equal(typed([',', '7', ',', '3']), '0,73');
  assert.equal(typed([','], '1.5'), '1.5');
});

test('a zero is not followed by digits', () => {
  assert.equal(typed(['0', '0', '7']), '7');
});

test('the last character is taken back', () => {
  assert.equal(typed(['1', '2', 'back']), '1');
  assert.equal(typed(['back']), '');
});

test('a number stays short enough to be one', () => {
  assert.equal(typed(Array(20).fill('9')).length, 9);
});
