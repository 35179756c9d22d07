// Keys for what can be clicked: an element names its key in data-key.

const isShown = (element) => element.checkVisibility();
const isText = (element) => element.matches?.('input:not([type=radio]), textarea') ?? false;

/** Keys that a field needs for itself while it holds something. */
const editing = new Set(['Delete', 'Escape']);

/** Keys that mean more of the same while they are held: those that scroll and count. */
const isRepeated = (key) => /Arrow(Up|Down)$/.test(key);

function nameOf(event) {
  return `${event.altKey ? 'Alt+' : ''}${event.ctrlKey || event.metaKey ? 'Ctrl+' : ''}${event.key}`;
}

function use(element) {
  if (isText(element)) {
    element.focus();
    element.select();
  } else {
    element.click();
  }
}

/**
 * Listens for the keys of the page, or of the modal dialog that is open. Letters and digits that
 * are typed nowhere go to `field`: a scanner types wherever the focus is.
 *
 * @param {HTMLInputElement} field
 */
export function listenForKeys(field) {
  document.addEventListener('keydown', (event) => {
    const dialog = document.querySelector('dialog:modal');
    const key = nameOf(event);
    if (isText(event.target) && event.target.value !== '' && editing.has(key)) return;
    const found = [...(dialog ?? document).querySelectorAll('[data-key]')]
      .filter((element) => element.dataset.key === key && isShown(element) && !element.disabled)
      .at(-1);
    if (found) {
      event.preventDefault();
      if (!event.repeat || isRepeated(key)) use(found);
    } else if (!dialog && !isText(event.target) && /^[\p{L}\p{N}]$/u.test(key)) {
      field.focus();
    }
  });
}
