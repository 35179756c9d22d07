import assert from 'node:assert/strict';
import test from 'node:test';
import { looksOf } from '../../../programs/display/web/screen/looks.js';
import { customProperties } from '../../../programs/display/web/screen/properties.js';

test('Without settings everything has its default', () => {
  const looks = looksOf({});
  assert.equal(looks.receiptWidth, 500);
  assert.equal(looks.positionPriceWidth, 0);
  assert.equal(looks.backgroundColor, 'ece1e1');
  assert.equal(looks.closedDocumentTimeoutMs, 10_000);
  assert.equal(looks.positionDiscountLabelMask, 'Скидка %(position.disc_perc[.2f])%');
  assert.equal(looks.theme, 'classic');
});

test('A body that is no object has the same looks as an empty one', () => {
  for (const body of [null, undefined, 7, 'text', []]) assert.deepEqual(looksOf(body), looksOf({}));
});

test('A value that makes no sense is replaced by the default', () => {
  const nonsense = {
    'View.Style:receiptWidth': 'wide',
    'View.Style:headerFontSize': 0,
    'View.Style:elementsMargin': -5,
    'View.Style:backgroundColor': 'red; background: url(x)',
    'View.Style:headerFontType': null,
    'View.Style:showImages': 'yes',
    'View.Style:displayType': 9,
    'View.Logic:closedDocumentTimeout': {},
  };
  assert.deepEqual(looksOf(nonsense), looksOf({}));
});

test('Zero is a size, but not one of a text', () => {
  const looks = looksOf({ 'View.Style:elementsMargin': 0, 'View.Style:positionFontSize': 0 });
  assert.equal(looks.elementsMargin, 0);
  assert.equal(looks.positionFontSize, 14);
});

test('A number may be written as text, and a colour with a sharp sign and capitals', () => {
  const looks = looksOf({ 'View.Style:headerHeight': '64', 'View.Style:backgroundColor': '#AABBCC' });
  assert.equal(looks.headerHeight, 64);
  assert.equal(looks.backgroundColor, 'aabbcc');
});

test('Lines are counted whole', () => {
  assert.equal(looksOf({ 'View.Style:positionWrapLineCount': 2.9 }).positionWrapLineCount, 2);
  assert.equal(looksOf({ 'View.Style:positionWrapLineCount': 0.5 }).positionWrapLineCount, 1);
  assert.equal(looksOf({ 'View.Style:displayType': 3.5 }).displayType, 3);
});

test('The settings of the touch interface count only with it', () => {
  const values = { 'View.Style:headerHeight': 50, 'View.QmlStyle:headerHeight': 70, 'View.QmlStyle:displayType': 3, 'theme:name': 'dark' };
  const classic = looksOf(values);
  assert.deepEqual([classic.headerHeight, classic.displayType, classic.theme], [50, 0, 'classic']);
  const touch = looksOf({ ...values, 'View.Interface:touchng': true });
  assert.deepEqual([touch.headerHeight, touch.displayType, touch.theme], [70, 3, 'dark']);
});

test('What the touch interface does not set itself it takes from the common style', () => {
  const looks = looksOf({ 'View.Interface:touchng': true, 'View.Style:headerHeight': 50, 'View.QmlStyle:headerHeight': 'high' });
  assert.equal(looks.headerHeight, 50);
  assert.deepEqual([looks.advertisingWidth, looks.advertisingHeight], [560, 256]);
});

test('Custom properties are named after the settings and carry their units', () => {
  const properties = customProperties(looksOf({ 'View.Style:headerFontBold': true, 'View.Style:positionWrapLineCount': 3 }));
  assert.equal(properties['--receipt-width'], '500px');
  assert.equal(properties['--header-font-bold'], '700');
  assert.equal(properties['--position-font-bold'], '400');
  assert.equal(properties['--position-wrap-line-count'], '3');
  assert.equal(properties['--background-color'], '#ece1e1');
});

test('The name of a font cannot end the declaration it stands in', () => {
  const properties = customProperties(looksOf({ 'View.Style:headerFontType': 'A"; color: red; "\\' }));
  assert.match(properties['--header-font-type'], /^"[^"\\]*", "/);
});

test('Faint default colours are written down such as can be read', () => {
  const properties = customProperties(looksOf({}));
  assert.notEqual(properties['--additional-font-color'], '#988787');
  assert.equal(properties['--position-discount-additional-font-color'], '#d61821');
});
