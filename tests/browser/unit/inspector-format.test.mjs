import assert from 'node:assert/strict';
import { test } from 'node:test';
import { count, duration, size, timeOfDay } from '../../../programs/display/web/inspector/format.js';

test('A time of day has milliseconds', () => {
  assert.equal(timeOfDay(new Date(2026, 0, 2, 3, 4, 5, 6).getTime()), '03:04:05.006');
  assert.equal(timeOfDay(new Date(2026, 0, 2, 23, 59, 59, 999).getTime() - 0.3), '23:59:59.999');
});

test('A duration has the unit that suits it', () => {
  assert.deepEqual([0, 0.44, 9.94, 9.96, 250.4, 999.4, 999.6, 1250, 59_990, 59_996, 125_000].map(duration),
    ['0.0 ms', '0.4 ms', '9.9 ms', '10 ms', '250 ms', '999 ms', '1.00 s', '1.25 s', '59.99 s', '1m00s', '2m05s']);
});

test('A duration that is none is empty', () => {
  assert.deepEqual([undefined, NaN, null].map(duration), ['', '', '']);
});

test('A clock that is a little behind does not make a duration negative', () => {
  assert.equal(duration(-3), '0.0 ms');
});

test('A size has the unit that suits it', () => {
  assert.deepEqual([0, 999, 1000, 12_345, 999_499, 999_500, 3_456_789, undefined].map(size),
    ['0 B', '999 B', '1.0 kB', '12.3 kB', '999 kB', '1.0 MB', '3.5 MB', '']);
});

test('A count goes with its word', () => {
  assert.deepEqual([count(1, 'message'), count(12_345, 'message'), count(2, 'entry', 'entries')],
    ['1 message', '12,345 messages', '2 entries']);
});
