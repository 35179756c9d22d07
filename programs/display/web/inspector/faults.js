// The switches and actions by which the display misbehaves.
import { byId } from '/common/dom.js';

/** Wires the controls; `onProblem` is told what went wrong, as a sentence. Returns what shows the
    display's own account of its switches. */
export function wireFaults(onProblem) {
  const delay = byId('slow-ms');
  const delayMs = () => Math.round(Math.max(1, delay.valueAsNumber || 1));
  const isOn = (id) => byId(id).getAttribute('aria-checked') === 'true';

  const set = (switches) => send('/switches', switches, onProblem);
  byId('down').addEventListener('click', () => set({ down: !isOn('down') }));
  byId('error').addEventListener('click', () => set({ error: !isOn('error') }));
  byId('slow').addEventListener('click', () => set({ slowMs: isOn('slow') ? 0 : delayMs() }));
  delay.addEventListener('change', () => {
    if (isOn('slow')) set({ slowMs: delayMs() });
  });
  for (const button of document.querySelectorAll('[data-action]'))
    button.addEventListener('click', () => send('/actions', { do: button.dataset.action }, onProblem));

  return ({ down, error, slowMs }) => {
    byId('down').setAttribute('aria-checked', down);
    byId('error').setAttribute('aria-checked', error);
    byId('slow').setAttribute('aria-checked', slowMs > 0);
    if (slowMs > 0 && document.activeElement !== delay) delay.value = slowMs;
  };
}

async function send(path, body, onProblem) {
  try {
    const answer = await fetch(path, {
      method: 'POST',
      headers: { 'Content-Type': 'application/json' },
      body: JSON.stringify(body),
    });
    if (!answer.ok) onProblem((await answer.text()).trim() || `The display answered ${answer.status}.`);
  } catch {
    onProblem('The display does not answer.');
  }
}
