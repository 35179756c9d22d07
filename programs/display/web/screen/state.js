// What the screen knows, put together from the messages alone, in their order of arrival.
import { isObject, numberOf, objectsOf, textOf } from '../common/values.js';
import { contentOf } from './content.js';
import { looksOf } from './looks.js';
import { receiptOf, newestLine } from './receipt.js';
import { receiptIsShown } from './scene.js';

/** Before any message. */
export const nothing = Object.freeze({
  isConfigured: false,
  looks: looksOf({}),
  receipt: null,
  pictures: new Map(),
  qr: null,
  prices: null,
  draft: null,
  content: null,
});

const scrolls = ['down', 'up', 'top', 'bottom'];

/** As many as the display itself keeps; beyond, the oldest go. */
const mostScrolls = 200;
const mostPictures = 2000;
const mostPictureBytes = 33_554_432; // 32 MiB
const pictureBytes = ([key, uri]) => key.length + uri.length + 256;

/** Whether a payment that is announced now belongs to a receipt that is paid already: the newest
    receipt overtakes it on the way. */
const comesTooLate = (state, at) => state.receipt?.isPaid === true && receiptIsShown(state, at);

/** Whether what was to be paid for the receipt before is done with. */
const endsPayments = (receipt, before) => receipt.isPaid || (before !== null && before.number !== receipt.number);

/** Whether an announced payment is for this receipt; one that does not say is for the present one. */
function isFor(draft, receipt, before) {
  if (draft.number !== null) return draft.number === receipt.number;
  return before === null || before.number === receipt.number;
}

function updateDocument(state, { body, at }) {
  const receipt = receiptOf(body);
  if (receipt === null) return { ...state, receipt: null, draft: null };
  const before = state.receipt?.number === receipt.number ? state.receipt : null;
  const draftStays = state.draft !== null && !receipt.isPaid && isFor(state.draft, receipt, state.receipt);
  return {
    ...state,
    receipt: { ...receipt, at: numberOf(at), newest: newestLine(before?.positions ?? null, receipt.positions) },
    qr: endsPayments(receipt, state.receipt) ? null : state.qr,
    draft: draftStays ? state.draft : null,
  };
}

function qrPayment(state, { n, body, at }) {
  if (body.close === true) return { ...state, qr: null };
  if (comesTooLate(state, at)) return state;
  const timeoutMs = Math.max(0, numberOf(body.timeout)) * 1000;
  return {
    ...state,
    qr: { n, text: textOf(body.qrCode), amount: numberOf(body.amount), timeoutMs, at: numberOf(at) },
  };
}

function priceList(state, { n, body }) {
  if (body.close === true) return { ...state, prices: null };
  if ('data' in body)
    return {
      ...state,
      prices: {
        n,
        title: textOf(body.title),
        rows: objectsOf(body.data),
        columns: Math.max(1, Math.trunc(numberOf(body.columns, 1))),
        scrolls: [],
      },
    };
  if (state.prices === null || !scrolls.includes(body.scroll)) return state;
  return { ...state, prices: { ...state.prices, scrolls: [...state.prices.scrolls, body.scroll].slice(-mostScrolls) } };
}

/** Lets the oldest of these pictures go, which are in the order of their arrival. */
function forgetOldest(pictures) {
  let bytes = 0;
  for (const each of pictures) bytes += pictureBytes(each);
  for (const each of pictures) {
    if (bytes <= mostPictureBytes && pictures.size <= mostPictures) return;
    bytes -= pictureBytes(each);
    pictures.delete(each[0]);
  }
}

function imageData(state, { body }) {
  const id = isObject(body.id) ? body.id : {};
  const key = `${id.type}:${id.value}`;
  const pictures = new Map(state.pictures);
  pictures.delete(key); // what comes again is the newest
  pictures.set(key, textOf(body.uri));
  forgetOldest(pictures);
  return { ...state, pictures };
}

function paymentDraft(state, { body, at }) {
  const draft = {
    number: 'number' in body ? textOf(body.number) : null,
    kind: textOf(body.kind),
    amount: numberOf(body.amount, numberOf(body.total)),
  };
  const isEmpty = Object.keys(body).length === 0;
  const isForAnother = state.receipt !== null && !isFor(draft, state.receipt, state.receipt);
  const goes = isEmpty || isForAnother || comesTooLate(state, at);
  return { ...state, draft: goes ? null : draft };
}

const readers = {
  Configure: (_, { n, body }) => ({ ...nothing, isConfigured: true, looks: looksOf(body, n) }),
  UpdateDocument: updateDocument,
  QrPayment: qrPayment,
  PriceList: priceList,
  ImageData: imageData,
  Content: (state, { n, body }) => ({ ...state, content: contentOf(body, n) }),
  PaymentDraft: paymentDraft,
};

/** The state after a message. */
export function apply(state, message) {
  if (!isObject(message) || !Object.hasOwn(readers, message.type)) return state;
  const body = isObject(message.body) ? message.body : {};
  return readers[message.type](state, { ...message, body });
}

/** The state after these messages and no others. */
export const applyAll = (messages) => objectsOf(messages).reduce(apply, nothing);
