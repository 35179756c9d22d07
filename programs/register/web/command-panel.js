// Each command with its answer, wherever it came from, and a line to give one by hand.
import { copyText } from '/common/copy.js';
import { byId, make } from '/common/dom.js';
import { plural } from '/common/russian.js';
import { answerText, script } from '/cashier/language.js';

const maxEntries = 300;
const sources = { page: 'касса', script: 'сценарий' };

/** @param {(text: string) => void} runText runs a command that was typed */
export function createCommandPanel(runText) {
  const log = byId('log');
  const texts = [];

  /** JSON that may be broken after a comma. */
  const code = (className, json) => make('code', { className },
    ...json.split(/(?<=,)/).flatMap((part) => [part, make('wbr')]));

  function row({ text, answer, source }) {
    return make('li', { className: answer.ok ? 'done' : 'failed' },
      make('span', { className: 'source', textContent: sources[source] ?? String(source) }),
      code('command', String(text)),
      code('answer', answerText(answer)),
      answer.ok ? null : make('p', { className: 'why' }, 'Не выполнена: ', make('span', { '@lang': 'en', textContent: String(answer.error) })));
  }

  function setOpen(open) {
    document.body.classList.toggle('with-commands', open);
    byId('open-commands').setAttribute('aria-expanded', String(open));
    byId(open ? 'line' : 'open-commands').focus();
  }

  async function copy() {
    const written = await copyText(script(texts));
    const count = `${texts.length} ${plural(texts.length, ['команда', 'команды', 'команд'])}`;
    byId('copied').textContent = written ? `Скопировано: ${count}` : 'Браузер не дал скопировать';
  }

  byId('open-commands').onclick = () => setOpen(!document.body.classList.contains('with-commands'));
  byId('close-commands').onclick = () => setOpen(false);
  byId('copy').onclick = copy;
  byId('by-hand').addEventListener('submit', (event) => {
    event.preventDefault();
    const text = byId('line').value.trim();
    if (text !== '') runText(text);
    byId('line').select();
  });

  return (entry) => {
    log.append(row(entry));
    if (Object.keys(entry.command).length > 0) texts.push(entry.text);
    if (log.children.length > maxEntries) log.firstElementChild.remove();
    if (texts.length > maxEntries) texts.shift();
    byId('copied').textContent = '';
    byId('last').textContent = `${entry.text} → ${entry.answer.ok ? 'ok' : entry.answer.error}`;
  };
}
