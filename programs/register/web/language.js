// The commands as they are written down, and what a cashier types, as numbers.

/**
 * A command as a line of a script: "do" comes first.
 *
 * @param {Record<string, any>} command
 */
export function commandText(command) {
  const { do: name, ...fields } = command;
  return JSON.stringify(name === undefined ? fields : { do: name, ...fields });
}

/** An answer with its keys in the order of the register's standard output. */
export function answerText({ n, do: name, ok, error }) {
  return JSON.stringify({ n, do: name, ok, error });
}

/** Texts of commands as a script that the register runs: JSON Lines. */
export function script(texts) {
  return texts.map((text) => `${text.replaceAll('\n', ' ')}\n`).join('');
}

/** "0,734" and "0.734" are 0.734; null for what is no number from 0. */
export function decimal(text) {
  const trimmed = text.trim().replace(',', '.');
  return /^(\d+\.?\d*|\.\d+)$/.test(trimmed) ? Number(trimmed) : null;
}

/** Roubles as they are typed, in kopecks; null for what is no amount. */
export function kopecks(text) {
  const roubles = decimal(text.replaceAll(/\s/g, ''));
  return roubles === null ? null : Math.round(roubles * 100);
}

/**
 * What was typed into the search field: "3*100" are three of the article 100.
 *
 * @returns {{quantity: number | null, goods: string}} quantity null if none was typed
 */
export function entry(text) {
  const parts = text.trim().match(/^([\d.,]+)\s*[*×]\s*(.*)$/);
  const quantity = parts ? decimal(parts[1]) : null;
  return quantity === null ? { quantity: null, goods: text.trim() } : { quantity, goods: parts[2] };
}
