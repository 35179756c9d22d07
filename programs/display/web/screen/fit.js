// The largest size at which a text fits.

const largest = 64;
const step = 0.92;
const padding = 32;

/** Words stay whole as long as the text stays large that way; what is too long even for the least
    size is cut at its end. */
const ways = [{ wrap: 'normal', least: 22 }, { wrap: 'anywhere', least: 14 }];

/** Sets the size of an element's text so that it fits into the box. */
export function fitText(element, box) {
  const room = { width: box.width - 2 * padding, height: box.height - 2 * padding };
  element.style.maxHeight = `${room.height}px`;
  for (const { wrap, least } of ways) {
    element.style.overflowWrap = wrap;
    for (let size = largest; size >= least; size *= step) {
      element.style.fontSize = `${size}px`;
      if (element.scrollHeight <= room.height && element.scrollWidth <= room.width) return;
    }
  }
}
