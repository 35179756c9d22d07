// Pictures of the main states, kept as output of the build to be looked at.
import { join } from 'node:path';

const folder = join(process.env.RESULTS ?? new URL('../../../build/release/browser', import.meta.url).pathname, 'screens');

export async function keepScreenshot(page, name) {
  return page.screenshot({ path: join(folder, `${name}.png`) });
}
