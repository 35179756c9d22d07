// Wires the screen: messages make the state, and every view draws its part of it.
import { follow } from '/common/live.js';
import { numberOf } from '/common/values.js';
import { advertisingView } from './advertising-view.js';
import { connectionView } from './connection-view.js';
import { contentView } from './content-view.js';
import { draftView } from './draft-view.js';
import { layoutOf } from './layout.js';
import { pricesView } from './prices-view.js';
import { qrView } from './qr-view.js';
import { receiptView } from './receipt-view.js';
import { sceneOf } from './scene.js';
import { stageView } from './stage-view.js';
import { apply, applyAll, nothing } from './state.js';
import { welcomeView } from './welcome-view.js';

/** How often what depends on the time is looked at. */
const tickMs = 250;

const views = [stageView(), receiptView(), advertisingView(), welcomeView(), contentView(), draftView(), qrView(), pricesView()];

let state = nothing;
let ad = null;
let clockOffsetMs = 0;
let hasState = false;

/** A view that fails leaves the others to draw their parts. */
function drawPart(view, scenery) {
  try {
    view(scenery);
  } catch (error) {
    console.error(error);
  }
}

function draw() {
  if (!hasState) return;
  const now = Date.now() + clockOffsetMs;
  const scene = sceneOf(state, now);
  const layout = layoutOf({ width: innerWidth, height: innerHeight }, state.looks, scene === 'receipt');
  for (const view of views) drawPart(view, { state, ad, now, scene, layout });
}

follow('/events', {
  state(everything) {
    clockOffsetMs = numberOf(everything.now, Date.now()) - Date.now();
    state = applyAll(everything.messages);
    ad = everything.ad;
    hasState = true;
    draw();
  },
  message(message) {
    state = apply(state, message);
    draw();
  },
  ad(present) {
    ad = present;
    draw();
  },
}, connectionView());

setInterval(draw, tickMs);
addEventListener('resize', draw);
