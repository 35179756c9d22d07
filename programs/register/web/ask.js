// The modal dialogs in which the cashier is asked for something.

/**
 * Makes a dialog of the page answer.
 *
 * @param {HTMLDialogElement} dialog with a form, a button to cancel and a line for what is wrong
 * @param {() => string | undefined | Promise<string | undefined>} accept called when the form is
 *   sent; returns what is wrong, and closes the dialog if nothing is
 */
export function makeAsk(dialog, accept) {
  const form = dialog.querySelector('form');
  const wrong = dialog.querySelector('.wrong');
  let isBusy = false;

  /** Does one thing at a time: what is pressed while a command runs is not meant twice. */
  async function attempt(action, ends = true) {
    if (isBusy) return;
    isBusy = true;
    try {
      const problem = await action();
      wrong.textContent = problem ?? '';
      if (problem === undefined && ends) dialog.close();
    } finally {
      isBusy = false;
    }
  }

  form.addEventListener('submit', (event) => {
    event.preventDefault();
    attempt(accept);
  });
  form.addEventListener('input', () => { wrong.textContent = ''; });
  dialog.querySelector('.cancel').addEventListener('click', () => dialog.close());

  return {
    open() {
      wrong.textContent = '';
      if (!dialog.open) dialog.showModal();
    },
    /** For the other buttons: does what may return a problem, as `accept`, and closes the dialog
        unless there is one or it does not end the dialog. */
    attempt,
  };
}
