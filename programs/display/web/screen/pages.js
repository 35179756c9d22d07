// How a price list is spread over pages, and which of them is on the screen.

const leastColumnWidth = 300;
const columnGap = 32;

/**
 * @param {number} count rows in all
 * @param {number} wanted columns that the register asks for
 * @param {{width: number, height: number}} room for the rows, in px
 * @param {number} rowHeight in px
 */
export function pagesOf(count, wanted, { width, height }, rowHeight) {
  const fitting = Math.floor((width + columnGap) / (leastColumnWidth + columnGap));
  const columns = Math.max(1, Math.min(wanted, fitting));
  const rows = Math.max(1, Math.floor(height / rowHeight));
  return { columns, rows, pages: Math.max(1, Math.ceil(count / (columns * rows))) };
}

/** The page, from 0, after these scrolls from the first one on. */
export function pageAfter(scrolls, pages) {
  const last = pages - 1;
  const moves = {
    down: (page) => Math.min(page + 1, last),
    up: (page) => Math.max(page - 1, 0),
    top: () => 0,
    bottom: () => last,
  };
  return scrolls.reduce((page, scroll) => moves[scroll](page), 0);
}
