// Everything about the chosen row, and its JSON.
import { copyText } from '/common/copy.js';
import { byId, make } from '/common/dom.js';
import { statusOf, whyLost } from './cells.js';
import { count, duration, timeOfDay } from './format.js';
import { jsonLines } from './json.js';

const mostLines = 3000;

export class Details {
  #title = byId('details-title');
  #content = byId('details');
  #copy = byId('copy');
  #copied = byId('copied');
  #shown = null; // the row, as it is shown
  #facts = '';

  constructor() {
    this.#copy.addEventListener('click', async () => {
      const done = await copyText(JSON.stringify(this.#shown.entry.body, null, 2));
      this.#copied.textContent = done ? 'Copied' : 'The browser does not allow it';
    });
  }

  /** Draws a row anew if anything about it has changed. */
  show(row, epochOf) {
    const time = (ms) => timeOfDay(epochOf(ms));
    const facts = factsByKind[row.kind](row.entry, row.carried, time);
    const isSame = this.#shown?.key === row.key;
    if (isSame && JSON.stringify(facts) === this.#facts) return;

    const wasOpen = isSame && this.#content.querySelector('details')?.open;
    this.#shown = row;
    this.#facts = JSON.stringify(facts);
    this.#title.textContent = titleOf(row);
    this.#copied.textContent = '';
    const { body } = row.entry;
    const hasJson = body !== undefined && body !== null;
    this.#copy.hidden = !hasJson;
    this.#content.replaceChildren(factList(facts), ...(hasJson ? json(body) : []));
    const details = this.#content.querySelector('details');
    if (details) details.open = wasOpen;
    if (!isSame) this.#content.scrollTop = 0;
  }

  focus() {
    this.#content.focus();
  }
}

function titleOf({ kind, entry }) {
  if (kind === 'note') return 'Note';
  if (kind === 'message') return `${entry.type || entry.path} #${entry.n}`;
  return entry.name ?? entry.type;
}

/** Pairs of a name and a text; a list of texts is folded. */
const factsByKind = {
  message: (message, carried, time) => [
    ['Path', message.path],
    ['Status', `${statusOf(message, carried).text} · ${statusOf(message, carried).title}`],
    carried && carried.askedMs !== null && ['Asked for', `${time(carried.askedMs)}, waited ${duration(carried.waitedMs)}`],
    ['Arrived', `${time(message.ms)}${message.replay ? ', from a recording' : ''}`],
    ['Answered', `${time(message.ms + message.tookMs)}, after ${duration(message.tookMs)}`],
    ['Size', count(message.bytes, 'byte')],
    carried?.attempt > 1 && ['Try', `${carried.attempt}, after ${count(carried.attempt - 1, 'failure')}`],
    carried?.superseded.length > 0
      && ['Superseded', carried.superseded.map((ms) => `asked for at ${time(ms)}`)],
  ].filter(Boolean),
  request: (request, _, time) => [
    ['Sent', time(request.ms)],
    ['Answered', `${request.accepted ? 'accepted' : 'not accepted'} after ${duration(request.tookMs)}`],
  ],
  lost: (lost, _, time) => [
    ['Asked for', time(lost.ms)],
    ['Lost', whyLost(lost.withMessage)],
  ],
  note: (note, _, time) => [
    ['Time', time(note.ms)],
    ['Text', note.text],
  ],
};

function factList(facts) {
  return make('dl', {}, ...facts.flatMap(([name, value]) => [
    make('dt', { textContent: name }),
    Array.isArray(value) ? folded(value) : make('dd', { textContent: value }),
  ]));
}

function folded(texts) {
  return make('dd', {}, make('details', {},
    make('summary', { textContent: count(texts.length, 'older one') }),
    make('ol', {}, ...texts.map((text) => make('li', { textContent: text })))));
}

function json(body) {
  const { lines, isWhole } = jsonLines(body, mostLines);
  const code = make('pre', { className: 'json' });
  for (const line of lines)
    code.append(...line.map(({ kind, text }) => make('span', { className: kind, textContent: text })), '\n');
  if (isWhole) return [code];
  const remark = `Only the first ${count(lines.length, 'line')} are shown; the copy is whole.`;
  return [code, make('p', { className: 'remark', textContent: remark })];
}
