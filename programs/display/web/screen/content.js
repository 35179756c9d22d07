// What the register puts on the second screen.
import { textOf } from '../common/values.js';

/** Whether a page under this policy can show it: its own pictures and those within the address. */
const isPicture = (address) => /^data:image\//i.test(address) || /^\/(?![/\\])/.test(address);

/**
 * @param {Record<string, any>} body that of a `Content`
 * @param {number} n the message's number
 * @returns what is to be shown, null for nothing and for what is neither text nor picture
 */
export function contentOf(body, n) {
  const data = textOf(body.data).trim();
  if (body.hide === true || data === '') return null;
  if (body.type === 'text') return { n, kind: 'text', data };
  return body.type === 'image' && isPicture(data) ? { n, kind: 'picture', data } : null;
}
