// Questions that interrupt: for a user, and whether a method is to run.
import { el } from './console.mjs';
import { t } from './texts.mjs';

/** Shows a form as a modal dialog until it is submitted or closed; returns the value of the button that did it. */
function ask(title, content, { canCancel }) {
    const form = el('form', { method: 'dialog' }, el('h2', { id: 'dialog-title' }, title), ...content);
    const dialog = el('dialog', { 'aria-labelledby': 'dialog-title' }, form);
    dialog.addEventListener('cancel', (event) => canCancel || event.preventDefault());
    document.body.append(dialog);
    dialog.showModal();
    return new Promise((resolve) => {
        dialog.addEventListener('close', () => {
            dialog.remove();
            resolve(dialog.returnValue);
        });
    });
}

/** Whether the person wants a method to run, of which title and help are told. */
export async function confirmed(title, help) {
    const buttons = el('div', { class: 'buttons' }, el('button', { value: '' }, t('cancel')),
        el('button', { value: 'run', class: 'main' }, t('run')));
    return await ask(title, [el('p', {}, help), buttons], { canCancel: true }) === 'run';
}

/** Asks for user and password; `refused` is the user that the server refused, or null. */
export async function askForUser(refused) {
    const entry = (id, attributes) => el('input', { id, required: true, ...attributes });
    const user = entry('user', { autocomplete: 'username', value: refused ?? '', autofocus: refused === null });
    const password = entry('password',
        { type: 'password', autocomplete: 'current-password', autofocus: refused !== null });
    await ask(t('signIn'), [
        el('p', { class: 'help' }, t('signInHelp')),
        refused === null ? null : el('p', { class: 'note refusal', role: 'alert' }, t('signInWrong')),
        el('label', { for: 'user' }, t('user')), user,
        el('label', { for: 'password' }, t('password')), password,
        el('div', { class: 'buttons' }, el('button', { class: 'main' }, t('signIn'))),
    ].filter(Boolean), { canCancel: false });
    return { user: user.value, password: password.value };
}
