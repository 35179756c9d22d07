// How what was asked for and what arrived belong together.
//
// The plug-in keeps one waiting message of each type (the newest; all pictures), posts one at a time
// and repeats it until it is accepted; then it forgets what waits of that type. The register tells
// when something was asked for, perhaps after the message has arrived. A message carries no mark of
// what it was asked by: the times alone relate them.
import { firstOfAll, urgency, waitsInOrder } from './types.js';

// What is asked for while the answer travels back is still forgotten with the accepted message.
const answerTravelMs = 20;

/**
 * @typedef {object} Carried what became of a message
 * @property {number | null} askedMs when what it carries was asked for
 * @property {number | null} waitedMs from then to its arrival
 * @property {number[]} superseded the times of what it took the place of
 * @property {number} attempt 1, or more after failures of its type
 * @property {boolean} givenUp the plug-in had not waited for the answer
 *
 * @typedef {object} Waiting
 * @property {string} type
 * @property {number} askedMs
 * @property {number[]} supersedes the times of what it will take the place of
 * @property {number} attempts how often it was posted in vain
 *
 * @typedef {object} Lost
 * @property {number} id of the entry that tells of the asking
 * @property {string} type
 * @property {number} ms
 * @property {number | null} withMessage the message it was forgotten with; null: the plug-in's restart
 */

/**
 * The relations of a journal's entries, in whatever order they are.
 *
 * @param {object[]} entries
 * @returns {{carried: Map<number, Carried>, pending: Waiting[], lost: Lost[]}} `carried` by the id of
 *   the entry, `pending` by urgency
 */
export function relate(entries) {
  const related = { carried: new Map(), pending: [], lost: [] };
  const asked = ofKnownTime(entries.filter(({ kind }) => kind === 'asked'), entries);
  const starts = asked.filter(({ type }) => type === firstOfAll).map(({ ms }) => ms);
  const messages = entries.filter(({ kind, type, replay }) => kind === 'message' && type && !replay).sort(byTime);

  const types = new Set([...asked, ...messages].map(({ type }) => type));
  for (const type of [...types].sort((one, other) => urgency(one) - urgency(other)))
    relateType(type, asked.filter((ask) => ask.type === type), messages.filter((message) => message.type === type),
      type === firstOfAll ? [] : starts, related);
  related.lost.sort(byTime);
  return related;
}

/** Whether the display took the message, as far as its answer tells. */
export function isAccepted(message) {
  return message.status >= 200 && message.status < 300;
}

function relateType(type, asked, messages, starts, { carried, pending, lost }) {
  let waiting = [];
  let coming = asked.map((ask) => ({ ...ask, lostWith: null }));
  let failures = 0;

  const forgetBefore = (start) => {
    lost.push(...waiting.filter(({ ms }) => ms < start)
      .map((ask) => ({ id: ask.id, type, ms: ask.ms, withMessage: ask.lostWith })));
    waiting = waiting.filter(({ ms }) => ms >= start);
  };

  messages.forEach((message, index) => {
    waiting.push(...coming.filter(({ ms }) => ms <= message.ms));
    coming = coming.filter(({ ms }) => ms > message.ms);
    forgetBefore(lastBefore(starts, message.ms));

    const answeredMs = message.ms + message.tookMs;
    const givenUp = index + 1 < messages.length && messages[index + 1].ms < answeredMs;
    const ask = (waitsInOrder(type) ? waiting[0] : waiting.at(-1)) ?? null;
    carried.set(message.id, {
      askedMs: ask?.ms ?? null,
      waitedMs: ask && message.ms - ask.ms,
      superseded: waitsInOrder(type) ? [] : waiting.slice(0, -1).map(({ ms }) => ms),
      attempt: failures + 1,
      givenUp,
    });
    if (!waitsInOrder(type)) waiting = waiting.slice(-1);

    if (!isAccepted(message) || givenUp) {
      failures += 1;
      return;
    }
    failures = 0;
    waiting = waiting.filter((one) => one !== ask);
    if (!waitsInOrder(type))
      for (const late of coming)
        if (late.ms <= answeredMs + answerTravelMs) late.lostWith = message.n;
  });

  waiting.push(...coming);
  forgetBefore(lastBefore(starts, Infinity));
  lost.push(...waiting.filter(({ lostWith }) => lostWith !== null)
    .map((ask) => ({ id: ask.id, type, ms: ask.ms, withMessage: ask.lostWith })));
  addPending(type, waiting.filter(({ lostWith }) => lostWith === null).map(({ ms }) => ms), failures, pending);
}

function addPending(type, times, attempts, pending) {
  if (waitsInOrder(type))
    pending.push(...times.map((askedMs, index) => (
      { type, askedMs, supersedes: [], attempts: index === 0 ? attempts : 0 })));
  else if (times.length > 0)
    pending.push({ type, askedMs: times.at(-1), supersedes: times.slice(0, -1), attempts });
}

/** Of a journal whose beginning has fallen out, what was asked for before the rest is unknown:
    the message that carried it may be among what is missing. */
function ofKnownTime(asked, entries) {
  const isWhole = entries.some(({ id }) => id === 1);
  const others = entries.filter(({ kind }) => kind !== 'asked').map(({ ms }) => ms);
  const from = isWhole ? -Infinity : others.reduce((least, ms) => Math.min(least, ms), Infinity);
  return asked.filter(({ ms }) => ms >= from).sort(byTime);
}

function lastBefore(times, ms) {
  return times.findLast((time) => time <= ms) ?? -Infinity;
}

function byTime(one, other) {
  return one.ms - other.ms || one.id - other.id;
}
