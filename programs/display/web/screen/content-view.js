// A text or picture that the register puts on the second screen.
import { make } from '/common/dom.js';
import { fitText } from './fit.js';

/** Draws the content over the advertising area. */
export function contentView() {
  const root = document.querySelector('#advertising .content');
  let shown = [];

  function draw(content, box) {
    if (content.kind === 'text') {
      const text = make('p', { textContent: content.data, dataset: { clipped: '' } });
      root.replaceChildren(text);
      fitText(text, box);
    } else {
      const picture = make('img', { src: content.data, alt: 'Сообщение магазина' });
      picture.onerror = () => {
        if (picture.isConnected) root.hidden = true;
      };
      root.replaceChildren(picture);
    }
  }

  return ({ state: { content }, layout: { advertising } }) => {
    const wanted = [content, advertising?.width, advertising?.height];
    if (wanted.every((value, at) => value === shown[at])) return;
    shown = wanted;
    root.hidden = content === null || advertising === null;
    if (!root.hidden) draw(content, advertising);
  };
}
