import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { test } from 'node:test';
import { cellsOf, statusOf } from '../../../programs/display/web/inspector/cells.js';
import { messageTypes } from '../../../programs/display/web/inspector/types.js';

const message = {
  id: 1, n: 4, type: 'Content', path: '/content', body: { a: 1 }, bytes: 7, status: 200, reason: '', ms: 500, tookMs: 2, replay: false,
};
const texts = (row, previousMs = null) => cellsOf(row, previousMs, (ms) => ms).slice(1).map(({ text }) => text);

test('The page knows the types of the display in their order', async () => {
  const header = await readFile(new URL('../../../programs/common/MessageTypes.h', import.meta.url), 'utf8');
  const known = [...header.matchAll(/MessageType\{"(\w+)", "(\/\w+)"\}/g)].map(([, name, path]) => ({ name, path }));
  assert.deepEqual(messageTypes, known);
});

test('A message tells what became of it', () => {
  const carried = { askedMs: 400, waitedMs: 100, superseded: [1, 2], attempt: 3, givenUp: false };
  assert.deepEqual(texts({ kind: 'message', ms: 500, entry: message, carried }, 250),
    ['250 ms', 'in', 'Content', '200', '100 ms', '2.0 ms', '7 B', '2', '3', '{"a":1}']);
});

test('A message that nothing is known of leaves its cells empty', () => {
  const entry = { ...message, type: '', path: '/x', status: 404, reason: 'unknown', body: null, replay: true };
  assert.deepEqual(texts({ kind: 'message', ms: 500, entry }), ['', 'replay', '/x', '404', '', '2.0 ms', '7 B', '', '', 'unknown']);
});

test('Requests, lost ones and notes are told in their own words', () => {
  const request = { name: 'getImage', accepted: true, tookMs: 5, body: {} };
  assert.deepEqual(texts({ kind: 'request', ms: 1, entry: request }), ['', 'out', 'getImage', 'ok', '', '5.0 ms', '', '', '', '{}']);
  assert.equal(texts({ kind: 'request', ms: 1, entry: { ...request, accepted: false } })[3], 'failed');
  assert.deepEqual(texts({ kind: 'lost', ms: 1, entry: { type: 'Content', withMessage: 3 } }), ['', 'in', 'Content', 'lost']);
  assert.deepEqual(texts({ kind: 'note', ms: 1, entry: { text: 'started' } }), ['', '', 'started']);
});

test('A status is explained', () => {
  const told = (entry, carried) => Object.values(statusOf({ ...message, ...entry }, carried)).join(' | ');
  assert.equal(told({}), '200 | good | Accepted');
  assert.equal(told({ status: 204 }), '204 | good | Accepted');
  assert.equal(told({ status: 500 }), '500 | bad | Not accepted');
  assert.equal(told({ status: 400, reason: 'not JSON' }), '400 | bad | not JSON');
  assert.equal(told({ status: 0 }), 'cut | bad | The connection was closed without an answer');
  assert.match(told({}, { givenUp: true }), /^late \| warn \| Answered 200 after/);
});
