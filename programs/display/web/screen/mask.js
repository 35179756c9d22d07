// The template of a discount's label.

const place = /%\(position\.([^)[\]]+)(?:\[\.(\d{1,2})f\])?\)/g;

/**
 * Fills in a mask: `%(position.KEY[.Nf])` stands for the position's number KEY with N decimals,
 * `%(position.KEY)` for KEY as it is.
 *
 * @param {string} mask
 * @param {Record<string, any>} position
 * @param {{fixed: (value: any, digits: number) => string, plain: (value: number) => string}} formats
 */
export function fillMask(mask, position, { fixed, plain }) {
  return mask.replace(place, (_, key, digits) => {
    const value = position[key];
    if (digits !== undefined) return fixed(value, Number(digits));
    if (typeof value === 'number') return plain(value);
    return typeof value === 'string' ? value : '';
  });
}
