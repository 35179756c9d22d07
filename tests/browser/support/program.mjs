// A program of this build, run as a process of its own and ended with its test.
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { resolve } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../../..', import.meta.url));

/** An absolute path of the source tree. */
export const sourcePath = (name) => resolve(root, name);

const bin = process.env.BIN ?? sourcePath('build/release/bin');

export class Program {
  /** Starts `name` with these arguments; `home` is the folder it may keep things in. */
  constructor(name, args, home) {
    this.name = name;
    this.output = '';
    this.errors = '';
    this.process = spawn(resolve(bin, name), args, {
      env: { ...process.env, HOME: home, XDG_STATE_HOME: home },
      stdio: ['pipe', 'pipe', 'pipe'],
    });
    this.process.stdout.setEncoding('utf8').on('data', (text) => { this.output += text; });
    this.process.stderr.setEncoding('utf8').on('data', (text) => { this.errors += text; });
    this.ended = once(this.process, 'exit');
  }

  /** The match of `pattern` in what it prints, once it is there. */
  async printed(pattern, withinMs = 60_000) {
    const deadline = Date.now() + withinMs;
    for (;;) {
      const match = this.output.match(pattern);
      if (match) return match;
      if (this.process.exitCode !== null || Date.now() > deadline)
        throw new Error(`${this.name} printed no ${pattern}:\n${this.output}${this.errors}`);
      await new Promise((done) => { setTimeout(done, 20); });
    }
  }

  /** Runs a command of the register's, given as an object, from its standard input. */
  command(command) {
    this.process.stdin.write(`${JSON.stringify(command)}\n`);
  }

  async stop(signal = 'SIGTERM') {
    if (this.process.exitCode === null && this.process.signalCode === null) this.process.kill(signal);
    await this.ended;
  }
}
