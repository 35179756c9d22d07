// A receipt as the screen needs it, whatever the message holds.
import { isObject, numberOf, objectsOf, textOf } from '../common/values.js';

/**
 * @param {any} body that of an `UpdateDocument`
 * @returns the receipt, null if there is none
 */
export function receiptOf(body) {
  if (!isObject(body) || Object.keys(body).length === 0) return null;
  const payments = objectsOf(body.payments)
    .map((payment) => ({ kind: textOf(payment.kind), amount: numberOf(payment.amount) }));
  return {
    number: textOf(body.number),
    isPaid: body.state === 'paid',
    positions: objectsOf(body.positions),
    discountSum: numberOf(body.discountSum),
    total: numberOf(body.total),
    payments,
    paid: payments.reduce((sum, { amount }) => sum + amount, 0),
    change: numberOf(body.change),
  };
}

/** How many goods a buyer would count: pieces one by one, anything weighed once. */
export function goodsCount({ positions }) {
  return positions.reduce((count, { quantity }) => {
    const pieces = numberOf(quantity, 1);
    return count + (Number.isInteger(pieces) ? pieces : 1);
  }, 0);
}

/** The index of the line that changed last, -1 without any: the last one that differs from `before`. */
export function newestLine(before, positions) {
  const last = positions.length - 1;
  if (before === null || before.length !== positions.length) return last;
  const changed = positions.findLastIndex((position, at) => JSON.stringify(position) !== JSON.stringify(before[at]));
  return changed < 0 ? last : changed;
}
