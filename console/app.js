// The frame: navigation, pages, the state of the connection, and the first password.
import { Refusal, actionForm, bus, button, camera, card, change, el, endpointsOf, fieldOf, has, kindOf, link,
  loadDescription, newId, ping, read, report, sleep } from './core.js';

/** @typedef {(page: HTMLElement, signal: AbortSignal, rest: string) => unknown} Show */

const byId = (/** @type {string} */ id) => /** @type {HTMLElement} */ (document.getElementById(id));
/** @type {{ hash: string, title: string, show: Show }[]} */
let pages = [];
let ended = new AbortController();

/** The cards of one subsystem. @param {string} tag @returns {Show} */
const settingsPage = (tag) => (page, signal) => {
  const index = el('div', { class: 'buttons index', role: 'group', 'aria-label': 'Cards of this page' });
  page.append(index);
  for (const kind of ['Settings', 'Commands', 'Information']) {
    const those = endpointsOf(tag).filter((endpoint) => kindOf(endpoint) === kind);
    if (!those.length) continue;
    const cards = those.map((e) => card(e, { signal }));
    page.append(el('h2', {}, kind), el('div', { class: 'cards' }, ...cards));
    index.append(...those.map(({ title }, i) => button(title, () => cards[i].scrollIntoView(), { class: 'quiet' })));
  }
};

/** @param {string} file @param {string} name of the function that shows the page @returns {Show} */
const from = (file, name) => async (page, signal, rest) => {
  const module = await import(`./${file}.js`);
  if (!signal.aborted) await module[name](page, signal, rest);
};

function listPages() {
  const special = [
    { hash: '#/live', title: 'Live', show: from('watch', 'showLive') },
    { hash: '#/events', title: 'Events', show: from('watch', 'showEvents') },
    ...(has('sdcard_list.cgi') ? [{ hash: '#/card', title: 'Card', show: from('manage', 'showCard') }] : []),
    ...(has('user_list.cgi') ? [{ hash: '#/accounts', title: 'Accounts', show: from('manage', 'showAccounts') }] : []),
    { hash: '#/system', title: 'System', show: from('manage', 'showSystem') },
    { hash: '#/api', title: 'API', show: from('manage', 'showApi') },
  ];
  const settings = camera.tags.filter(({ name }) => endpointsOf(name).length).map(({ name }) =>
    ({ hash: `#/settings/${encodeURIComponent(name)}`, title: name, show: settingsPage(name) }));
  pages = [...special, ...settings];
  const id = newId();
  const links = (/** @type {typeof pages} */ list, /** @type {object} */ props) => el('ul', { ...props },
    ...list.map(({ hash, title }) => el('li', {}, el('a', { href: hash }, title))));
  byId('nav').replaceChildren(links(special, {}), el('p', { id, class: 'group' }, 'Settings'),
    links(settings, { 'aria-labelledby': id }));
}

/** @param {boolean} [isFirst] */
function route(isFirst = false) {
  const hash = location.hash || '#/live';
  const page = pages.find((p) => `${hash}/`.startsWith(`${p.hash}/`)) ?? { hash: '', title: 'Not here', show: (at) =>
    at.append(el('p', {}, 'This camera has no such page, or your account may not open it.')) };
  ended.abort();
  ended = new AbortController();
  const heading = el('h1', { tabIndex: -1 }, page.title);
  byId('page').replaceChildren(heading);
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

/** @param {boolean} isOpen */
function toggleMenu(isOpen) {
  byId('nav').classList.toggle('open', isOpen);
  byId('menu').setAttribute('aria-expanded', String(isOpen));
  if (isOpen) byId('nav').scrollIntoView();
}

/** Who is logged in: only the administrator may list the accounts. */
async function checkAccount() {
  if (!camera.endpoints.has('user_list.cgi')) return;
  const { users } = await read('user_list.cgi');
  camera.administrator = users.find((/** @type {any} */ { group }) => group === 'Administrator')?.name ?? '';
}

async function checkPassword() {
  if (!camera.administrator || sessionStorage.getItem('hasPassword')) return;
  const { password } = await read('user_mod.cgi', { name: camera.administrator });
  if (password) return sessionStorage.setItem('hasPassword', '1');
  const title = newId();
  const field = fieldOf('user_mod.cgi', 'password', { label: 'New password', required: true, description:
    `No spaces. The browser then asks for the name ${camera.administrator} and this password.`, accepted: '' });
  const form = actionForm([field], 'Set password', async (params) => {
    if (!params.password) throw new Refusal(400, 'type one first', 'password');
    await change('user_mod.cgi', { name: camera.administrator, ...params });
    location.reload();
  });
  form.prepend(el('p', { id: title }, el('strong', {}, 'The administrator has no password.'),
    ' Everybody who reaches the camera can do everything.'),
  el('input', { name: 'username', autocomplete: 'username', value: camera.administrator, hidden: true }));
  form.setAttribute('aria-labelledby', title);
  form.className = 'notice password';
  byId('notices').prepend(form);
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
    await sleep(1000);
    if (document.hidden || (link.online && performance.now() - link.lastContact < 5000)) continue;
    await ping(4000).catch(() => undefined);
  }
}

async function showName() {
  const { name } = await read('info.cgi');
  byId('camera').textContent = name || 'Camera';
}

async function start() {
  byId('menu').addEventListener('click', () => toggleMenu(byId('menu').getAttribute('aria-expanded') !== 'true'));
  byId('skip').addEventListener('click', () => byId('page').querySelector('h1')?.focus());
  void watchConnection();
  try {
    await loadDescription();
  } catch (error) {
    bus.addEventListener('online', () => location.reload());
    return report(error);
  }
  await Promise.all([showName(), checkAccount()].map((done) => done.catch(() => undefined)));
  // A page at another port has moved here with the camera.
  const [from, port] = /\?from=(\d+)$/.exec(location.hash) ?? [];
  if (from && port) {
    sessionStorage.setItem('firstPort', port);
    history.replaceState(null, '', location.hash.slice(0, -from.length));
  }
  listPages();
  addEventListener('hashchange', () => route());
  route(true);
  bus.addEventListener('saved', (/** @type {any} */ { detail }) =>
    detail.name === 'camera_info.cgi' && showName().catch(() => undefined));
  await checkPassword().catch(() => undefined);
}

void start();
