// Copying to the clipboard.

/** Whether it could be copied. Browsers offer the clipboard to secure pages only; the older way
    copies what is selected. */
export async function copyText(text) {
  try {
    await navigator.clipboard.writeText(text);
    return true;
  } catch {
    return copySelected(text);
  }
}

function copySelected(text) {
  const focused = document.activeElement;
  const field = document.createElement('textarea');
  field.value = text;
  field.readOnly = true;
  field.className = 'unseen';
  document.body.append(field);
  field.select();
  const copied = document.execCommand('copy');
  field.remove();
  focused?.focus();
  return copied;
}
