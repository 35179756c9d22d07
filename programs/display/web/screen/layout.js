// Where the parts of the screen are. Settings are pixels of a stage that is scaled as a whole to the
// window, so that what is 14 px there can be read from two metres off a large screen.

const leastAdvertising = { width: 260, height: 180 };
const leastReceiptHeight = 240;
const legibleScale = 1;
const codeMargin = 24;
const codeTexts = { height: 168, width: 300 };
const goodCodeShare = 0.5;

/** How the parts lie by `displayType`: beside each other or above each other, or the receipt alone. */
function arrangementOf(displayType, isPortrait) {
  if (displayType === 2) return { isAlone: true };
  if (displayType === 3) return { isStacked: true, advertisingFirst: true };
  return { isStacked: isPortrait, advertisingFirst: displayType === 1 };
}

const wishedAdvertising = (looks) => (looks.isTouch
  ? { width: looks.advertisingWidth, height: looks.advertisingHeight }
  : leastAdvertising);

/** What the parts and the margins around them take at these sizes. */
function neededFor({ isAlone, isStacked }, looks, advertising, receiptHeight) {
  const { receiptWidth, elementsMargin: margin } = looks;
  if (isAlone) return { width: receiptWidth + 2 * margin, height: receiptHeight + 2 * margin };
  if (isStacked)
    return {
      width: Math.max(receiptWidth, advertising.width) + 2 * margin,
      height: receiptHeight + advertising.height + 3 * margin,
    };
  return {
    width: receiptWidth + advertising.width + 3 * margin,
    height: Math.max(receiptHeight, advertising.height) + 2 * margin,
  };
}

/** Pixels of the window for one of the stage: as many as let everything have its size, but where a
    window is too small for that the parts rather shrink to the least than texts do. */
function scaleOf(window, looks, arrangement) {
  const scaleFor = (advertising, receiptHeight) => {
    const { width, height } = neededFor(arrangement, looks, advertising, receiptHeight);
    return Math.min(window.width / width, window.height / height);
  };
  const wished = wishedAdvertising(looks);
  const least = {
    width: Math.min(wished.width, leastAdvertising.width),
    height: Math.min(wished.height, leastAdvertising.height),
  };
  const wanted = scaleFor(wished, looks.receiptHeight);
  const most = scaleFor(least, Math.min(looks.receiptHeight, leastReceiptHeight));
  return Math.min(most, Math.max(wanted, legibleScale));
}

function stacked({ width, height }, looks, advertisingFirst) {
  const margin = looks.elementsMargin;
  const inner = { width: width - 2 * margin, height: height - 3 * margin };
  const wished = wishedAdvertising(looks);
  const receiptHeight = Math.min(looks.receiptHeight, inner.height - Math.min(wished.height, leastAdvertising.height));
  const adHeight = looks.isTouch ? Math.min(wished.height, inner.height - receiptHeight) : inner.height - receiptHeight;
  const adWidth = looks.isTouch ? Math.min(wished.width, inner.width) : inner.width;
  const top = (height - receiptHeight - adHeight - margin) / 2;
  return {
    receipt: {
      x: margin,
      y: advertisingFirst ? top + adHeight + margin : top,
      width: inner.width,
      height: receiptHeight,
    },
    advertising: {
      x: (width - adWidth) / 2,
      y: advertisingFirst ? top : top + receiptHeight + margin,
      width: adWidth,
      height: adHeight,
    },
  };
}

function sideBySide({ width, height }, looks, advertisingFirst) {
  const margin = looks.elementsMargin;
  const receiptHeight = Math.min(looks.receiptHeight, height - 2 * margin);
  const column = width - looks.receiptWidth - 3 * margin;
  const wished = wishedAdvertising(looks);
  const adWidth = looks.isTouch ? Math.min(wished.width, column) : column;
  const adHeight = looks.isTouch ? Math.min(wished.height, height - 2 * margin) : receiptHeight;
  const columnX = advertisingFirst ? margin : looks.receiptWidth + 2 * margin;
  return {
    receipt: {
      x: advertisingFirst ? column + 2 * margin : margin,
      y: (height - receiptHeight) / 2,
      width: looks.receiptWidth,
      height: receiptHeight,
    },
    advertising: {
      x: columnX + (column - adWidth) / 2,
      y: (height - adHeight) / 2,
      width: adWidth,
      height: adHeight,
    },
    beside: { x: columnX, y: margin, width: column, height: height - 2 * margin },
  };
}

function alone({ width, height }, looks) {
  const margin = looks.elementsMargin;
  const receiptHeight = Math.min(looks.receiptHeight, height - 2 * margin);
  const receipt = { x: margin, y: (height - receiptHeight) / 2, width: width - 2 * margin, height: receiptHeight };
  return { receipt, advertising: null };
}

/** The side of the largest code that leaves room for the texts below or beside it. */
function codeIn({ width, height }) {
  const above = Math.min(width - 2 * codeMargin, height - codeTexts.height - codeMargin);
  const beside = Math.min(width - codeTexts.width - 3 * codeMargin, height - 2 * codeMargin);
  return beside > above ? { side: beside, isBeside: true } : { side: above, isBeside: false };
}

/** Where a code is shown: beside the receipt if it is large there, else in place of everything. */
function codeOf(stage, beside) {
  const whole = { x: 0, y: 0, ...stage };
  const isWhole = !beside || codeIn(beside).side < stage.height * goodCodeShare;
  const box = isWhole ? whole : beside;
  return { box, isWhole, ...codeIn(box) };
}

/**
 * @param {{width: number, height: number}} window in CSS pixels
 * @param {ReturnType<import('./looks.js').looksOf>} looks
 * @param {boolean} hasReceipt without one the advertising takes the whole stage
 * @returns the scale, and in pixels of the stage its size and the boxes of its parts; `advertising`
 * is null where there is no room for it, `panel` is where payments are announced
 */
export function layoutOf(window, looks, hasReceipt) {
  const arrangement = arrangementOf(looks.displayType, window.height > window.width);
  const scale = scaleOf(window, looks, arrangement);
  const stage = { width: window.width / scale, height: window.height / scale };
  const whole = { x: 0, y: 0, ...stage };
  if (!hasReceipt)
    return { scale, stage, receipt: null, advertising: whole, panel: whole, code: codeOf(stage, null) };
  const parts = arrangement.isAlone ? alone(stage, looks)
    : (arrangement.isStacked ? stacked : sideBySide)(stage, looks, arrangement.advertisingFirst);
  const panel = parts.beside ?? parts.advertising ?? whole;
  return { scale, stage, ...parts, panel, code: codeOf(stage, parts.beside) };
}
