// What the advertising area shows without an advertisement: the shop's logo, a greeting and the time.

const clock = new Intl.DateTimeFormat('ru-RU', { hour: '2-digit', minute: '2-digit' });
const date = new Intl.DateTimeFormat('ru-RU', { weekday: 'long', day: 'numeric', month: 'long' });

/** Draws the greeting, and the logo that also stays in the corner of an advertisement. */
export function welcomeView() {
  const root = document.querySelector('#advertising');
  const part = (selector) => root.querySelector(selector);
  const logos = [...root.querySelectorAll('.logo')];
  for (const logo of logos) logo.onerror = () => { logo.hidden = true; };
  let shownLooks = null;

  function drawLogo(looks) {
    for (const logo of logos) {
      logo.hidden = looks.appLogoPath === '';
      if (logo.hidden) logo.removeAttribute('src');
      else logo.src = `/look/logo?n=${looks.n}`;
    }
  }

  const write = (element, text) => { if (element.textContent !== text) element.textContent = text; };

  return ({ state: { looks }, scene, now }) => {
    if (looks !== shownLooks) drawLogo(looks);
    shownLooks = looks;
    write(part('.greeting'), scene === 'waiting' ? 'Ожидание кассы' : 'Добро пожаловать!');
    write(part('time'), clock.format(now));
    part('time').dateTime = part('time').textContent;
    write(part('.date'), date.format(now));
  };
}
