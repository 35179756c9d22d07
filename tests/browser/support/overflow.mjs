// Finds text that is cut off.

/** Descriptions of the elements whose text is cut off by a box around it or by the window, across or
    from above or below. What can be scrolled into view is not cut off; an element that ends in an
    ellipsis by design carries the attribute data-clipped. Takes a page or one of its frames. */
export function overflowingTexts(page) {
  return page.evaluate(() => {
    const slack = 1; // rounding
    const faintShare = 0.15; // of a line's height: the room for accents above it and below
    const axes = [
      { start: 'left', end: 'right', overflow: 'overflowX', content: 'scrollWidth', room: 'clientWidth', window: innerWidth },
      { start: 'top', end: 'bottom', overflow: 'overflowY', content: 'scrollHeight', room: 'clientHeight', window: innerHeight },
    ];

    /** The customer's receipt is scrolled by its script. */
    const scrolls = (element, style, { overflow, content, room }) => element[content] > element[room]
      && (/auto|scroll/.test(style[overflow]) || element.matches('#receipt .positions'));

    /** The next element outwards that can cut this one off. */
    const around = (element) => ({ fixed: null, absolute: element.offsetParent })[getComputedStyle(element).position];
    const outwards = (element) => (around(element) === undefined ? element.parentElement : around(element));

    const textsOf = (element) => [...element.childNodes]
      .filter((node) => node.nodeType === Node.TEXT_NODE && node.textContent.trim() !== '');
    const linesOf = (element) => textsOf(element).flatMap((node) => {
      const range = document.createRange();
      range.selectNodeContents(node);
      return [...range.getClientRects()];
    });

    function isCut(element, axis) {
      const lines = linesOf(element);
      if (lines.length === 0) return false;
      const faint = axis.start === 'top' ? faintShare * lines[0].height : 0;
      let start = Math.min(...lines.map((line) => line[axis.start])) + faint;
      let end = Math.max(...lines.map((line) => line[axis.end])) - faint;
      for (let at = element; at && at !== document.body; at = outwards(at)) {
        const style = getComputedStyle(at);
        if (style.display === 'inline' || style[axis.overflow] === 'visible') continue;
        const box = at.getBoundingClientRect();
        if (scrolls(at, style, axis)) [start, end] = [box[axis.start], box[axis.end]];
        else if (start < box[axis.start] - slack || end > box[axis.end] + slack) return true;
      }
      return start < -slack || end > axis.window + slack;
    }

    const isShown = (element) => element.checkVisibility({ checkOpacity: true, checkVisibilityCSS: true });
    return [...document.body.querySelectorAll('*')]
      .filter((element) => isShown(element) && !element.closest('[data-clipped]'))
      .filter((element) => axes.some((axis) => isCut(element, axis)))
      .map((element) => `<${element.tagName.toLowerCase()} class="${element.className}"> ${element.textContent.trim().slice(0, 60)}`);
  });
}
