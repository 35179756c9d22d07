// The rows of the time line, and which of them are wanted.
import { identity } from './journal.js';
import { searchText } from './json.js';
import { isAccepted } from './timeline.js';
import { messageTypes } from './types.js';

/** The groups that rows can be filtered by, in their order. */
export const groups = [...messageTypes.map(({ name }) => name), 'Other paths', 'Requests', 'Notes'];

/**
 * @typedef {object} Row
 * @property {string} key the same for the same row of a later view
 * @property {'message'|'request'|'note'|'lost'} kind
 * @property {string} group
 * @property {number} ms
 * @property {object} entry what it shows; for a lost one what timeline.js tells of it
 * @property {import('./timeline.js').Carried} [carried]
 */

/**
 * The rows of entries, by time.
 *
 * @param {object[]} entries
 * @param {ReturnType<import('./timeline.js').relate>} relations of the same entries
 * @returns {Row[]}
 */
export function rowsOf(entries, relations) {
  const rows = entries.filter(({ kind }) => kind !== 'asked').map((entry) => ({
    key: identity(entry),
    kind: entry.kind,
    group: groupOf(entry),
    ms: entry.ms,
    entry,
    carried: relations.carried.get(entry.id),
  }));
  rows.push(...relations.lost.map((lost) => (
    { key: identity(lost), kind: 'lost', group: lost.type, ms: lost.ms, entry: lost })));
  return rows.sort((one, other) => one.ms - other.ms || one.entry.id - other.entry.id);
}

function groupOf({ kind, type }) {
  if (kind === 'request') return 'Requests';
  if (kind === 'note') return 'Notes';
  return groups.includes(type) ? type : 'Other paths';
}

/**
 * The rows of the chosen groups (none chosen: all) in which every word of the search occurs.
 *
 * @param {Row[]} rows
 * @param {Set<string>} chosen
 * @param {string} search
 */
export function wantedRows(rows, chosen, search) {
  const words = search.toLowerCase().split(/\s+/).filter((word) => word !== '');
  return rows.filter((row) => (chosen.size === 0 || chosen.has(row.group))
    && words.every((word) => textOf(row).includes(word)));
}

const texts = new WeakMap();

function textOf({ entry, group }) {
  if (!texts.has(entry)) {
    const { type, name, path, status, reason, text, body, replay } = entry;
    const parts = [group, type, name, path, status, reason, text, replay ? 'replay' : '', searchText(body)];
    texts.set(entry, parts.filter((part) => part !== undefined).join(' ').toLowerCase());
  }
  return texts.get(entry);
}

/**
 * How many of each type were asked for, sent with success, superseded and tried again; for requests
 * and notes only `sent`, their number.
 *
 * @returns {Map<string, {asked: number, sent: number, superseded: number, retried: number}>}
 */
export function countByGroup(entries, { carried }) {
  const counts = new Map(groups.map((group) => [group, { asked: 0, sent: 0, superseded: 0, retried: 0 }]));
  for (const entry of entries) {
    const counted = counts.get(groupOf(entry));
    const { superseded = [], attempt = 1, givenUp = false } = carried.get(entry.id) ?? {};
    if (entry.kind === 'asked') counted.asked += 1;
    else if (entry.kind !== 'message' || (isAccepted(entry) && !givenUp)) counted.sent += 1;
    counted.superseded += superseded.length;
    if (attempt > 1) counted.retried += 1;
  }
  return counts;
}
