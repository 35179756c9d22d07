// How what was asked for and what arrived belong together.
//
// The plug-in keeps one waiting message of each type (the newest; all pictures), posts one at a time
// and repeats it until it is accepted; then it forgets what waits of that type. The register tells
// when something was asked for, perhaps after the message has arrived. A message carries no mark of
// what it was asked by: the times alone relate them.
import { TypeQueue } from './type-queue.js';
import { firstOfAll, urgency } from './types.js';

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
  const queue = new TypeQueue(type, asked);
  messages.forEach((message, index) => {
    queue.advanceTo(message.ms, lastBefore(starts, message.ms));
    const answeredMs = message.ms + message.tookMs;
    const givenUp = messages[index + 1]?.ms < answeredMs;
    carried.set(message.id, { ...queue.carry(message.ms), givenUp });
    if (isAccepted(message) && !givenUp) queue.accept(message.n, answeredMs + answerTravelMs);
    else queue.fail();
  });
  queue.advanceTo(Infinity, lastBefore(starts, Infinity));
  pending.push(...queue.pending());
  lost.push(...queue.lost());
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
