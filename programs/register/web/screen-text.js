// A text on the customer's screen.
import { byId } from '/common/dom.js';
import { makeAsk } from '/cashier/ask.js';

/**
 * @param {(command: object) => Promise<string | undefined>} run returns what is wrong
 * @returns {() => void} asks for the text
 */
export function createScreenText(run) {
  const field = byId('content');
  const ask = makeAsk(byId('screen-dialog'), () => {
    const text = field.value.trim();
    return text === '' ? 'Введите текст' : run({ do: 'content', text });
  });

  field.addEventListener('keydown', (event) => {
    if (event.key === 'Enter' && (event.ctrlKey || event.metaKey)) field.form.requestSubmit();
  });
  byId('hide-content').onclick = () => ask.attempt(() => run({ do: 'content', hide: true }));

  return () => {
    ask.open();
    field.focus();
    field.select();
  };
}
