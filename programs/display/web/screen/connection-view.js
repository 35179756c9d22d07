// The mark that tells that the connection to the display is lost.

/** A reconnection takes about a second: only what lasts longer is worth a word. */
const patienceMs = 3000;

/** A function to be told when the connection comes and goes. */
export function connectionView() {
  const mark = document.querySelector('#connection');
  let timer = 0;
  return (isConnected) => {
    if (isConnected) {
      clearTimeout(timer);
      timer = 0;
      mark.textContent = '';
    } else if (timer === 0) {
      timer = setTimeout(() => { mark.textContent = 'Нет связи'; }, patienceMs);
    }
  };
}
