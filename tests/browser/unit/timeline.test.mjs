import assert from 'node:assert/strict';
import { test } from 'node:test';
import { relate } from '../../../programs/display/web/inspector/timeline.js';

let ids = 0;
const asked = (ms, type = 'UpdateDocument') => ({ id: (ids += 1), kind: 'asked', type, ms });
const arrived = (ms, more = {}) => {
  const id = (ids += 1);
  return { id, n: id, kind: 'message', type: 'UpdateDocument', ms, tookMs: 1, status: 200, replay: false, ...more };
};

/** The relations of a journal that begins with these entries. */
function related(entries) {
  const first = Math.min(...entries.map(({ id }) => id));
  return relate(entries.map((entry) => ({ ...entry, id: entry.id - first + 1, n: entry.n && entry.n - first + 1 })));
}

/** What became of the messages, in the order of the entries. */
const carriedIn = (entries) => [...related(entries).carried.values()];

test('A message carries what was asked for before it arrived', () => {
  assert.deepEqual(carriedIn([asked(100), arrived(130)]),
    [{ askedMs: 100, waitedMs: 30, superseded: [], attempt: 1, givenUp: false }]);
});

test('A message carries what was asked for before it though the register tells of it later', () => {
  const [carried] = carriedIn([arrived(130), asked(100)]);
  assert.equal(carried.askedMs, 100);
  assert.deepEqual(related([arrived(130), asked(100)]).pending, []);
});

test('What is asked for after a message is not carried by it', () => {
  const entries = [arrived(100), asked(150)];
  assert.equal(carriedIn(entries)[0].askedMs, null);
  assert.deepEqual(related(entries).pending, [{ type: 'UpdateDocument', askedMs: 150, supersedes: [], attempts: 0 }]);
});

test('Of several askings the newest is carried and supersedes the others', () => {
  const [carried] = carriedIn([asked(100), asked(110), asked(120), arrived(130)]);
  assert.equal(carried.askedMs, 120);
  assert.deepEqual(carried.superseded, [100, 110]);
});

test('What an earlier message carried is not superseded by the next', () => {
  const [, second] = carriedIn([asked(100), arrived(101), asked(200), asked(300), arrived(350)]);
  assert.equal(second.askedMs, 300);
  assert.deepEqual(second.superseded, [200]);
});

test('A message that nobody asked for carries nothing, not what was carried before', () => {
  const [, second] = carriedIn([asked(100, 'ShowAd'), arrived(101, { type: 'ShowAd' }), arrived(900, { type: 'ShowAd' })]);
  assert.deepEqual(second, { askedMs: null, waitedMs: null, superseded: [], attempt: 1, givenUp: false });
});

test('A message after a refused one of its type is another attempt at the same', () => {
  const [first, second, third] = carriedIn([asked(100), arrived(101, { status: 500 }),
    arrived(351, { status: 0 }), arrived(601)]);
  assert.deepEqual([first.attempt, second.attempt, third.attempt], [1, 2, 3]);
  assert.deepEqual([first.askedMs, second.askedMs, third.askedMs], [100, 100, 100]);
  assert.deepEqual(third.superseded, []);
  assert.equal(third.waitedMs, 501);
});

test('Attempts are counted from one again after a success', () => {
  const all = carriedIn([asked(100), arrived(101, { status: 500 }), arrived(351), asked(400), arrived(601)]);
  assert.deepEqual(all.map(({ attempt }) => attempt), [1, 2, 1]);
});

test('A failure of one type does not count as an attempt of another', () => {
  const all = carriedIn([arrived(100, { type: 'QrPayment', status: 500 }), arrived(101)]);
  assert.deepEqual(all.map(({ attempt }) => attempt).sort(), [1, 1]);
});

test('What was posted in vain is superseded by what is asked for before the next attempt', () => {
  const [first, second] = carriedIn([asked(100), arrived(101, { status: 0 }), asked(200), arrived(351)]);
  assert.deepEqual(first.superseded, []);
  assert.equal(second.askedMs, 200);
  assert.deepEqual(second.superseded, [100]);
  assert.equal(second.attempt, 2);
});

test('What each attempt has superseded is told once', () => {
  const all = carriedIn([asked(90), asked(100), arrived(101, { status: 500 }), arrived(351)]);
  assert.deepEqual(all.map(({ superseded }) => superseded), [[90], []]);
});

test('What is posted in vain goes on waiting with its attempts', () => {
  const { pending } = related([asked(100), arrived(101, { status: 0 }), arrived(351, { status: 500 })]);
  assert.deepEqual(pending, [{ type: 'UpdateDocument', askedMs: 100, supersedes: [], attempts: 2 }]);
});

test('What waits is told by urgency with what it supersedes', () => {
  const { pending } = related([asked(30, 'Configure'), asked(80, 'Configure'), asked(100, 'Content'),
    asked(110, 'Unheard'), asked(120), asked(130)]);
  assert.deepEqual(pending.map(({ type, askedMs, supersedes }) => [type, askedMs, supersedes]),
    [['Configure', 80, [30]], ['UpdateDocument', 130, [120]], ['Content', 100, []], ['Unheard', 110, []]]);
});

test('What is asked for while a message of its type is being answered is lost with it', () => {
  const { lost, pending } = related([asked(100), arrived(101, { tookMs: 50 }), asked(120)]);
  assert.deepEqual(lost, [{ id: 3, type: 'UpdateDocument', ms: 120, withMessage: 2 }]);
  assert.deepEqual(pending, []);
});

test('What is asked for while the answer travels back is lost too', () => {
  assert.equal(related([arrived(100, { tookMs: 50 }), asked(160)]).lost.length, 1);
  assert.equal(related([arrived(100, { tookMs: 50 }), asked(171)]).lost.length, 0);
});

test('What is asked for while a message is being refused is not lost but carried by the next attempt', () => {
  const { lost, carried } = related([asked(100), arrived(101, { tookMs: 50, status: 500 }), asked(120), arrived(400)]);
  assert.deepEqual(lost, []);
  assert.deepEqual(carried.get(4).superseded, [100]);
  assert.equal(carried.get(4).askedMs, 120);
});

test('What would be lost is carried if a message follows, or superseded by something later', () => {
  const followed = related([asked(100), arrived(101, { tookMs: 50 }), asked(120), arrived(400)]);
  assert.deepEqual(followed.lost, []);
  assert.equal(followed.carried.get(4).askedMs, 120);

  const later = related([asked(100), arrived(101, { tookMs: 50 }), asked(120), asked(300), arrived(400)]);
  assert.deepEqual(later.lost, []);
  assert.deepEqual(later.carried.get(5).superseded, [120]);
});

test('What was thought lost waits again when a message that carries it fails', () => {
  const { lost, pending } = related([arrived(100, { tookMs: 50 }), asked(120), arrived(400, { status: 500 })]);
  assert.deepEqual(lost, []);
  assert.deepEqual(pending, [{ type: 'UpdateDocument', askedMs: 120, supersedes: [], attempts: 1 }]);
});

test('What is asked for while a message of another type is being answered waits', () => {
  const { lost, pending } = related([arrived(100, { tookMs: 50, type: 'QrPayment' }), asked(120)]);
  assert.deepEqual(lost, []);
  assert.equal(pending.length, 1);
});

test('A message that is repeated before its answer was given up by the plug-in', () => {
  const entries = [asked(100), arrived(101, { tookMs: 3000 }), asked(500), arrived(1351)];
  const { carried, lost } = related(entries);
  assert.equal(carried.get(2).givenUp, true);
  assert.equal(carried.get(4).attempt, 2);
  assert.deepEqual(carried.get(4).superseded, [100]);
  assert.deepEqual(lost, []);
});

test('Pictures are never superseded: each message carries the one asked for first', () => {
  const picture = { type: 'ImageData' };
  const { carried, pending } = related([asked(100, 'ImageData'), asked(110, 'ImageData'), asked(120, 'ImageData'),
    arrived(130, { ...picture, status: 500 }), arrived(380, picture), arrived(630, picture)]);
  assert.deepEqual([...carried.values()].map(({ askedMs, superseded }) => [askedMs, superseded]),
    [[100, []], [100, []], [110, []]]);
  assert.deepEqual(pending, [{ type: 'ImageData', askedMs: 120, supersedes: [], attempts: 0 }]);
});

test('Pictures asked for while one is being answered are not lost', () => {
  const { lost, pending } = related([arrived(100, { type: 'ImageData', tookMs: 50 }), asked(120, 'ImageData')]);
  assert.deepEqual(lost, []);
  assert.equal(pending.length, 1);
});

test('A replayed message carries nothing and fails for nobody', () => {
  const { carried, pending } = related([asked(100), arrived(110, { replay: true, status: 500 }), arrived(120)]);
  assert.equal(carried.has(2), false);
  assert.equal(carried.get(3).attempt, 1);
  assert.equal(carried.get(3).askedMs, 100);
  assert.deepEqual(pending, []);
});

test('A message to an unknown path is related to nothing', () => {
  const { carried, pending } = related([asked(100), arrived(110, { type: '', status: 404 })]);
  assert.equal(carried.size, 0);
  assert.equal(pending.length, 1);
});

test('What waited when the register started anew is lost', () => {
  const { lost, pending } = related([asked(100), asked(500, 'Configure'), asked(501, 'Content')]);
  assert.deepEqual(lost, [{ id: 1, type: 'UpdateDocument', ms: 100, withMessage: null }]);
  assert.deepEqual(pending.map(({ type }) => type), ['Configure', 'Content']);
});

test('A message after the register started anew does not carry what was asked for before', () => {
  const { carried, lost } = related([asked(100), asked(500, 'Configure'), asked(510), arrived(600)]);
  assert.equal(carried.get(4).askedMs, 510);
  assert.deepEqual(carried.get(4).superseded, []);
  assert.equal(lost.length, 1);
});

test('What was asked for before a journal that has lost its beginning does not wait', () => {
  const entries = [{ ...arrived(500), id: 40 }, { ...asked(400), id: 41 }, { ...asked(600), id: 42 }];
  const { pending, lost } = relate(entries);
  assert.deepEqual(pending.map(({ askedMs }) => askedMs), [600]);
  assert.deepEqual(lost, []);
});

test('Nothing comes of nothing', () => {
  const { carried, pending, lost } = relate([]);
  assert.deepEqual([carried.size, pending, lost], [0, [], []]);
});

test('Notes and requests are related to nothing', () => {
  const { carried, pending } = related([{ id: (ids += 1), kind: 'note', text: 'started', ms: 1 },
    { id: (ids += 1), kind: 'request', name: 'getImage', ms: 2, tookMs: 1, accepted: true }]);
  assert.deepEqual([carried.size, pending], [0, []]);
});

test('A full journal is related within a frame or two', () => {
  const entries = [];
  for (let index = 0; index < 2500; index += 1)
    entries.push({ ...asked(index * 10), id: index * 2 + 1 }, { ...arrived(index * 10 + 5), id: index * 2 + 2 });
  const tookMs = [1, 2, 3, 4, 5].map(() => {
    const start = performance.now();
    assert.equal(relate(entries).carried.size, 2500);
    return performance.now() - start;
  });
  assert.ok(Math.min(...tookMs) < 100, `${tookMs} ms`); // the machine may be busy with other things
});
