// Sending a recording to the display again.
import { byId } from '/common/dom.js';
import { count, duration } from './format.js';
import { play, readRecording } from './recording.js';

/** Wires the file chooser and its bar; `onProblem` is told what is wrong with a file. */
export function wireReplay(onProblem) {
  let steps = [];
  let running = null;

  const update = () => {
    byId('replay-start').disabled = running !== null || steps.length === 0;
    byId('replay-stop').disabled = running === null;
    byId('replay-speed').disabled = running !== null;
  };
  const stop = () => running?.abort();

  byId('recording').addEventListener('change', async ({ target }) => {
    const [file] = target.files;
    if (!file) return;
    stop();
    running = null; // what is told of it from now on is of the past
    steps = [];
    update();
    byId('replay').hidden = false;
    byId('replay-status').textContent = '';
    byId('replay-progress').value = 0;
    byId('replay-summary').textContent = file.name;
    try {
      const recording = readRecording(await file.text());
      steps = recording.steps;
      byId('replay-summary').textContent = summary(file.name, recording);
    } catch (error) {
      onProblem(`${file.name}: ${error.message}`);
    }
    target.value = ''; // so that the same file can be chosen again
    byId('replay-progress').max = Math.max(1, steps.length);
    update();
  });

  byId('replay-start').addEventListener('click', async () => {
    const own = new AbortController();
    running = own;
    update();
    const status = byId('replay-status');
    const told = (sent, failed) => `${sent} of ${steps.length} sent${failed > 0 ? `, ${failed} not accepted` : ''}`;
    let progress = told(0, 0);
    status.textContent = progress;
    await play(steps, {
      speed: Number(byId('replay-speed').value),
      signal: own.signal,
      clock: () => performance.now(),
      wait: (ms) => pause(ms, own.signal),
      send: (step) => post(step, own.signal),
      onProgress: (sent, failed) => {
        progress = told(sent, failed);
        status.textContent = progress;
        byId('replay-progress').value = sent;
      },
    });
    if (running !== own) return;
    status.textContent = `${progress}; ${own.signal.aborted ? 'stopped' : 'done'}`;
    running = null;
    update();
  });

  byId('replay-stop').addEventListener('click', stop);
  byId('replay-close').addEventListener('click', () => {
    stop();
    byId('replay').hidden = true;
  });
}

function summary(name, { steps, passedOver }) {
  const length = steps.length > 0 ? `, ${duration(steps.at(-1).ms)}` : '';
  const left = passedOver > 0 ? `, ${passedOver} left out that the display had not accepted` : '';
  return `${name}: ${count(steps.length, 'message')}${length}${left}`;
}

function pause(ms, signal) {
  return new Promise((done) => {
    const timer = setTimeout(done, ms);
    signal.addEventListener('abort', () => { clearTimeout(timer); done(); }, { once: true });
  });
}

async function post({ path, body }, signal) {
  try {
    const answer = await fetch(path, {
      method: 'POST',
      headers: { 'Content-Type': 'application/json', 'X-Replay': '1' },
      body: JSON.stringify(body),
      signal,
    });
    return answer.ok;
  } catch {
    return false; // down, or stopped
  }
}
