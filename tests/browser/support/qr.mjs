// Reads QR codes with zbar, which shares no code with what draws them.
import { execFile } from 'node:child_process';
import { mkdtemp, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { promisify } from 'node:util';

/** The text of the QR code on a picture (PNG). */
export async function decodeQr(png) {
  const folder = await mkdtemp(join(tmpdir(), 'viewconnector-qr-'));
  try {
    const file = join(folder, 'screen.png');
    await writeFile(file, png);
    const { stdout } = await promisify(execFile)('zbarimg', ['--raw', '-q', file]);
    return stdout.replace(/\n$/, '');
  } finally {
    await rm(folder, { recursive: true });
  }
}
