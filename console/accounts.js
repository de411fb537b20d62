// The page Accounts: who may log in, and what each may do.
import { ask, awake, bdi, button, bytesOf, change, el, encodeBytes, exactName, has, newId, read, readBytes,
  say, textOf, toBase64, words } from './core.js';
import { revealOf } from './form.js';

/** @typedef {{ name: string, group: string }} Account name: bytes */

/** @returns {Promise<Account[]>} */
async function listAccounts() {
  const { users } = await read('user_list.cgi');
  let raw = '';
  if (users.some((/** @type {Account} */ { name }) => name.includes('\ufffd'))) raw = await readBytes('/cgi-bin/user_list.cgi');
  const names = raw.split('\n').slice(1).map((line) => line.slice(0, line.lastIndexOf('=')));
  return users.map((/** @type {Account} */ { name, group }, /** @type {number} */ i) =>
    ({ name: exactName(name, names[i]), group }));
}

/** @param {string} name bytes @param {Record<string, string>} [more] */
const modify = (name, more = {}) =>
  change('user_mod.cgi', `name=${encodeBytes(name)}${Object.entries(more).map(([k, v]) =>
    `&${k}=${encodeURIComponent(v)}`).join('')}`);

const passwordField = () => el('input', { type: 'password', name: 'password', autocomplete: 'new-password', maxLength: 30 });

/** @param {HTMLElement} page @param {AbortSignal} signal */
export async function show(page, signal) {
  const id = newId();
  const box = el('div', {}, 'Loading…');
  const section = el('section', { class: 'card', 'data-endpoint': 'user_list.cgi', 'aria-labelledby': id },
    el('h2', { id }, 'Who may log in'), box, el('p', { class: 'hint' },
      'The camera gives all ordinary accounts the same privileges; the administrator may do everything.'));
  const load = async () => {
    const privileges = has('group_list.cgi') ? (await read('group_list.cgi', { name: 'Users' })).privilege : [];
    box.replaceChildren(table(await listAccounts(), privileges, load));
    section.dataset.state = 'ready';
  };
  page.append(section, ...(has('user_mod.cgi') ? [newAccount(load)] : []));
  await awake(signal);
  await load();
}

/** @param {Account[]} accounts @param {string[]} privileges @param {() => Promise<void>} load */
function table(accounts, privileges, load) {
  const head = ['Account', ...privileges.map((word) => kPrivileges[word] ?? words(word)), 'Actions'];
  const box = (/** @type {string} */ what) =>
    el('td', { class: 'check' }, el('input', { type: 'checkbox', checked: true, disabled: true, 'aria-label': what }));
  return el('div', { class: 'scroll', tabIndex: 0, role: 'group', 'aria-label': 'Accounts and privileges' }, el('table', {},
    el('thead', {}, el('tr', {}, ...head.map((text, i) =>
      el('th', { scope: 'col', class: i && i < head.length - 1 ? 'check' : '' }, text)))),
    el('tbody', {}, ...accounts.map((account) => el('tr', {}, el('th', { scope: 'row' }, bdi(textOf(account.name)),
      account.group === 'Administrator' && el('div', { class: 'soft' }, 'Administrator')),
    ...privileges.map((word) => box(kPrivileges[word] ?? words(word))),
    el('td', {}, el('div', { class: 'buttons tight' }, ...actions(account, load))))))));
}
/** @type {Record<string, string>} */
const kPrivileges = { ptz: 'Turn the head', pt: 'Turn the head', outputs: 'Outputs', video: 'Video', notify: 'Events' };

/** @param {Account} account @param {() => Promise<void>} load */
function actions({ name, group }, load) {
  const text = textOf(name);
  const isAdministrator = group === 'Administrator';
  const label = (/** @type {string} */ word) => el('span', {}, word, el('span', { class: 'hide' }, ' ', bdi(text)));
  const body = [el('p', {}, bdi(text))];
  // The browser has to log in again.
  const finish = async (/** @type {string} */ message) => {
    if (isAdministrator) sessionStorage.removeItem('hasPassword');
    if (isAdministrator) return location.reload();
    say(message);
    await load();
  };
  const password = button(label('Password…'), async () => {
    const field = passwordField();
    field.setAttribute('aria-label', 'New password');
    const value = await ask({ title: 'New password', body: [...body, revealOf(field)], action: 'Set password', field, send:
      (value) => modify(name, { password: toBase64(value) }) });
    if (value !== null) await finish('The password is set.');
  });
  const rename = button(label('Rename…'), async () => {
    const field = el('input', { name: 'newname', maxLength: 30, autocomplete: 'off', 'aria-label': 'New name' });
    const value = await ask({ title: 'Rename the account', body, action: 'Rename', field, accept: Boolean, send:
      (value) => modify(name, { newname: value }) });
    if (value !== null) await finish('The account is renamed.');
  });
  const remove = button(label('Delete…'), async () => {
    const send = () => change('user_del.cgi', `name=${encodeBytes(name)}`);
    if (await ask({ title: 'Delete this account?', body, action: 'Delete', danger: true, send }) === null) return;
    await finish('The account is deleted.');
  }, { class: 'danger' });
  return [password, rename, ...(isAdministrator || !has('user_del.cgi') ? [] : [remove])];
}

/** @param {() => Promise<void>} load */
function newAccount(load) {
  const [id, nameId, passwordId, errorId] = [newId(), newId(), newId(), newId()];
  const name = el('input', { id: nameId, name: 'name', maxLength: 30, autocomplete: 'off', 'aria-describedby': errorId });
  const password = passwordField();
  password.id = passwordId;
  password.setAttribute('aria-describedby', errorId);
  const error = el('p', { class: 'error', id: errorId });
  const add = button('Add account', async () => {
    for (const field of [name, password]) field.setAttribute('aria-invalid', 'false');
    error.textContent = '';
    try {
      const known = (await listAccounts()).some((account) => account.name === bytesOf(name.value));
      if (known) throw Object.assign(new Error('there is such an account already'), { parameter: 'name' });
      await modify(bytesOf(name.value), { password: toBase64(password.value) });
    } catch (refusal) {
      const { message, parameter } = /** @type {import('./core.js').Refusal} */ (refusal);
      const field = parameter === 'password' ? password : name;
      error.textContent = `${parameter === 'password' ? 'Password' : 'Name'} not accepted: ${message}`;
      field.setAttribute('aria-invalid', 'true');
      field.focus();
      return;
    }
    name.value = password.value = '';
    say('The account is added.');
    await load();
  }, { type: 'submit', class: 'primary' });
  const form = el('form', { noValidate: true }, el('label', { class: 'label', for: nameId }, 'Name'),
    el('div', { class: 'control' }, name), el('label', { class: 'label', for: passwordId }, 'Password'),
    el('div', { class: 'control' }, password, revealOf(password)), error, el('div', { class: 'buttons' }, add));
  form.addEventListener('submit', (event) => event.preventDefault());
  const section = el('section', { class: 'card', 'data-endpoint': 'user_mod.cgi', 'data-state': 'ready', 'aria-labelledby': id },
    el('h2', { id }, 'New account'), el('p', { class: 'summary' }, 'Without a password, an account cannot log in.'), form);
  return section;
}

