// Finds text that does not fit into its box.

/** Descriptions of the elements whose text is cut off by their own box or leaves the window; an
    element that ends in an ellipsis by design carries the attribute data-clipped. */
export function overflowingTexts(page) {
  return page.evaluate(() => {
    const hasText = (element) => [...element.childNodes].some(
      (node) => node.nodeType === Node.TEXT_NODE && node.textContent.trim() !== '',
    );
    const isShown = (element) => element.checkVisibility({ checkOpacity: true, checkVisibilityCSS: true });
    const isInScroller = (element) => {
      for (let at = element.parentElement; at; at = at.parentElement)
        if (/auto|scroll|hidden/.test(getComputedStyle(at).overflowY) && at.scrollHeight > at.clientHeight + 1) return true;
      return false;
    };
    return [...document.body.querySelectorAll('*')]
      .filter((element) => hasText(element) && isShown(element) && !element.closest('[data-clipped]'))
      .filter((element) => {
        const box = element.getBoundingClientRect();
        const cut = element.scrollWidth > element.clientWidth + 1 && element.clientWidth > 0
          && getComputedStyle(element).overflowX !== 'visible';
        const wide = box.left < -1 || box.right > innerWidth + 1;
        const tall = !isInScroller(element) && (box.top < -1 || box.bottom > innerHeight + 1);
        return cut || wide || tall;
      })
      .map((element) => `<${element.tagName.toLowerCase()} class="${element.className}"> ${element.textContent.trim().slice(0, 60)}`);
  });
}
