import assert from 'node:assert/strict';
import test from 'node:test';
import { contrast, mix, readable, readableRatio } from '../../../programs/display/web/screen/contrast.js';

test('Black on white has the greatest contrast and a colour on itself the least', () => {
  assert.equal(contrast('000000', 'ffffff').toFixed(2), '21.00');
  assert.equal(contrast('988787', '988787'), 1);
});

test('A colour with enough contrast is taken as it is', () => {
  for (const color of ['000000', 'd61821', '767676']) assert.equal(readable(color, 'ffffff'), color);
});

test('A colour that is too faint is moved until it can be read, and no further', () => {
  for (const [color, ground] of [['988787', 'fcf8f8'], ['328f32', 'fcf8f8'], ['ffff00', 'ffffff'], ['333333', '101010'], ['0000ff', '000020']]) {
    assert.ok(contrast(color, ground) < readableRatio, `${color} on ${ground} is faint`);
    const moved = readable(color, ground);
    assert.ok(contrast(moved, ground) >= readableRatio, `${moved} on ${ground} can be read`);
    assert.ok(contrast(moved, ground) < readableRatio + 0.15, `${moved} is not further from ${color} than needed`);
  }
});

test('A colour keeps its side of the ground unless only the other one can be read', () => {
  assert.ok(contrast(readable('988787', 'fcf8f8'), '000000') < contrast('988787', '000000'), 'darker on a light ground');
  assert.ok(contrast(readable('444444', '101010'), '000000') > contrast('444444', '000000'), 'lighter on a dark ground');
  assert.ok(contrast(readable('b0b0b0', 'a0a0a0'), 'a0a0a0') >= readableRatio, 'lighter is not enough: darker');
});

test('Every colour can be read on every ground', () => {
  const grays = Array.from({ length: 32 }, (_, at) => (at * 8).toString(16).padStart(2, '0').repeat(3));
  for (const ground of grays)
    for (const color of grays) assert.ok(contrast(readable(color, ground), ground) >= readableRatio, `${color} on ${ground}`);
});

test('A mixture lies between its colours', () => {
  assert.equal(mix('000000', 'ffffff', 0.2), '333333');
  assert.equal(mix('102030', '102030', 0.7), '102030');
});
