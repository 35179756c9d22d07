// Wires the inspector's page: what the display tells goes into the journal, and what of it is wanted
// onto the page, at most once a frame.
import { byId } from '/common/dom.js';
import { follow } from '/common/live.js';
import { Details } from './details.js';
import { wireFaults } from './faults.js';
import { Filters } from './filters.js';
import { Journal, identity } from './journal.js';
import { List } from './list.js';
import { Pending } from './pending.js';
import { toJsonLines } from './recording.js';
import { wireReplay } from './replay.js';
import { countByGroup, rowsOf, wantedRows } from './rows.js';
import { wireScreen } from './screen.js';
import { relate } from './timeline.js';

const journal = new Journal();
const epochOf = (ms) => journal.epochOf(ms);

let cleared = new Set(); // identities of what was there at the last clear
let frozen = null; // while paused: the entries of then
let isDrawPlanned = false;

const details = new Details();
const pending = new Pending(() => journal.nowAt(performance.now()));
const filters = new Filters(planDraw);
const list = new List({
  grid: byId('timeline'), body: byId('rows'), newest: byId('newest'), onChoose: (row) => details.show(row, epochOf),
});

function planDraw() {
  if (isDrawPlanned) return;
  isDrawPlanned = true;
  requestAnimationFrame(() => {
    isDrawPlanned = false;
    draw();
  });
}

function draw() {
  const present = relate(journal.entries);
  const entries = frozen ?? journal.entries;
  const relations = frozen ? relate(frozen) : present;

  const uncleared = entries.filter((entry) => !cleared.has(identity(entry)));
  const rows = rowsOf(entries, relations).filter(({ key }) => !cleared.has(key));
  const wanted = wantedRows(rows, filters.chosen, byId('search').value);
  list.show(wanted, epochOf);
  filters.show(countByGroup(uncleared, relations));
  pending.show(present.pending);

  const chosen = rows.find(({ key }) => key === list.chosenKey);
  if (chosen) details.show(chosen, epochOf);
  byId('nothing').hidden = wanted.length > 0;
  byId('nothing').textContent = rows.length > 0 ? 'No row matches the filter.' : 'Nothing has arrived yet.';
  drawPause();
}

function drawPause() {
  const known = new Set(frozen?.map(identity));
  const later = frozen ? journal.entries.filter((entry) => !known.has(identity(entry))).length : 0;
  byId('pause').setAttribute('aria-pressed', frozen !== null);
  byId('pause').textContent = frozen ? `Resume (${later} new)` : 'Pause';
}

function togglePause() {
  frozen = frozen ? null : [...journal.entries];
  draw();
}

function showProblem(text) {
  byId('problem-text').textContent = text;
  byId('problem').hidden = false;
}

function download(name, text) {
  const link = document.createElement('a');
  link.href = URL.createObjectURL(new Blob([text], { type: 'application/jsonl' }));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60_000); // the browser is still reading it
}

function wireControls() {
  byId('search').addEventListener('input', planDraw);
  byId('pause').addEventListener('click', togglePause);
  byId('problem-close').addEventListener('click', () => { byId('problem').hidden = true; });
  byId('clear').addEventListener('click', () => {
    cleared = new Set([...journal.entries, ...(frozen ?? [])].map(identity));
    draw();
  });
  byId('export').addEventListener('click', () => {
    const time = new Date().toISOString().slice(0, 19).replaceAll(/[-:]/g, '');
    download(`display-${time}.jsonl`, toJsonLines(journal.entries.filter((entry) => !cleared.has(identity(entry)))));
  });
}

function wireKeys() {
  document.addEventListener('keydown', (event) => {
    if (event.key !== '/' || event.target.closest('input, select')) return;
    event.preventDefault();
    byId('search').select();
  });
  byId('search').addEventListener('keydown', (event) => {
    if (event.key === 'Escape') {
      event.target.value = '';
      planDraw();
    }
    if (event.key === 'Escape' || event.key === 'Enter') byId('timeline').focus();
  });
  byId('timeline').addEventListener('keydown', (event) => {
    if (event.key === 'Enter') details.focus();
    else if (event.key === ' ') togglePause();
    else return;
    event.preventDefault();
  });
  byId('details').addEventListener('keydown', (event) => {
    if (event.key === 'Escape') byId('timeline').focus();
  });
}

wireControls();
wireKeys();
wireScreen();
wireReplay(showProblem);
const showSwitches = wireFaults(showProblem);

follow('/journal', {
  journal(account) {
    journal.restart(account, performance.now());
    showSwitches(account.switches);
    planDraw();
  },
  entry(entry) {
    journal.add(entry);
    planDraw();
  },
  switches: showSwitches,
}, (isConnected) => {
  byId('connection').dataset.is = isConnected ? 'connected' : 'lost';
  byId('connection').textContent = isConnected ? 'Connected' : 'Connection lost, trying again…';
});
