// How a text is set.

/** Keeps a number in one line with the unit or sign that follows it: "400 г", "3,2 %". */
export const typeset = (text) => text.replace(/(\d) (?=(?:%|г|кг|мл|л|шт|см|мм|м)(?!\p{L}))/gu, '$1\u00a0');
