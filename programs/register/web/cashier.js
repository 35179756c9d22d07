// The cashier's page: what is tapped and typed becomes commands of the register.
import { byId } from '/common/dom.js';
import { follow } from '/common/live.js';
import { quantity } from '/common/russian.js';
import { articleOf, isWeighed } from '/cashier/catalogue.js';
import { createCommandPanel } from '/cashier/command-panel.js';
import { Commander } from '/cashier/commander.js';
import { createDiscount } from '/cashier/discount.js';
import { createGoodsGrid } from '/cashier/goods-grid.js';
import { commandText, entry } from '/cashier/language.js';
import { createOpenDialogs } from '/cashier/open-dialogs.js';
import { createPayment } from '/cashier/payment.js';
import { createQuantity } from '/cashier/quantity.js';
import { createReceiptView } from '/cashier/receipt-view.js';
import { isOpen } from '/cashier/receipt.js';
import { createScreenText } from '/cashier/screen-text.js';
import { listenForKeys } from '/cashier/shortcuts.js';

const unreachable = 'Касса не отвечает: проверьте, что программа register работает';

let state = { receipt: null, dialogs: [] };
let nextQuantity = null; // null: one, or what has to be asked for
let failure;

async function post(text) {
  const response = await fetch('/commands', { method: 'POST', body: text });
  if (!response.ok) throw new Error(`${response.status}`);
  const answer = await response.json();
  failure = answer.ok ? undefined : `Команда ${answer.do} не выполнена: ${answer.error}`;
  return answer;
}

const commander = new Commander(post);

/** Runs commands that are made when their turn has come; returns what is wrong, if anything. */
async function runAll(makeTexts) {
  const done = await commander.send(makeTexts).catch(() => undefined);
  return done === undefined ? unreachable : done ? undefined : failure;
}

function showProblem(problem) {
  byId('problem').textContent = problem ?? '';
}

/** For what is done on the page itself; with commands that depend on what those before lead to. */
const runMade = async (makeCommands) => showProblem(await runAll(() => makeCommands().map(commandText)));
const run = (...commands) => runMade(() => commands);
/** For dialogs, which show themselves what is wrong. */
async function ask(command) {
  const problem = await runAll(() => [commandText(command)]);
  if (problem === undefined) showProblem(undefined);
  return problem;
}

const askQuantity = createQuantity();
const askDiscount = createDiscount(ask);
const askPayment = createPayment(ask);
const askText = createScreenText(ask);
const receiptView = createReceiptView();
const showDialogs = createOpenDialogs(run);
let goods = [];
let grid = null; // until the goods are known
const logCommand = createCommandPanel(async (text) => showProblem(await runAll(() => [text])));

function setNextQuantity(number) {
  nextQuantity = number;
  byId('quantity-next').textContent = quantity(number ?? 1);
  byId('quantity').classList.toggle('set', number !== null);
}

/** Sells, and opens a receipt first where none is open. */
async function sell(goods, number) {
  setNextQuantity(null);
  const command = number === null ? { do: 'sell', goods } : { do: 'sell', goods, quantity: number };
  await runMade(() => [...(isOpen(state.receipt) ? [] : [{ do: 'open' }]), command]);
}

/** What is sold by weight has to be weighed, unless the quantity is given. */
function choose(item, number = nextQuantity) {
  if (number === null && isWeighed(item)) askQuantity(item.name, 'Вес, кг', '1', (weight) => sell(item.code, weight));
  else sell(item.code, number);
}

/** Takes out the position that is selected by then: with two in quick succession, two positions. */
const voidSelected = () => runMade(() => {
  const position = receiptView.selected();
  return position === null ? [] : [{ do: 'void', position: position.index + 1 }];
});

/** Opens a dialog on what the commands before have led to, unless another has been opened. */
async function whenIdle(open) {
  await commander.idle();
  if (isOpen(state.receipt) && document.querySelector('dialog:modal') === null) open();
}

function find() {
  const field = byId('find-text');
  const typed = entry(field.value);
  if (typed.goods === '') return;
  const article = articleOf(goods, typed.goods);
  const number = typed.quantity ?? nextQuantity;
  const [only, ...others] = grid.shown();
  if (article && isWeighed(article) && number === null) choose(article, null);
  else if (article || /^\d+$/.test(typed.goods)) sell(typed.goods, number); // as a scanner gives it
  else if (only && others.length === 0) choose(only, number);
  else return;
  field.value = '';
  grid.filter('');
}

function show(next) {
  state = { ...next, dialogs: Array.isArray(next.dialogs) ? next.dialogs : [] };
  receiptView.show(state.receipt);
  showDialogs(state.dialogs);
}

byId('new-receipt').onclick = () => run({ do: 'open' });
byId('prices').onclick = () => run({ do: 'prices', columns: 2 });
byId('screen').onclick = askText;
byId('qr').onclick = () => run({ do: 'qr' });
byId('pay').onclick = () => whenIdle(() => askPayment(state.receipt));
byId('void').onclick = voidSelected;
byId('discount').onclick = () => whenIdle(() => askDiscount(receiptView.selected()));
byId('quantity').onclick = () => askQuantity('Следующий товар', 'Количество', quantity(nextQuantity ?? 1), setNextQuantity);
byId('shop').hidden = window.parent !== window; // it is around this page already
byId('find-text').addEventListener('input', () => grid?.filter(entry(byId('find-text').value).goods));
byId('find').addEventListener('submit', (event) => {
  event.preventDefault();
  if (grid !== null) find();
});
listenForKeys(byId('find-text'));
receiptView.show(null);

async function loadGoods() {
  try {
    goods = await (await fetch('/goods')).json();
    grid = createGoodsGrid(goods, (item) => choose(item));
    showProblem(undefined);
  } catch {
    showProblem(unreachable);
  }
}

follow('/events', {
  state: show,
  answer: (told) => {
    logCommand(told);
    commander.hear(told.answer.n);
  },
}, (connected) => {
  byId('connection').textContent = connected ? '' : 'Нет связи с кассой';
  if (connected) commander.forget();
  if (connected && grid === null) loadGoods();
});
