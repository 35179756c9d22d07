// The inspector's page as a test uses it, and the register's part of telling what was asked for.
import { createServer } from 'node:http';
import { once } from 'node:events';

const columns = ['time', 'since', 'way', 'type', 'status', 'waited', 'answered', 'size', 'superseded', 'try'];

/** The present on the clock of the journal, which all processes of this machine share. */
export const now = () => Number(process.hrtime.bigint()) / 1e6;

/** Tells the display as the register does. */
export function ask(display, type, ms = now()) {
  return display.post('/asked', { type, monotonicMs: ms });
}

export async function openInspector(page, display) {
  await page.goto(`${display.url}/inspector`);
  await page.getByText('Connected', { exact: true }).waitFor();
  return page;
}

/** The rows of the time line, of one type if it is given. */
export function rows(page, type) {
  const all = page.locator('#rows').getByRole('row');
  return type ? all.filter({ has: page.getByRole('gridcell', { name: type, exact: true }) }) : all;
}

/** A row's cell by the name of its column, in lower case. */
export function cell(row, column) {
  return row.getByRole('gridcell').nth(columns.indexOf(column));
}

/** The chip of a type; its description tells its counts. */
export function chip(page, type) {
  return page.locator(`#filters [data-group="${type}"]`);
}

/** The journal as the display tells it to whoever comes. */
export async function journalOf(display) {
  const stop = new AbortController();
  const answer = await fetch(`${display.url}/journal`, { signal: stop.signal });
  let text = '';
  try {
    for await (const part of answer.body.pipeThrough(new TextDecoderStream())) {
      text += part;
      const event = text.match(/^event: journal\ndata: (.*)\n\n/m);
      if (event) return JSON.parse(event[1]);
    }
  } finally {
    stop.abort();
  }
  throw new Error(`no journal: ${text.slice(0, 200)}`);
}

const picture = '<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><rect width="9" height="9"/></svg>';

/** A plug-in that accepts every request and keeps its body; it also has a picture to show. */
export async function startPlugin() {
  const requests = [];
  const server = createServer(async (request, answer) => {
    if (request.method === 'GET') {
      answer.setHeader('Content-Type', 'image/svg+xml').end(picture);
      return;
    }
    let body = '';
    for await (const part of request.setEncoding('utf8')) body += part;
    requests.push(JSON.parse(body));
    answer.setHeader('Content-Type', 'application/json').end();
  });
  server.listen(0, '127.0.0.1');
  await once(server, 'listening');
  return {
    requests,
    url: `http://127.0.0.1:${server.address().port}`,
    stop: () => new Promise((done) => { server.close(done); server.closeAllConnections(); }),
  };
}
