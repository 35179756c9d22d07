// Recordings as JSON Lines: the inspector's exports and the files of the display's --record.
import { isObject } from '../common/values.js';
import { messageTypes } from './types.js';

const paths = new Set(messageTypes.map(({ path }) => path));

export function toJsonLines(entries) {
  return entries.map((entry) => `${JSON.stringify(entry)}\n`).join('');
}

/**
 * @typedef {{path: string, body: object, ms: number}} Step a message; ms after the first one
 *
 * Reads what can be sent again. What the display had not accepted is passed over: the screen never
 * had it.
 *
 * @param {string} text
 * @returns {{steps: Step[], passedOver: number}}
 * @throws {Error} names the first broken line
 */
export function readRecording(text) {
  const steps = [];
  let passedOver = 0;
  text.split('\n').forEach((line, index) => {
    if (line.trim() === '') return;
    const record = readLine(line, index + 1);
    if ((record.kind ?? 'message') !== 'message') return;
    if (isRefused(record)) passedOver += 1;
    else steps.push(readStep(record, index + 1));
  });
  const first = steps[0]?.ms ?? 0;
  return { steps: steps.map((step) => ({ ...step, ms: Math.max(0, step.ms - first) })), passedOver };
}

function readLine(line, number) {
  let record = null;
  try {
    record = JSON.parse(line);
  } catch (error) {
    throw new Error(`Line ${number} is no JSON: ${error.message}`);
  }
  if (!isObject(record)) throw new Error(`Line ${number} is no JSON object.`);
  return record;
}

function isRefused({ status }) {
  return typeof status === 'number' && (status < 200 || status > 299);
}

function readStep({ path, body, ms }, number) {
  if (!paths.has(path)) throw new Error(`Line ${number}: "path" is none that a message is posted to.`);
  if (!isObject(body)) throw new Error(`Line ${number}: "body" is no JSON object.`);
  if (!Number.isFinite(ms)) throw new Error(`Line ${number}: "ms" is no time.`);
  return { path, body, ms };
}

/**
 * Sends the steps one after another, none before its time.
 *
 * @param {Step[]} steps
 * @param {object} by
 * @param {number} by.speed 1 as recorded, Infinity at once
 * @param {(step: Step) => Promise<boolean>} by.send whether it was accepted
 * @param {(ms: number) => Promise<void>} by.wait
 * @param {() => number} by.clock in ms
 * @param {AbortSignal} by.signal ends it
 * @param {(sent: number, failed: number) => void} by.onProgress
 */
export async function play(steps, { speed, send, wait, clock, signal, onProgress }) {
  const start = clock();
  let failed = 0;
  for (const [index, step] of steps.entries()) {
    const due = start + step.ms / speed;
    if (due > clock()) await wait(due - clock());
    if (signal.aborted) return;
    const accepted = await send(step);
    if (signal.aborted) return;
    if (!accepted) failed += 1;
    onProgress(index + 1, failed);
  }
}
