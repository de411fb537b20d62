// The frame: navigation, pages, the state of the connection, and the first password.
import { Refusal, bus, button, camera, change, el, has, link, loadDescription, newId, read, report, request,
  sleep, toBase64 } from './core.js';
import { card, kindOf, revealOf } from './form.js';

/** @typedef {(page: HTMLElement, signal: AbortSignal, rest: string) => unknown} Show */
/** @typedef {{ hash: string, title: string, show: Show, group?: string }} Page */

const byId = (/** @type {string} */ id) => /** @type {HTMLElement} */ (document.getElementById(id));
/** @type {Page[]} */
let pages = [];
let ended = new AbortController();

/** The cards of one subsystem. @param {string} tag @returns {Show} */
const settingsPage = (tag) => (page, signal) => {
  const cards = [...camera.endpoints.values()].filter((endpoint) => endpoint.tag === tag && has(endpoint.name));
  for (const kind of ['Settings', 'Commands', 'Information']) {
    const those = cards.filter((endpoint) => kindOf(endpoint) === kind);
    if (!those.length) continue;
    page.append(el('h2', {}, kind), el('div', { class: 'cards' }, ...those.map((e) => card(e, { signal }))));
  }
};

/** @param {string} file @returns {Show} */
const from = (file) => async (page, signal, rest) => {
  const module = await import(`./${file}.js`);
  if (!signal.aborted) await module.show(page, signal, rest);
};

function listPages() {
  const settings = camera.tags.filter(({ name }) =>
    [...camera.endpoints.values()].some((endpoint) => endpoint.tag === name && has(endpoint.name)));
  pages = [
    { hash: '#/live', title: 'Live', show: from('live') },
    { hash: '#/events', title: 'Events', show: from('events') },
    ...(has('sdcard_list.cgi') ? [{ hash: '#/card', title: 'Card', show: from('files') }] : []),
    ...(has('user_list.cgi')
      ? [{ hash: '#/accounts', title: 'Accounts', show: from('accounts') }] : []),
    { hash: '#/system', title: 'System', show: from('system') },
    { hash: '#/api', title: 'API', show: from('api') },
    ...settings.map(({ name }) => ({ hash: `#/settings/${encodeURIComponent(name)}`, title: name,
      show: settingsPage(name), group: 'Settings' })),
  ];
  const links = (/** @type {Page[]} */ list) => el('ul', {}, ...list.map(({ hash, title }) =>
    el('li', {}, el('a', { href: hash }, title))));
  const id = newId();
  const list = links(pages.filter(({ group }) => group));
  list.setAttribute('aria-labelledby', id);
  byId('nav').replaceChildren(links(pages.filter(({ group }) => !group)), el('p', { id, class: 'group' }, 'Settings'),
    list);
}

/** @param {boolean} [isFirst] */
function route(isFirst = false) {
  const hash = location.hash || '#/live';
  const page = pages.find((p) => hash === p.hash || hash.startsWith(`${p.hash}/`)) ??
    { hash: '', title: 'Not here', show: (/** @type {HTMLElement} */ at) =>
      at.append(el('p', {}, 'This camera has no such page, or your account may not open it.')) };
  ended.abort();
  ended = new AbortController();
  const heading = el('h1', { tabIndex: -1 }, page.title);
  byId('page').replaceChildren(heading);
  byId('page').dataset.page = page.hash;
  document.title = `${page.title} · ${byId('camera').textContent}`;
  for (const anchor of byId('nav').querySelectorAll('a')) {
    if (anchor.hash === page.hash) anchor.setAttribute('aria-current', 'page');
    else anchor.removeAttribute('aria-current');
  }
  toggleMenu(false);
  if (!isFirst) {
    scrollTo(0, 0);
    heading.focus();
  }
  Promise.resolve(page.show(byId('page'), ended.signal, hash.slice(page.hash.length + 1))).catch(report);
}

/** @param {boolean} open */
function toggleMenu(open) {
  byId('nav').classList.toggle('open', open);
  byId('menu').setAttribute('aria-expanded', String(open));
}

/** Whether this account is the administrator, and whether it has a password, which is asked for otherwise. */
async function checkAccount() {
  if (!camera.endpoints.has('user_list.cgi')) return;
  const { users } = await read('user_list.cgi');
  camera.administrator = users.find((/** @type {any} */ user) => user.group === 'Administrator')?.name ?? '';
}

async function checkPassword() {
  if (!camera.administrator || sessionStorage.getItem('hasPassword')) return;
  const { password } = await read('user_mod.cgi', { name: camera.administrator });
  if (password) sessionStorage.setItem('hasPassword', '1');
  else byId('notices').prepend(firstPassword());
}

function firstPassword() {
  const [id, title, hint, error] = [newId(), newId(), newId(), el('p', { class: 'error', id: newId() })];
  const field = el('input', { id, name: 'password', type: 'password', autocomplete: 'new-password', maxLength: 30,
    'aria-describedby': `${error.id} ${hint}` });
  const set = button('Set password', async () => {
    error.textContent = field.value ? '' : 'Type a password first.';
    field.setAttribute('aria-invalid', String(!field.value));
    if (!field.value) return field.focus();
    try {
      await change('user_mod.cgi', { name: camera.administrator, password: toBase64(field.value) });
      location.reload();  // the browser asks for the password
    } catch (refusal) {
      if (!(refusal instanceof Refusal)) throw refusal;
      error.textContent = refusal.message;
      field.setAttribute('aria-invalid', 'true');
      field.focus();
    }
  }, { type: 'submit', class: 'primary' });
  const form = el('form', { class: 'notice password', noValidate: true, 'aria-labelledby': title },
    el('p', { id: title }, el('strong', {}, 'The administrator has no password.'),
      ' Everybody who reaches the camera can do everything.'),
    el('input', { name: 'username', autocomplete: 'username', value: camera.administrator, hidden: true }),
    el('label', { for: id }, 'New password for ', el('bdi', {}, camera.administrator)),
    el('div', { class: 'control' }, field, revealOf(field), set), error,
    el('p', { id: hint, class: 'hint' }, 'Up to 30 letters, digits and punctuation marks. The browser then asks for it.'));
  form.addEventListener('submit', (event) => event.preventDefault());
  return form;
}

// Says that the camera does not answer, and asks it again until it does.
async function watchConnection() {
  const notice = el('p', { class: 'notice bad', role: 'alert', hidden: true });
  byId('notices').append(notice);
  bus.addEventListener('offline', () => {
    notice.hidden = false;
    notice.textContent = 'The camera does not answer. The page goes on by itself when it is back.';
  });
  bus.addEventListener('online', () => (notice.hidden = true));
  for (;;) {
    await sleep(link.online ? 1000 : 1500);
    if (document.hidden || (link.online && Date.now() - link.lastContact < 5000)) continue;
    await request('/console/style.css', { method: 'HEAD', accept: '*/*', limit: 4000, cache: 'no-store' })
      .catch(() => undefined);
  }
}

async function start() {
  byId('menu').addEventListener('click', () => toggleMenu(byId('menu').getAttribute('aria-expanded') !== 'true'));
  byId('skip').addEventListener('click', () => byId('page').querySelector('h1')?.focus());
  void watchConnection();
  try {
    await loadDescription();
    const [info] = await Promise.all([read('info.cgi'), checkAccount().catch(() => undefined)]);
    byId('camera').textContent = info.name || 'Camera';
    byId('location').textContent = info.location ?? '';
  } catch (error) {
    report(error);
    bus.addEventListener('online', () => location.reload(), { once: true });
    return;
  }
  listPages();
  addEventListener('hashchange', () => route());
  route(true);
  bus.addEventListener('saved', (event) => {
    const { detail } = /** @type {CustomEvent} */ (event);
    if (detail.name === 'camera_info.cgi') read('info.cgi').then((info) => {
      byId('camera').textContent = info.name;
      byId('location').textContent = info.location;
    }, () => undefined);
  });
  await checkPassword().catch(() => undefined);
}

void start();
