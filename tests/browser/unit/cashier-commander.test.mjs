import assert from 'node:assert/strict';
import test from 'node:test';
import { Commander } from '../../../programs/register/web/commander.js';

/** A register that answers what it is told to, and whose news the test gives itself. */
function register(failing = () => false) {
  const sent = [];
  const post = async (text) => {
    sent.push(text);
    return { n: sent.length, ok: !failing(text) };
  };
  return { sent, post };
}

const settled = () => new Promise((done) => { setImmediate(done); });

test('the next command is made when what the one before led to is known', async () => {
  const { sent, post } = register();
  const commander = new Commander(post, 60_000);
  let isOpen = false;
  const sell = () => [...(isOpen ? [] : ['open']), 'sell'];
  const both = Promise.all([commander.send(sell), commander.send(sell)]);
  await settled();
  assert.deepEqual(sent, ['open']);
  isOpen = true;
  commander.hear(1);
  await settled();
  commander.hear(2);
  await settled();
  assert.deepEqual(sent, ['open', 'sell', 'sell']);
  commander.hear(3);
  assert.deepEqual(await both, [true, true]);
});

test('what follows a failure is not sent, what others want is', async () => {
  const { sent, post } = register((text) => text === 'bad');
  const commander = new Commander(post, 1);
  const first = commander.send(() => ['bad', 'after']);
  const second = commander.send(() => ['good']);
  assert.equal(await first, false);
  assert.equal(await second, true);
  assert.deepEqual(sent, ['bad', 'good']);
});

test('a register that is away is told, and the next command is sent all the same', async () => {
  let away = true;
  const commander = new Commander(async () => {
    if (away) throw new Error('away');
    return { n: 1, ok: true };
  }, 1);
  await assert.rejects(commander.send(() => ['one']), /away/);
  away = false;
  assert.equal(await commander.send(() => ['two']), true);
});

test('without news the page goes on after a while', async () => {
  const { post } = register();
  assert.equal(await new Commander(post, 5).send(() => ['open']), true);
});

test('what was heard of a register that has ended does not count for the next one', async () => {
  const { post } = register();
  const commander = new Commander(post, 60_000);
  commander.hear(40);
  commander.forget();
  let isDone = false;
  const sent = commander.send(() => ['open']).then(() => { isDone = true; });
  await settled();
  assert.equal(isDone, false);
  commander.hear(1);
  await sent;
});

test('it is idle when all that was given to it is done with', async () => {
  const { sent, post } = register((text) => text === 'bad');
  const commander = new Commander(post, 1);
  commander.send(() => ['bad']);
  commander.send(() => ['good']);
  await commander.idle();
  assert.deepEqual(sent, ['bad', 'good']);
});
