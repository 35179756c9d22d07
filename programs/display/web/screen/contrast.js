// Whether a colour can be read on its ground, and the nearest one that can. Colours are RRGGBB.

/** What WCAG asks of ordinary text. */
export const readableRatio = 4.5;

const channels = (color) => [0, 2, 4].map((at) => Number.parseInt(color.slice(at, at + 2), 16));
const hex = (values) => values.map((value) => Math.round(value).toString(16).padStart(2, '0')).join('');

function luminance(color) {
  const [red, green, blue] = channels(color)
    .map((value) => value / 255)
    .map((value) => (value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4));
  return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

/** The contrast of two colours, from 1 to 21. */
export function contrast(one, other) {
  const [dark, light] = [luminance(one), luminance(other)].sort((a, b) => a - b);
  return (light + 0.05) / (dark + 0.05);
}

/** The colour that lies `share` (0 to 1) of the way from one to the other. */
export function mix(one, other, share) {
  const end = channels(other);
  return hex(channels(one).map((value, at) => value + (end[at] - value) * share));
}

/** `color` if it can be read on `ground`, else moved towards black or white just as far as needed. */
export function readable(color, ground) {
  if (contrast(color, ground) >= readableRatio) return color;
  const darker = luminance(color) <= luminance(ground);
  const wanted = darker ? '000000' : 'ffffff';
  const opposite = darker ? 'ffffff' : '000000';
  const end = contrast(wanted, ground) >= readableRatio ? wanted : opposite;
  for (let step = 1; step < 255; ++step) {
    const moved = mix(color, end, step / 255);
    if (contrast(moved, ground) >= readableRatio) return moved;
  }
  return end;
}
