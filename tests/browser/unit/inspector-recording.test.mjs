import assert from 'node:assert/strict';
import { test } from 'node:test';
import { play, readRecording, toJsonLines } from '../../../programs/display/web/inspector/recording.js';

const line = (more) => JSON.stringify({ n: 1, ms: 10, path: '/content', body: { a: 1 }, status: 200, ...more });

test('An export is read again with its messages only', () => {
  const entries = [
    { id: 1, kind: 'note', text: 'started', ms: 1 },
    { id: 2, kind: 'asked', type: 'Content', ms: 90 },
    { id: 3, n: 1, kind: 'message', type: 'Content', path: '/content', body: { data: 'Привет' }, status: 200, ms: 100 },
    { id: 4, kind: 'request', name: 'getImage', body: {}, ms: 110 },
    { id: 5, n: 2, kind: 'message', type: 'QrPayment', path: '/qrPayment', body: { close: true }, status: 200, ms: 350.5 },
  ];
  assert.deepEqual(readRecording(toJsonLines(entries)), {
    steps: [{ path: '/content', body: { data: 'Привет' }, ms: 0 }, { path: '/qrPayment', body: { close: true }, ms: 250.5 }],
    passedOver: 0,
  });
});

test('A file of the display\'s record is read, with empty lines and line ends of any kind', () => {
  const { steps } = readRecording(`${line()}\r\n\n${line({ ms: 30, monotonicMs: 5 })}\n`);
  assert.deepEqual(steps.map(({ ms }) => ms), [0, 20]);
});

test('What the display had not accepted is passed over', () => {
  const text = [line({ status: 0 }), line({ status: 500 }), line({ status: 404, path: '/x', body: null }), line()].join('\n');
  assert.deepEqual(readRecording(text), { steps: [{ path: '/content', body: { a: 1 }, ms: 0 }], passedOver: 3 });
});

test('Messages whose times go back are sent without a pause', () => {
  const { steps } = readRecording(`${line({ ms: 50 })}\n${line({ ms: 20 })}`);
  assert.deepEqual(steps.map(({ ms }) => ms), [0, 0]);
});

for (const [what, broken, reason] of [
  ['cut off', '{"path":"/con', /^Line 3 is no JSON: /],
  ['no object', '[1]', /^Line 3 is no JSON object\.$/],
  ['without a path', line({ path: undefined }), /^Line 3: "path" is none/],
  ['to a path that is no message\'s', line({ path: '/switches' }), /^Line 3: "path" is none/],
  ['to another machine', line({ path: '//example.org/content' }), /^Line 3: "path" is none/],
  ['without a body', line({ body: null }), /^Line 3: "body" is no JSON object\.$/],
  ['with a list as body', line({ body: [] }), /^Line 3: "body" is no JSON object\.$/],
  ['without a time', line({ ms: '10' }), /^Line 3: "ms" is no time\.$/],
])
  test(`A line that is ${what} is named with its number`, () => {
    assert.throws(() => readRecording(`${line()}\n\n${broken}\n${line()}`), { message: reason });
  });

test('An empty file has nothing to replay', () => {
  assert.deepEqual(readRecording(''), { steps: [], passedOver: 0 });
});

/** Plays against a clock that only waiting moves. */
async function played(steps, { speed = 1, accepts = () => true, stopAfter = Infinity } = {}) {
  let now = 1000;
  const sent = [];
  const progress = [];
  const stop = new AbortController();
  await play(steps, {
    speed,
    signal: stop.signal,
    clock: () => now,
    wait: async (ms) => { now += ms; },
    send: async (step) => {
      sent.push([step.path, now - 1000]);
      if (sent.length === stopAfter) stop.abort();
      return accepts(step);
    },
    onProgress: (...numbers) => progress.push(numbers),
  });
  return { sent, progress };
}

const steps = [{ path: '/a', ms: 0 }, { path: '/b', ms: 200 }, { path: '/c', ms: 1000 }];

test('Messages are sent at their recorded distances', async () => {
  assert.deepEqual((await played(steps)).sent, [['/a', 0], ['/b', 200], ['/c', 1000]]);
});

test('A speed divides the distances, and at once has none', async () => {
  assert.deepEqual((await played(steps, { speed: 10 })).sent, [['/a', 0], ['/b', 20], ['/c', 100]]);
  assert.deepEqual((await played(steps, { speed: Infinity })).sent, [['/a', 0], ['/b', 0], ['/c', 0]]);
});

test('Progress tells what was sent and what failed', async () => {
  const { progress } = await played(steps, { accepts: ({ path }) => path !== '/b' });
  assert.deepEqual(progress, [[1, 0], [2, 1], [3, 1]]);
});

test('Nothing is sent after the stop', async () => {
  assert.deepEqual((await played(steps, { stopAfter: 2 })).sent.length, 2);
});
