// The push connection of a page: server-sent events, which the browser reconnects by itself.

const retryMs = 1000;

/**
 * Follows the events at `url` for as long as the page is visible: a hidden one holds no connection,
 * since a browser grants only six to one server.
 *
 * @param {string} url
 * @param {Record<string, (data: any) => void>} handlers by the name of the event, given its JSON
 * @param {(connected: boolean) => void} [onConnection] told when the connection comes and goes
 */
export function follow(url, handlers, onConnection = () => {}) {
  let source = null;
  let retry = 0;

  function connect() {
    source = new EventSource(url);
    source.onopen = () => onConnection(true);
    source.onerror = () => {
      onConnection(false);
      if (source?.readyState === EventSource.CLOSED) { // refused: the browser has given up
        disconnect();
        retry = setTimeout(connect, retryMs);
      }
    };
    for (const [name, handle] of Object.entries(handlers))
      source.addEventListener(name, (event) => handle(JSON.parse(event.data)));
  }

  function disconnect() {
    clearTimeout(retry);
    source?.close();
    source = null;
  }

  function update() {
    disconnect();
    if (!document.hidden) connect();
  }

  document.addEventListener('visibilitychange', update);
  window.addEventListener('pagehide', disconnect);
  update();
}
