// The kinds of messages that the plug-in sends.

/** By urgency: the plug-in posts the first of these that waits. */
export const messageTypes = [
  { name: 'Configure', path: '/configure' },
  { name: 'UpdateDocument', path: '/updateDocument' },
  { name: 'QrPayment', path: '/qrPayment' },
  { name: 'ShowAd', path: '/showAD' },
  { name: 'PriceList', path: '/priceList' },
  { name: 'ImageData', path: '/image' },
  { name: 'Content', path: '/content' },
  { name: 'PaymentDraft', path: '/paymentdraft' },
];

/** Its asking tells that the register has started: nothing of before still waits. */
export const firstOfAll = 'Configure';

/** All of these wait, in their order; of every other type only the newest does. */
export const waitsInOrder = (type) => type === 'ImageData';

/** The place of a type in the order of urgency; an unknown one comes last. */
export function urgency(type) {
  const place = messageTypes.findIndex(({ name }) => name === type);
  return place < 0 ? messageTypes.length : place;
}
