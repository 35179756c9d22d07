// Times and sizes as a developer reads them.

const two = (number) => String(number).padStart(2, '0');

/** A moment, in ms since the epoch, as "14:03:27.045" of this machine's time zone. */
export function timeOfDay(epochMs) {
  const at = new Date(Math.round(epochMs));
  const milliseconds = String(at.getMilliseconds()).padStart(3, '0');
  return `${two(at.getHours())}:${two(at.getMinutes())}:${two(at.getSeconds())}.${milliseconds}`;
}

/** A length of time in ms: "0.4 ms", "250 ms", "1.25 s", "2m05s". */
export function duration(ms) {
  if (!Number.isFinite(ms)) return '';
  if (ms < 9.95) return `${Math.max(0, ms).toFixed(1)} ms`;
  if (ms < 999.5) return `${Math.round(ms)} ms`;
  if (ms < 59_995) return `${(ms / 1000).toFixed(2)} s`;
  const seconds = Math.round(ms / 1000);
  return `${Math.floor(seconds / 60)}m${two(seconds % 60)}s`;
}

/** A number of bytes: "512 B", "12.3 kB", "4.0 MB". */
export function size(bytes) {
  if (!Number.isFinite(bytes)) return '';
  if (bytes < 1000) return `${bytes} B`;
  if (bytes < 99_950) return `${(bytes / 1000).toFixed(1)} kB`;
  return bytes < 999_500 ? `${Math.round(bytes / 1000)} kB` : `${(bytes / 1e6).toFixed(1)} MB`;
}

/** "1 message", "12,345 messages". */
export function count(number, singular, plural = `${singular}s`) {
  return `${number.toLocaleString('en-US')} ${number === 1 ? singular : plural}`;
}
