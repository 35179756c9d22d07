import assert from 'node:assert/strict';
import { test } from 'node:test';
import { jsonLines, oneLine, searchText } from '../../../programs/display/web/inspector/json.js';

const textOf = ({ lines }) => lines.map((line) => line.map(({ text }) => text).join('')).join('\n');

test('Short JSON is written as JSON.stringify indents it', () => {
  const value = {
    text: 'a "quoted"\n<b>', empty: {}, none: [], list: [1, -2.5, [true, null]], nested: { '': false },
  };
  assert.equal(textOf(jsonLines(value, 100)), JSON.stringify(value, null, 2));
});

test('A value that is no object is written too', () => {
  assert.deepEqual(['text', 4, null, true].map((value) => textOf(jsonLines(value, 100))), ['"text"', '4', 'null', 'true']);
});

test('Pieces tell what they are', () => {
  const { lines } = jsonLines({ key: [1, 'text', null] }, 100);
  assert.deepEqual(lines.flat().filter(({ kind }) => kind !== 'mark').map(({ kind, text }) => [kind, text]),
    [['key', '"key"'], ['number', '1'], ['string', '"text"'], ['word', 'null']]);
});

test('A long text is shortened and its length told', () => {
  const uri = `data:image/png;base64,${'A'.repeat(5_000_000)}`;
  const text = textOf(jsonLines({ uri }, 100));
  assert.ok(text.length < 200, text);
  assert.ok(text.startsWith('{\n  "uri": "data:image/png;base64,AAA'), text);
  assert.ok(text.includes('…" (5,000,022 characters)'), text);
});

test('A text that is just not too long is whole', () => {
  const text = 'x'.repeat(160);
  assert.equal(textOf(jsonLines(text, 100)), `"${text}"`);
});

test('Of a large value only the first lines are made', () => {
  const large = jsonLines(Array.from({ length: 1_000_000 }, (_, index) => index), 500);
  assert.equal(large.lines.length, 500);
  assert.equal(large.isWhole, false);
  assert.equal(jsonLines([1, 2, 3], 5).isWhole, true);
  assert.equal(jsonLines([1, 2, 3], 4).isWhole, false);
});

test('The text to search in holds keys and values but not what is left out of long texts', () => {
  const text = searchText({ name: 'Хлеб', uri: `data:${'A'.repeat(1000)}END` });
  assert.ok(text.includes('Хлеб') && text.includes('name') && text.includes('data:'));
  assert.ok(!text.includes('END'));
  assert.equal(searchText(undefined), '');
  assert.equal(searchText(null), 'null');
});

test('A value on one line is its beginning, made without reading the rest', () => {
  assert.equal(oneLine({ a: [1, 'two'], b: {} }), '{"a":[1,"two"],"b":{}}');
  const line = oneLine(Array.from({ length: 1_000_000 }, () => 'text'));
  assert.ok(line.length < 400 && line.endsWith('…'), line);
});
