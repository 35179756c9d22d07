// The helper that finds cut texts finds them, and nothing else.
import { test, expect } from './support/fixtures.mjs';
import { overflowingTexts } from './support/overflow.mjs';

const styles = `<style>
  body { margin: 0; font: 20px/30px sans-serif; }
  .box { width: 200px; height: 60px; }
  .line { white-space: nowrap; }
  .hidden { overflow: hidden; } .clip { overflow: clip; } .auto { overflow: auto; }
</style>`;
const long = 'Хлеб бородинский подовый нарезной';
const many = `${long} `.repeat(6);

const cut = {
  'too wide for its own box': `<p class="box hidden line">${long}</p>`,
  'too high for its own box': `<p class="box hidden">${many}</p>`,
  'too wide for a box around it': `<div class="box hidden"><p class="line">${long}</p></div>`,
  'too high for a box around it': `<div class="box hidden"><p>${many}</p></div>`,
  'too wide for a clipped box around it': `<div class="box clip"><b class="line">${long}</b></div>`,
  'cut at its top': `<div class="box hidden"><p style="margin-top: -15px">${long}</p></div>`,
  'behind a box that does not scroll': `<div class="box hidden"><div style="height: 90px"><p style="margin: 50px 0 0">${long}</p></div></div>`,
  'in a scroller that is cut itself': `<div class="box hidden"><div class="auto" style="height: 150px"><p style="height: 300px">${long}</p></div></div>`,
  'outside the window to the right': `<p style="position: absolute; left: 1200px; width: 300px">${long}</p>`,
  'outside the window to the left': `<p style="position: absolute; left: -40px">${long}</p>`,
  'outside the window below': `<p style="position: absolute; top: 705px; margin: 0">${long}</p>`,
  'outside the window above': `<p style="position: fixed; top: -15px; margin: 0">${long}</p>`,
};

const whole = {
  'that fits': `<p class="box hidden">${long}</p>`,
  'that leaves its box and is seen': `<p class="box line">${long}</p>`,
  'that can be scrolled across': `<p class="box auto line">${long}</p>`,
  'that can be scrolled down to': `<div class="box auto"><p>${many}</p></div>`,
  'of the receipt, which scrolls by itself': `<div id="receipt"><div class="box hidden positions"><p>${many}</p></div></div>`,
  'that is cut by design': `<p class="box hidden line" data-clipped>${long}</p>`,
  'that is not shown': `<p class="box hidden line" style="visibility: hidden">${long}</p>`,
  'placed outside a box that does not hold it': `<div class="box hidden"><p style="position: absolute; top: 200px">${long}</p></div>`,
};

for (const [where, html] of Object.entries(cut))
  test(`A text ${where} is found`, async ({ page }) => {
    await page.setContent(styles + html);
    expect(await overflowingTexts(page)).toEqual([expect.stringContaining('Хлеб')]);
  });

for (const [which, html] of Object.entries(whole))
  test(`A text ${which} is not found`, async ({ page }) => {
    await page.setContent(styles + html);
    expect(await overflowingTexts(page)).toEqual([]);
  });
