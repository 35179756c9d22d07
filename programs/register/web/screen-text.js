// A text on the customer's screen.
import { makeAsk } from '/cashier/ask.js';

const element = (id) => document.getElementById(id);

/**
 * @param {(command: object) => Promise<string | undefined>} run returns what is wrong
 * @returns {() => void} asks for the text
 */
export function createScreenText(run) {
  const field = element('content');
  const ask = makeAsk(element('screen-dialog'), () => {
    const text = field.value.trim();
    return text === '' ? 'Введите текст' : run({ do: 'content', text });
  });

  field.addEventListener('keydown', (event) => {
    if (event.key === 'Enter' && (event.ctrlKey || event.metaKey)) field.form.requestSubmit();
  });
  element('hide-content').onclick = () => ask.attempt(() => run({ do: 'content', hide: true }));

  return () => {
    ask.open();
    field.focus();
    field.select();
  };
}
