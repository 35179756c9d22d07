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

  form.addEventListener('submit', async (event) => {
    event.preventDefault();
    const problem = await accept();
    wrong.textContent = problem ?? '';
    if (problem === undefined) dialog.close();
  });
  form.addEventListener('input', () => { wrong.textContent = ''; });
  dialog.querySelector('.cancel').addEventListener('click', () => dialog.close());

  return {
    open() {
      wrong.textContent = '';
      if (!dialog.open) dialog.showModal();
    },
    close: () => dialog.close(),
    complain(text) {
      wrong.textContent = text;
    },
  };
}
