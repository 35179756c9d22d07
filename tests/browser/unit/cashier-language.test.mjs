import assert from 'node:assert/strict';
import test from 'node:test';
import { answerText, commandText, decimal, entry, kopecks, script } from '../../../programs/register/web/language.js';

test('a command is written with what it does first', () => {
  assert.equal(commandText({ amount: 500000, do: 'pay', kind: 'cash' }), '{"do":"pay","amount":500000,"kind":"cash"}');
  assert.equal(commandText({ do: 'open' }), '{"do":"open"}');
});

test('what names nothing to do is written as it is', () => {
  assert.equal(commandText({}), '{}');
  assert.equal(commandText({ text: 'a' }), '{"text":"a"}');
});

test('an answer is written in the order of the register', () => {
  assert.equal(answerText({ ok: true, n: 3, do: 'sell' }), '{"n":3,"do":"sell","ok":true}');
  assert.equal(answerText({ error: 'no', do: 'sell', n: 4, ok: false }), '{"n":4,"do":"sell","ok":false,"error":"no"}');
});

test('commands together are a script of one a line', () => {
  assert.equal(script(['{"do":"open"}', '{"do":"sell",\n"goods":"100"}']), '{"do":"open"}\n{"do":"sell", "goods":"100"}\n');
  assert.equal(script([]), '');
});

test('a number may have a comma or a point', () => {
  for (const [text, number] of [['0,734', 0.734], ['0.734', 0.734], [' 12 ', 12], [',5', 0.5], ['3,', 3], ['0', 0]])
    assert.equal(decimal(text), number, text);
});

test('what is no number from 0 is none', () => {
  for (const text of ['', ' ', '-1', '1e3', '1,2,3', 'два', ',', '0x10', 'Infinity']) assert.equal(decimal(text), null, text);
});

test('roubles are counted in whole kopecks', () => {
  for (const [text, amount] of [['500', 50000], ['934,98', 93498], ['1 000', 100000], ['0,29', 29], ['1\u00a0234,5', 123450]])
    assert.equal(kopecks(text), amount, text);
  assert.equal(kopecks('сто'), null);
});

test('a number and an asterisk before the goods are how many', () => {
  assert.deepEqual(entry('3*100'), { quantity: 3, goods: '100' });
  assert.deepEqual(entry(' 0,734 × 112 '), { quantity: 0.734, goods: '112' });
  assert.deepEqual(entry('4600000001005'), { quantity: null, goods: '4600000001005' });
  assert.deepEqual(entry('1,2,3*100'), { quantity: null, goods: '1,2,3*100' });
});
