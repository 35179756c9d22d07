// Reading what a message holds, which may be anything, without ever failing.

/** Whether a value is a JSON object. */
export const isObject = (value) => typeof value === 'object' && value !== null && !Array.isArray(value);

/** A text as it is, a number as text, anything else as no text. */
export function textOf(value) {
  if (typeof value === 'number') return String(value);
  return typeof value === 'string' ? value : '';
}

/** A finite number, also one that is written as text; `otherwise` for anything else. */
export function numberOf(value, otherwise = 0) {
  const number = typeof value === 'string' && value.trim() !== '' ? Number(value) : value;
  return typeof number === 'number' && Number.isFinite(number) ? number : otherwise;
}

/** The objects among the items of a list; none for anything else. */
export const objectsOf = (value) => (Array.isArray(value) ? value.filter(isObject) : []);
