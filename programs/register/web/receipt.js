// What is known of the current document; it may hold anything.

/** Its positions that can be shown. */
export function positionsOf(receipt) {
  return Array.isArray(receipt?.positions)
    ? receipt.positions.map((position) => (position !== null && typeof position === 'object' ? position : {}))
    : [];
}

/** Whether goods can be sold on it. */
export function isOpen(receipt) {
  return receipt?.state === 'open';
}

/** What is still to be paid, in kopecks. */
export function dueOf(receipt) {
  const paid = Array.isArray(receipt?.payments)
    ? receipt.payments.reduce((sum, payment) => sum + (Number(payment?.amount) || 0), 0)
    : 0;
  return Math.max(0, (Number(receipt?.total) || 0) - paid);
}

/**
 * Which position is selected when a receipt has changed: a position that is new, otherwise the one
 * before, as long as it is there.
 *
 * @param {number} selected counted from 0, -1 for none
 */
export function selectionAfter(selected, before, after) {
  const was = positionsOf(before).length;
  const is = positionsOf(after).length;
  if (before?.number !== after?.number || is > was) return is - 1;
  return Math.min(selected, is - 1);
}

/** Roubles that a buyer is likely to hand over for this many kopecks: notes above the sum. */
export function likelyNotes(due) {
  const notes = [100, 500, 1000, 2000, 5000];
  const rounded = notes.map((note) => Math.ceil(due / 100 / note) * note);
  return [...new Set(rounded)].filter((roubles) => roubles * 100 > due).slice(0, 4);
}
