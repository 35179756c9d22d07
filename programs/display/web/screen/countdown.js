// The time that is left to pay by QR code.

/**
 * @param {{at: number, timeoutMs: number}} qr a time-out of 0 means that there is none
 * @param {number} now ms since the epoch
 * @returns {{isOver: boolean, left: string, share: number} | null} `left` as minutes and seconds,
 * `share` from 1 to 0; null without a time-out
 */
export function countdown({ at, timeoutMs }, now) {
  if (timeoutMs <= 0) return null;
  const leftMs = Math.min(timeoutMs, Math.max(0, at + timeoutMs - now));
  const seconds = Math.ceil(leftMs / 1000);
  const left = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
  return { isOver: leftMs === 0, left, share: leftMs / timeoutMs };
}
