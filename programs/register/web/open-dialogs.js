// What the customer is being shown and the cashier can scroll or close.
import { byId, make } from '/common/dom.js';

const names = { qr: 'QR-код', prices: 'Прайс-лист' };
const keys = { 'Alt+ArrowUp': 'Alt ↑', 'Alt+ArrowDown': 'Alt ↓', Escape: 'Esc' };

/** @param {(command: object) => void} run */
export function createOpenDialogs(run) {
  const place = byId('dialogs');
  let shown = '';

  function button(label, key, command) {
    return make('button', { type: 'button', dataset: key ? { key } : {}, onclick: () => run(command) },
      label, key ? make('kbd', { textContent: keys[key] }) : null);
  }

  function entry({ id, kind }, isNewest) {
    const name = names[kind] ?? String(kind);
    const scrolls = kind === 'prices' ? [
      button('Вверх', 'Alt+ArrowUp', { do: 'scroll', to: 'up' }),
      button('Вниз', 'Alt+ArrowDown', { do: 'scroll', to: 'down' }),
    ] : [];
    return make('li', {}, make('div', { '@role': 'group', '@aria-label': name },
      make('b', { textContent: name }), ...scrolls,
      button('Закрыть', isNewest ? 'Escape' : null, { do: 'close-dialog', dialogId: id })));
  }

  return (dialogs) => {
    const wanted = JSON.stringify(dialogs);
    if (wanted === shown) return; // a button that has the focus keeps it
    shown = wanted;
    place.replaceChildren(...dialogs.map((dialog, i) => entry(dialog, i === dialogs.length - 1)));
  };
}
