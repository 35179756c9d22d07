// What the cells of a row say.
import { duration, size, timeOfDay } from './format.js';
import { oneLine } from './json.js';
import { isAccepted } from './timeline.js';

/** @typedef {{text: string, look?: string, title?: string}} Cell look: names of CSS classes */

/**
 * @param {import('./rows.js').Row} row
 * @param {number | null} previousMs of the row before
 * @param {(ms: number) => number} epochOf
 * @returns {Cell[]}
 */
export function cellsOf(row, previousMs, epochOf) {
  const cells = cellsByKind[row.kind](row.entry, row.carried);
  return [
    { text: timeOfDay(epochOf(row.ms)) },
    { text: previousMs === null ? '' : duration(row.ms - previousMs), look: 'number quiet' },
    ...cells,
  ];
}

const cellsByKind = {
  message: (message, carried) => [
    message.replay ? { text: 'replay', look: 'replay', title: 'Sent again from a recording' } : { text: 'in', look: 'quiet' },
    { text: message.type || message.path, look: message.type ? '' : 'bad', title: message.type || message.path },
    statusOf(message, carried),
    number(duration(carried?.waitedMs ?? NaN)),
    number(duration(message.tookMs)),
    number(size(message.bytes)),
    number(carried?.superseded.length > 0 ? String(carried.superseded.length) : '', 'warn'),
    number(carried?.attempt > 1 ? String(carried.attempt) : '', 'bad'),
    bodyOf(message),
  ],
  request: ({ name, accepted, tookMs, body }) => [
    { text: 'out', look: 'out' },
    { text: name, look: 'out', title: name },
    accepted ? { text: 'ok', look: 'good' } : { text: 'failed', look: 'bad', title: 'The plug-in did not take it' },
    number(''),
    number(duration(tookMs)),
    number(''),
    number(''),
    number(''),
    bodyOf({ body }),
  ],
  lost: ({ type, withMessage }) => [
    { text: 'in', look: 'quiet' },
    { text: type, look: 'bad', title: type },
    { text: 'lost', look: 'bad', title: whyLost(withMessage) },
  ],
  note: ({ text }) => [
    { text: '' },
    { text, look: 'note wide', title: text },
  ],
};

/** Why something that was asked for never came. */
export function whyLost(withMessage) {
  return withMessage === null
    ? 'Asked for, but the register was started anew before it was sent'
    : `Asked for while message ${withMessage} was being answered, and forgotten with it`;
}

/** What a message's answer means, in a word and in a sentence. */
export function statusOf({ status, reason }, carried) {
  if (status === 0) return { text: 'cut', look: 'bad', title: 'The connection was closed without an answer' };
  if (carried?.givenUp)
    return { text: 'late', look: 'warn', title: `Answered ${status} after the plug-in had given up and sent it again` };
  return isAccepted({ status })
    ? { text: String(status), look: 'good', title: 'Accepted' }
    : { text: String(status), look: 'bad', title: reason || 'Not accepted' };
}

function bodyOf({ body, reason }) {
  return { text: body ? oneLine(body) : reason ?? '', look: 'body quiet' };
}

function number(text, look = '') {
  return { text, look: `number ${look}` };
}
