// Tests of the pages in Debian's Chromium. CTest runs a file at a time and tells by the environment
// where the programs are (BIN) and where results go (RESULTS).
import { defineConfig } from '@playwright/test';

const results = process.env.RESULTS ?? '../../build/release/browser';

export default defineConfig({
  testDir: '.',
  testMatch: '*.spec.mjs',
  outputDir: `${results}/failures`,
  workers: 1,
  timeout: 180_000, // a test takes seconds, but many times as long where others use the machine
  expect: { timeout: 30_000 },
  forbidOnly: true,
  reporter: 'list',
  use: {
    viewport: { width: 1280, height: 720 },
    locale: 'ru-RU',
    timezoneId: 'Europe/Moscow',
    screenshot: 'only-on-failure',
    launchOptions: {
      executablePath: '/usr/bin/chromium',
      // What Chromium does of its own accord on the network would only fail here.
      args: ['--disable-background-networking', '--disable-component-update', '--disable-sync',
        '--disable-quic', '--no-first-run'],
    },
  },
});
