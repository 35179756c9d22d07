// Building pages without ever reading text as HTML.

/** The element of the page with this id. */
export const byId = (id) => document.getElementById(id);

/**
 * A new element. `properties` are its own ("className", "onclick", "textContent"), those of
 * "dataset" and "style" (custom properties too) within; an attribute's name starts with "@".
 *
 * @param {string} tag
 * @param {Record<string, any>} [properties]
 * @param {...(Node | string | null)} children null stands for none
 */
export function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name === 'dataset') Object.assign(element.dataset, value);
    else if (name === 'style') for (const [key, text] of Object.entries(value)) element.style.setProperty(key, text);
    else if (name.startsWith('@')) element.setAttribute(name.slice(1), value);
    else element[name] = value;
  }
  element.append(...children.filter((child) => child !== null));
  return element;
}
