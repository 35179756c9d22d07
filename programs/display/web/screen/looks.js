// The display's settings as `Configure` gives them: each with the value that holds if it is missing
// or makes no sense.
import { isObject, numberOf, textOf } from '../common/values.js';

const colors = {
  backgroundColor: 'ece1e1',
  receiptBackgroundColor: 'fcf8f8',
  receiptBorderColor: 'd0b5b5',
  additionalFontColor: '988787',
  headerFontColor: '000000',
  positionFontColor: '000000',
  positionDiscountFontColor: '328f32',
  positionDiscountAdditionalFontColor: 'd61821',
  positionPriceFontColor: '988787',
  footerFontColor: '000000',
};

const fonts = {
  headerFontType: 'Sans Serif',
  positionFontType: 'Sans Serif',
  positionDiscountFontType: 'Sans Serif',
  positionPriceFontType: 'Sans Serif',
  footerFontType: 'Sans Serif',
};

/** In pixels; 0 is a size too. */
const sizes = {
  elementsMargin: 10,
  headerHeight: 40,
  positionPaddingRightLeft: 5,
  positionMarginTopBottom: 5,
  positionHeight: 50,
  positionQuantityWidth: 60,
  positionSumWidth: 130,
  positionPriceWidth: 0,
  positionDiscountHeight: 15,
  discountSumHeight: 30,
  checkSumHeight: 40,
};

/** In pixels: nothing could be seen with 0. */
const aboveZero = {
  receiptWidth: 500,
  receiptHeight: 500,
  headerFontSize: 14,
  positionFontSize: 14,
  positionDiscountFontSize: 13,
  positionPriceFontSize: 14,
  discountSumTitleFontSize: 12,
  discountSumFontSize: 12,
  checkSumTitleFontSize: 20,
  checkSumFontSize: 24,
};

/** In whole lines. */
const lines = { positionWrapLineCount: 1 };

const switches = {
  showPositionDiscount: false,
  showImages: false,
  headerFontBold: false,
  positionFontBold: false,
  positionDiscountFontBold: false,
  positionPriceFontBold: false,
  discountSumFontBold: false,
  checkSumFontBold: false,
};

const texts = {
  appLogoPath: '',
  backgroundImagePath: '',
  positionDiscountLabelMask: 'Скидка %(position.disc_perc[.2f])%',
};

const touchSizes = { advertisingWidth: 560, advertisingHeight: 256 };

const closedDocumentTimeoutMs = 10_000;
const layouts = 4;

/** The names of the settings by their kind, for whoever writes them down as style. */
export const styleNames = {
  colors: Object.keys(colors),
  fonts: Object.keys(fonts),
  sizes: [...Object.keys(sizes), ...Object.keys(aboveZero)],
  lines: Object.keys(lines),
  bold: Object.keys(switches).filter((name) => name.endsWith('Bold')),
};

const color = (value, otherwise) => textOf(value).match(/^#?([0-9a-f]{6})$/i)?.[1].toLowerCase() ?? otherwise;
const atLeast = (least) => (value, otherwise) => {
  const number = numberOf(value, otherwise);
  return number >= least ? number : otherwise;
};
const wholeFrom = (least) => (value, otherwise) => Math.trunc(atLeast(least)(value, otherwise));
const text = (value, otherwise) => textOf(value).trim() || otherwise;
const flag = (value, otherwise) => (typeof value === 'boolean' ? value : otherwise);

/**
 * The looks that a `Configure` asks for.
 *
 * @param {any} values the body of the message
 * @param {number} n the number of the message, by which the display hands out the pictures it names
 */
export function looksOf(values, n = 0) {
  const given = isObject(values) ? values : {};
  const isTouch = given['View.Interface:touchng'] === true;
  const read = (table, reader) => Object.fromEntries(Object.entries(table).map(([name, otherwise]) => {
    const common = reader(given[`View.Style:${name}`], otherwise);
    return [name, isTouch ? reader(given[`View.QmlStyle:${name}`], common) : common];
  }));
  const { displayType } = read({ displayType: 0 }, wholeFrom(0));
  return {
    n,
    isTouch,
    theme: isTouch ? text(given['theme:name'], 'touch') : 'classic',
    displayType: displayType < layouts ? displayType : 0,
    ...read(colors, color),
    ...read(fonts, text),
    ...read(sizes, atLeast(0)),
    ...read(aboveZero, atLeast(1)),
    ...read(lines, wholeFrom(1)),
    ...read(switches, flag),
    ...read(texts, text),
    ...read(touchSizes, atLeast(1)),
    showGoodsQuantity: flag(given['GUI:showGoodsQuantity'], false),
    closedDocumentTimeoutMs: atLeast(0)(given['View.Logic:closedDocumentTimeout'], closedDocumentTimeoutMs),
  };
}
