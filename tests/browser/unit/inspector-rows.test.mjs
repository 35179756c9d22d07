import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Journal } from '../../../programs/display/web/inspector/journal.js';
import { countByGroup, rowsOf, wantedRows } from '../../../programs/display/web/inspector/rows.js';
import { relate } from '../../../programs/display/web/inspector/timeline.js';

const message = (id, ms, more = {}) => ({
  id, n: id, kind: 'message', type: 'UpdateDocument', path: '/updateDocument', body: {}, bytes: 2, status: 200,
  reason: '', ms, tookMs: 1, replay: false, ...more,
});
const rows = (entries) => rowsOf(entries, relate(entries));
const ids = (found) => found.map(({ entry }) => entry.id);

test('Rows are in the order of time, whenever the display told of them', () => {
  assert.deepEqual(ids(rows([message(1, 300), message(2, 100), message(3, 200)])), [2, 3, 1]);
});

test('What was asked for is no row of its own unless it is lost', () => {
  const entries = [{ id: 1, kind: 'asked', type: 'UpdateDocument', ms: 90 }, message(2, 100, { tookMs: 50 }),
    { id: 3, kind: 'asked', type: 'UpdateDocument', ms: 120 }];
  assert.deepEqual(rows(entries).map(({ kind, entry }) => [kind, entry.id]), [['message', 2], ['lost', 3]]);
  assert.equal(rows(entries)[0].carried.askedMs, 90);
});

test('Rows of the same entry have the same key, those of a display started later another', () => {
  assert.equal(rows([message(1, 100)])[0].key, rows([message(1, 100)])[0].key);
  assert.notEqual(rows([message(1, 100)])[0].key, rows([message(1, 200)])[0].key);
});

test('Rows are filtered by their groups, and none chosen means all', () => {
  const all = rows([message(1, 1), message(2, 2, { type: 'QrPayment' }), message(3, 3, { type: '', path: '/x' }),
    { id: 4, kind: 'request', name: 'getImage', body: {}, ms: 4, tookMs: 1, accepted: true },
    { id: 5, kind: 'note', text: 'started', ms: 5 }]);
  const of = (...chosen) => ids(wantedRows(all, new Set(chosen), ''));
  assert.deepEqual(of(), [1, 2, 3, 4, 5]);
  assert.deepEqual(of('QrPayment', 'Notes'), [2, 5]);
  assert.deepEqual(of('Other paths'), [3]);
  assert.deepEqual(of('Requests'), [4]);
});

test('A search finds rows with all its words, in any case, in bodies, types, statuses, reasons and notes', () => {
  const all = rows([message(1, 1, { body: { positions: [{ name: 'Хлеб ржаной' }] } }),
    message(2, 2, { type: '', path: '/nowhere', status: 404, body: null, reason: 'no message is posted to this path' }),
    { id: 3, kind: 'request', name: 'adResult', body: { value: false }, ms: 3, tookMs: 1, accepted: true },
    { id: 4, kind: 'note', text: 'Answers 500', ms: 4 }]);
  const found = (search) => ids(wantedRows(all, new Set(), search));
  assert.deepEqual(found('хлеб'), [1]);
  assert.deepEqual(found('ХЛЕБ updatedoc'), [1]);
  assert.deepEqual(found('хлеб nowhere'), []);
  assert.deepEqual(found('404'), [2]);
  assert.deepEqual(found('is posted'), [2]);
  assert.deepEqual(found('adresult false'), [3]);
  assert.deepEqual(found('answers'), [4]);
  assert.deepEqual(found('  '), [1, 2, 3, 4]);
  assert.deepEqual(found('undefined'), []);
});

test('Counts tell what was asked for, sent, superseded and tried again', () => {
  const asked = (id, ms) => ({ id, kind: 'asked', type: 'UpdateDocument', ms });
  const entries = [asked(1, 1), asked(2, 2), message(3, 3, { status: 500 }), message(4, 300), message(5, 400, { type: '', status: 404 }),
    { id: 6, kind: 'note', text: '', ms: 7 }];
  const counts = countByGroup(entries, relate(entries));
  assert.deepEqual(counts.get('UpdateDocument'), { asked: 2, sent: 1, superseded: 1, retried: 1 });
  assert.deepEqual(counts.get('Other paths'), { asked: 0, sent: 0, superseded: 0, retried: 0 });
  assert.equal(counts.get('Notes').sent, 1);
});

test('A message that the plug-in had given up does not count as sent', () => {
  const entries = [message(1, 1, { tookMs: 3000 }), message(2, 1251)];
  assert.deepEqual(countByGroup(entries, relate(entries)).get('UpdateDocument'), { asked: 0, sent: 1, superseded: 0, retried: 1 });
});

test('The journal keeps the newest 5000 entries and 100 MB', () => {
  const journal = new Journal();
  const entries = Array.from({ length: 5010 }, (_, index) => message(index + 1, index));
  journal.restart({ now: 0, monotonicMs: 0, entries }, 0);
  assert.equal(journal.entries.length, 5000);
  assert.equal(journal.entries[0].id, 11);

  journal.restart({ now: 0, monotonicMs: 0, entries: [] }, 0);
  [1, 2, 3, 4].forEach((id) => journal.add(message(id, id, { bytes: 30e6 })));
  assert.deepEqual(journal.entries.map(({ id }) => id), [2, 3, 4]);
  journal.add(message(5, 5, { bytes: 200e6 }));
  assert.deepEqual(journal.entries.map(({ id }) => id), [5]);
});

test('The journal tells times by the display\'s clock', () => {
  const journal = new Journal();
  journal.restart({ now: 1_000_000, monotonicMs: 5000, entries: [] }, 70);
  assert.equal(journal.epochOf(4900), 999_900);
  assert.equal(journal.nowAt(170), 5100);
});
