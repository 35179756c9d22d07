// The stage: the looks, the scale, and the boxes of the parts.
import { byId } from '/common/dom.js';
import { customProperties } from './properties.js';

const pixels = (value) => `${value}px`;

function place(element, box) {
  if (!box) return;
  for (const [property, value] of [['left', box.x], ['top', box.y], ['width', box.width], ['height', box.height]])
    element.style.setProperty(property, pixels(value));
}

/** Draws nothing of its own; what it sets, all other views build on. */
export function stageView() {
  const stage = document.querySelector('#stage');
  const parts = ['receipt', 'advertising', 'draft', 'qr', 'prices']
    .map((id) => [id, byId(id)]);
  let shownLooks = null;

  function dress(looks) {
    for (const [name, value] of Object.entries(customProperties(looks)))
      document.documentElement.style.setProperty(name, value);
    document.documentElement.dataset.theme = looks.theme;
    const hasBackground = looks.backgroundImagePath !== '';
    stage.classList.toggle('has-background', hasBackground);
    stage.style.backgroundImage = hasBackground ? `url("/look/background?n=${looks.n}")` : 'none';
  }

  return ({ state: { looks }, scene, layout }) => {
    if (looks !== shownLooks) dress(looks);
    shownLooks = looks;
    stage.dataset.scene = scene;
    stage.style.width = pixels(layout.stage.width);
    stage.style.height = pixels(layout.stage.height);
    stage.style.transform = `scale(${layout.scale})`;
    const whole = { x: 0, y: 0, ...layout.stage };
    const boxes = { ...layout, draft: layout.panel, qr: layout.code.box, prices: whole };
    for (const [id, element] of parts) place(element, boxes[id]);
  };
}
