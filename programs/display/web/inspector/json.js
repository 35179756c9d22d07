// JSON as lines of coloured pieces, with long texts shortened.

const longestText = 160;
const shownOfText = 80;
const mostOfSummary = 300;
const indent = '  ';

/** @typedef {{kind: 'key'|'string'|'number'|'word'|'mark'|'remark', text: string}} Piece */

/**
 * The first lines of a value; whole, it may be of several megabytes.
 *
 * @param {any} value
 * @param {number} mostLines
 * @returns {{lines: Piece[][], isWhole: boolean}}
 */
export function jsonLines(value, mostLines) {
  const lines = [[]];
  for (const piece of pieces(value, '')) {
    if (piece !== lineBreak) lines.at(-1).push(piece);
    else if (lines.length === mostLines) return { lines, isWhole: false };
    else lines.push([]);
  }
  return { lines, isWhole: true };
}

/** A value's text to search in: as its JSON, but for what is left out of long texts. */
export function searchText(value) {
  return JSON.stringify(value, (key, item) => (
    isLong(item) ? item.slice(0, longestText) : item)) ?? '';
}

/** The beginning of a value as one line. */
export function oneLine(value) {
  let line = '';
  for (const piece of pieces(value, '')) {
    if (piece !== lineBreak) line += piece.text.trim();
    if (line.length > mostOfSummary) return `${line}…`;
  }
  return line;
}

const lineBreak = Symbol('line break');
const mark = (text) => ({ kind: 'mark', text });

function* pieces(value, margin) {
  if (value === null || typeof value !== 'object') yield* scalar(value);
  else if (Array.isArray(value)) yield* list(value.map((item) => [null, item]), '[', ']', margin);
  else yield* list(Object.entries(value), '{', '}', margin);
}

function* list(members, open, close, margin) {
  if (members.length === 0) {
    yield mark(open + close);
    return;
  }
  yield mark(open);
  const inner = margin + indent;
  for (const [index, [key, item]] of members.entries()) {
    yield lineBreak;
    yield mark(inner);
    if (key !== null) {
      yield { kind: 'key', text: JSON.stringify(key) };
      yield mark(': ');
    }
    yield* pieces(item, inner);
    if (index + 1 < members.length) yield mark(',');
  }
  yield lineBreak;
  yield mark(margin + close);
}

function* scalar(value) {
  if (typeof value !== 'string') {
    yield { kind: typeof value === 'number' ? 'number' : 'word', text: String(value) };
  } else if (isLong(value)) {
    yield { kind: 'string', text: `${JSON.stringify(value.slice(0, shownOfText)).slice(0, -1)}…"` };
    yield { kind: 'remark', text: ` (${value.length.toLocaleString('en-US')} characters)` };
  } else {
    yield { kind: 'string', text: JSON.stringify(value) };
  }
}

function isLong(value) {
  return typeof value === 'string' && value.length > longestText;
}
