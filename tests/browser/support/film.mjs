// Films for the tests of advertisements.

/** A film of a second of a moving square, as this browser records it: the recording follows the clock,
    and goes on until a busy machine has drawn enough to be a film. */
export async function recordFilm(context) {
  const page = await context.newPage();
  const base64 = await page.evaluate(async () => {
    const canvas = Object.assign(document.createElement('canvas'), { width: 64, height: 36 });
    const drawing = canvas.getContext('2d');
    const recorder = new MediaRecorder(canvas.captureStream(20), { mimeType: 'video/webm; codecs=vp8' });
    const parts = [];
    recorder.ondataavailable = ({ data }) => parts.push(data);
    const stopped = new Promise((done) => { recorder.onstop = done; });
    recorder.start();
    await new Promise((done) => {
      let first = null;
      let frames = 0;
      const draw = (now) => {
        first ??= now;
        drawing.fillStyle = `hsl(${now} 80% 50%)`;
        drawing.fillRect(0, 0, 64, 36);
        if (now - first < 1000 || ++frames < 10) requestAnimationFrame(draw);
        else done();
      };
      requestAnimationFrame(draw);
    });
    recorder.stop();
    await stopped;
    const bytes = new Uint8Array(await new Blob(parts).arrayBuffer());
    return btoa(Array.from(bytes, (byte) => String.fromCharCode(byte)).join(''));
  });
  await page.close();
  return Buffer.from(base64, 'base64');
}
