// The looks as custom properties of CSS: `headerFontSize` becomes `--header-font-size`.
import { mix, readable } from './contrast.js';
import { styleNames } from './looks.js';

/** What stands for "Sans Serif", and for a font that is not installed. */
const sansSerif = '"Noto Sans", "PT Sans", "DejaVu Sans", sans-serif';

const property = (name) => `--${name.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`)}`;

function fontFamily(name) {
  const clean = name.replace(/["\\]/g, '');
  return /^sans[ -]?serif$/i.test(clean) ? sansSerif : `"${clean}", ${sansSerif}`;
}

/**
 * Names and values of the custom properties that the style sheets use. Colours of texts are such as
 * can be read on the receipt.
 *
 * @param {ReturnType<import('./looks.js').looksOf>} looks
 * @returns {Record<string, string>}
 */
export function customProperties(looks) {
  const paper = looks.receiptBackgroundColor;
  const ink = readable(looks.positionFontColor, paper);
  const colorOf = (name) => (name.endsWith('FontColor') ? readable(looks[name], paper) : looks[name]);
  const all = [
    ...styleNames.colors.map((name) => [name, `#${colorOf(name)}`]),
    ...styleNames.fonts.map((name) => [name, fontFamily(looks[name])]),
    ...styleNames.sizes.map((name) => [name, `${looks[name]}px`]),
    ...styleNames.lines.map((name) => [name, `${looks[name]}`]),
    ...styleNames.bold.map((name) => [name, looks[name] ? '700' : '400']),
    ['screenInk', `#${readable(looks.headerFontColor, looks.backgroundColor)}`],
    ['screenFaintInk', `#${readable(looks.additionalFontColor, looks.backgroundColor)}`],
    ['hairline', `#${mix(paper, ink, 0.12)}`],
    ['tile', `#${mix(paper, ink, 0.07)}`],
    ['tileInk', `#${readable(looks.additionalFontColor, mix(paper, ink, 0.07))}`],
  ];
  return Object.fromEntries(all.map(([name, value]) => [property(name), value]));
}
