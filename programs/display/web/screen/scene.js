// Which of its main views the screen shows at a moment.

/** Whether there is a receipt to show: one that is paid gives way after a time. */
export function receiptIsShown({ receipt, looks }, now) {
  if (receipt === null) return false;
  return !receipt.isPaid || now < receipt.at + looks.closedDocumentTimeoutMs;
}

/**
 * @param {typeof import('./state.js').nothing} state
 * @param {number} now ms since the epoch, by the display's clock
 * @returns {'waiting' | 'idle' | 'receipt'}
 */
export function sceneOf(state, now) {
  if (receiptIsShown(state, now)) return 'receipt';
  return state.isConfigured ? 'idle' : 'waiting';
}
