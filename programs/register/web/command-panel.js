// Each command with its answer, wherever it came from, and a line to give one by hand.
import { make } from '/common/dom.js';
import { plural } from '/common/russian.js';
import { answerText, script } from '/cashier/language.js';

const maxEntries = 300;
const sources = { page: 'касса', script: 'сценарий' };
const element = (id) => document.getElementById(id);

/** @param {(text: string) => void} runText runs a command that was typed */
export function createCommandPanel(runText) {
  const log = element('log');
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
    element('open-commands').setAttribute('aria-expanded', String(open));
    element(open ? 'line' : 'open-commands').focus();
  }

  async function copy() {
    const written = await navigator.clipboard.writeText(script(texts)).then(() => true, () => false);
    const count = `${texts.length} ${plural(texts.length, ['команда', 'команды', 'команд'])}`;
    element('copied').textContent = written ? `Скопировано: ${count}` : 'Браузер не дал скопировать';
  }

  element('open-commands').onclick = () => setOpen(!document.body.classList.contains('with-commands'));
  element('close-commands').onclick = () => setOpen(false);
  element('copy').onclick = copy;
  element('by-hand').addEventListener('submit', (event) => {
    event.preventDefault();
    const text = element('line').value.trim();
    if (text !== '') runText(text);
    element('line').select();
  });

  return (entry) => {
    log.append(row(entry));
    if (Object.keys(entry.command).length > 0) texts.push(entry.text);
    if (log.children.length > maxEntries) log.firstElementChild.remove();
    if (texts.length > maxEntries) texts.shift();
    element('copied').textContent = '';
    element('last').textContent = `${entry.text} → ${entry.answer.ok ? 'ok' : entry.answer.error}`;
  };
}
