// The accessibility check of axe-core, put into the page past its content security policy.
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';

const source = await readFile(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

/** What violates WCAG 2.1 A and AA on the page, or in one of its frames, as short texts; frames within
    it are not looked into. */
export async function violations(page) {
  await page.evaluate(source);
  const result = await page.evaluate(() => globalThis.axe.run({
    runOnly: ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa', 'best-practice'],
    iframes: false,
  }));
  return result.violations.flatMap((violation) => violation.nodes.map(
    (node) => `${violation.id}: ${node.target.join(' ')}: ${node.failureSummary}`,
  ));
}
