// What the keys of a keypad do to the number in a field.

const maxLength = 9;

/**
 * @param {string} text the number as it stands
 * @param {string} key a digit, "," or "back"
 * @param {boolean} fresh whether the number is a proposal, which the first key replaces
 */
export function pressed(text, key, fresh) {
  if (key === 'back') return fresh ? '' : text.slice(0, -1);
  const start = fresh ? '' : text;
  if (key === ',') return /[.,]/.test(start) ? start : `${start || '0'},`;
  if (start.length >= maxLength) return start;
  return start === '0' ? key : start + key;
}
