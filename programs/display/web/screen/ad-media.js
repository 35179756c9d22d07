// Pictures and films that are ready to be seen before they are put on the screen.
import { make } from '/common/dom.js';

/** As long as the style sheet takes to fade. */
const fadeMs = 250;

/** A picture that is loaded and decoded; fails if it is none. */
export async function decodedPicture(address) {
  const picture = make('img', { src: address, alt: 'Реклама' });
  await picture.decode();
  return picture;
}

/** A still picture with its own colours around it. */
export async function framedPicture(address) {
  const picture = await decodedPicture(address);
  return medium(make('img', { className: 'backdrop', src: address, alt: '' }), picture);
}

/** A film that can play, silently and again and again; fails if it cannot be decoded. What breaks later,
    while it plays, is told to `onBroken`, once. */
export async function playingFilm(address, onBroken) {
  const answer = await fetch(address);
  if (!answer.ok) throw new Error(`the film is not there: ${answer.status}`);
  const film = make('video', {
    muted: true, loop: true, autoplay: true, playsInline: true, '@aria-label': 'Реклама',
    src: URL.createObjectURL(await answer.blob()),
  });
  const problem = () => new Error(`the film cannot be played: ${film.error?.message ?? ''}`);
  try {
    await new Promise((ready, fail) => {
      film.onloadeddata = ready;
      film.onerror = () => fail(problem());
    });
    film.addEventListener('error', () => onBroken(problem()), { once: true });
  } catch (error) {
    release(film);
    throw error;
  }
  return medium(film);
}

/** What a player shows at a time. */
export const medium = (...parts) => make('div', { className: 'medium' }, ...parts);

/** Lets go of what a film keeps in memory. */
export function release(element) {
  element.remove();
  const film = element.matches('video') ? element : element.querySelector('video');
  if (film) URL.revokeObjectURL(film.src);
}

/** Puts a medium, or none, in the place of what a player shows. */
export function crossFade(player, next) {
  const before = [...player.children];
  if (next !== null) player.append(next);
  for (const old of before) {
    old.classList.add('is-leaving');
    setTimeout(() => release(old), fadeMs);
  }
}
