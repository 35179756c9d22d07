// The advertisement: a picture, a film or a live stream, as far as the display has fetched it.
import { isObject } from '/common/values.js';
import { crossFade, decodedPicture, framedPicture, medium, playingFilm, release } from './ad-media.js';

const isShown = (ad) => isObject(ad) && ['picture', 'film', 'stream'].includes(ad.kind);
const address = ({ n, frame }) => `/ad?n=${n}&frame=${frame ?? 0}`;

/** The display then tells the register, which takes the advertisement out of its round. */
function reportFailure(n, reason) {
  return fetch('/ad-failed', { method: 'POST', body: JSON.stringify({ n, reason }) }).catch(() => {
    // Without a display there is nobody to tell.
  });
}

/** Draws the advertisement; one that is still loading leaves the earlier one where it is. */
export function advertisingView() {
  const root = document.querySelector('#advertising');
  const player = root.querySelector('.player');
  let wanted = { n: null };
  let presented = null;
  let shownFrame = null;
  let isLoading = false;

  function stop() {
    presented = null;
    crossFade(player, null);
    root.classList.remove('has-ad');
  }

  function present(n, next) {
    presented = n;
    crossFade(player, next);
    root.classList.add('has-ad');
  }

  /** Shows the newest picture of a stream; those that come while one is loading are left out. */
  async function nextFrame() {
    if (isLoading) return;
    isLoading = true;
    while (wanted.kind === 'stream' && address(wanted) !== shownFrame) {
      const { n } = wanted;
      shownFrame = address(wanted);
      const picture = await decodedPicture(shownFrame).catch(() => null);
      if (picture === null || n !== wanted.n) continue;
      if (presented !== n) present(n, medium(picture));
      else player.lastElementChild.replaceChildren(picture);
    }
    isLoading = false;
  }

  async function begin(ad) {
    const load = ad.kind === 'film' ? playingFilm : framedPicture;
    const fail = (error) => {
      if (wanted.n === ad.n) reportFailure(ad.n, String(error.message ?? error));
    };
    try {
      const next = await load(address(ad), fail);
      if (wanted.n === ad.n) present(ad.n, next);
      else release(next);
    } catch (error) {
      fail(error);
    }
  }

  return ({ ad, layout }) => {
    root.hidden = layout.advertising === null;
    if (!isShown(ad)) {
      const isOver = !isObject(ad) || ad.kind === 'none';
      if (isOver && wanted.n !== null) stop();
      if (isOver) wanted = { n: null };
      return;
    }
    const isNew = ad.n !== wanted.n;
    wanted = ad;
    if (ad.kind === 'stream') nextFrame();
    else if (isNew) begin(ad);
  };
}
