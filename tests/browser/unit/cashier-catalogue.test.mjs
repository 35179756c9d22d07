import assert from 'node:assert/strict';
import test from 'node:test';
import { articleOf, fits, isWeighed } from '../../../programs/register/web/catalogue.js';

const bread = { code: '100', barcode: '4600000001005', name: 'Хлеб бородинский, 400 г', unit: 'шт' };
const honey = { code: '130', barcode: '', name: 'Мёд цветочный', unit: 'шт' };
const apples = { code: '112', barcode: '2100112000009', name: 'Яблоки красные', unit: 'кг' };
const goods = [bread, honey, apples];

test('an article is found by its whole code or bar code', () => {
  assert.equal(articleOf(goods, '100'), bread);
  assert.equal(articleOf(goods, '2100112000009'), apples);
  for (const text of ['10', '1000', '', 'Хлеб']) assert.equal(articleOf(goods, text), null, text);
});

test('goods fit by words of the name in any order and case', () => {
  for (const text of ['хлеб', 'БОРОД', '400 хлеб', '', '  ']) assert.ok(fits(bread, text), text);
  for (const text of ['хлеб ржаной', 'батон']) assert.ok(!fits(bread, text), text);
});

test('е stands for ё', () => {
  assert.ok(fits(honey, 'мед'));
  assert.ok(fits(honey, 'мёд'));
});

test('goods fit by the start of a code or of a bar code', () => {
  assert.ok(fits(bread, '10'));
  assert.ok(fits(bread, '46000'));
  assert.ok(!fits(bread, '05'));
});

test('what is missing in an article fits nothing and breaks nothing', () => {
  assert.ok(!fits({}, 'хлеб'));
  assert.ok(fits({}, ''));
});

test('what is sold by the kilogram is weighed', () => {
  assert.ok(isWeighed(apples));
  assert.ok(!isWeighed(bread));
});
