// The pages System, Accounts, API and Card; waiting for the camera.
import { Refusal, actionForm, ask, awake, bdi, button, bytesOf, camera, card, carryOut, change, controlOf, decodeBytes,
  el, encodeBytes, endpointOf, endpointsOf, exactNames, fieldOf, has, isNear, loadWhenSeen, makeField, newId, ping,
  posted, prose, read, refill, request, requestJson, say, section, size, sleep, table, textOf, words } from './core.js';

/** @import { Child, Endpoint, Params } from './core.js' */

/** @param {HTMLElement} page @param {AbortSignal} signal */
export function showSystem(page, signal) {
  const cards = el('div', { class: 'cards' });
  if (has('info.cgi')) cards.append(card(endpointOf('info.cgi'), { signal, level: 2, title: 'Product' }));
  if (camera.administrator) cards.append(backup());
  for (const [name, title] of [['system_reboot.cgi', 'Restart'], ['system_reset.cgi', 'Factory reset']]) {
    if (!has(name)) continue;
    const endpoint = { ...endpointOf(name), title };
    const run = () => carryOut(endpoint, { [endpoint.fields[0].name]: 'go' });
    cards.append(section(title, name, el('p', { class: 'summary' }, ...prose(endpoint.summary)),
      button(`${title}…`, run, { class: 'danger' })));
  }
  page.append(cards);
  if (isNear) simulator(page, signal).catch(() => undefined);
}

function backup() {
  const error = el('div', { class: 'error', id: newId(), role: 'alert' });
  const file = el('input', { type: 'file', id: newId(), name: 'file', 'aria-describedby': error.id });
  const restore = button('Restore…', async () => {
    error.replaceChildren();
    file.removeAttribute('aria-invalid');
    const chosen = file.files?.[0];
    if (!chosen) return say('Choose a file first.', true);
    const text = await chosen.text();
    let done = null;
    try {
      done = await ask({ title: 'Restore the settings?', danger: true, action: 'Restore', body: [bdi(chosen.name),
        'All settings, accounts and passwords become those of the file.'] }) &&
        await request('/backup', { method: 'POST', body: chosen, headers: { 'Content-Type': 'text/plain' } });
    } catch (refusal) {
      if (!(refusal instanceof Refusal)) throw refusal;
      const line = text.split('\n')[Number(/^LINE (\d+)/i.exec(refusal.message)?.[1]) - 1];
      error.append(el('p', {}, 'Nothing was restored. ', bdi(refusal.message)), line ? el('code', {}, bdi(line)) : '');
      file.setAttribute('aria-invalid', 'true');
      file.focus();
    }
    if (!done) return;
    sessionStorage.removeItem('hasPassword');
    const port = /^httpsvr[. ]http_port=(\d+)/m.exec(text)?.[1];
    if (port && port !== (location.port || '80')) return awaitMove(Number(port));
    say('The settings are restored.');
    await sleep(1500);
    location.reload();
  });
  return section('Backup', 'backup', el('p', { class: 'summary' },
    'The file holds all settings, also accounts and passwords: keep it safe.'),
  el('a', { class: 'button', href: '/backup', download: '' }, 'Save the settings to a file'),
  el('label', { class: 'label', for: file.id }, 'Restore from a file'), el('div', { class: 'control' }, file, restore),
  error);
}

// ---- Waiting for the camera

/** @param {string} title @param {string} text */
function waiting(title, text) {
  const id = newId();
  const dialog = el('dialog', { 'aria-labelledby': id }, el('h2', { id, tabIndex: -1 }, title),
    el('p', { role: 'status' }, text));
  dialog.addEventListener('cancel', (event) => event.preventDefault());
  document.body.append(dialog);
  dialog.showModal();
  return dialog;
}

/** Whether there is a web server at this address. */
const answers = () => ping(3000).then(() => true, ({ status }) => status > 0);

/** Waits until the web server is away, at most so long. @param {number} seconds */
async function isAway(seconds) {
  for (const end = performance.now() + seconds * 1000; performance.now() < end; await sleep(300)) {
    if (!document.hidden && !(await answers())) return true;
  }
  return false;
}

/** @param {number} port */
const linkTo = (port) => el('a', { href: `//${location.hostname}:${port}/` }, `port ${port}`);

/** @param {number} port */
export async function awaitMove(port) {
  const dialog = waiting('The camera moves to another port.', 'This page follows. If it does not: ');
  dialog.append(linkTo(port));
  if (await isAway(10)) {
    await sleep(1000);
    const first = sessionStorage.getItem('firstPort') ?? (location.port || '80');
    return location.assign(`${linkTo(port).href}${location.hash || '#/live'}?from=${first}`);
  }
  const { warnings = [] } = await read('httpport.cgi').catch(() => ({ warnings: [] }));
  dialog.remove();
  say(bdi(warnings[0] ?? 'The web server is still at this port.'), true);
}

/** @param {boolean} isReset */
export async function awaitRestart(isReset) {
  sessionStorage.removeItem('hasPassword');
  const dialog = waiting('The camera restarts.', 'This page waits until it is back, and then goes on by itself.');
  const here = Number(location.port || 80);
  const { httpport } = await read('httpport.cgi').catch(() => ({ httpport: here }));
  const known = isReset ? Number(sessionStorage.getItem('firstPort')) : httpport;
  const ports = [known, ...(known ? [] : [8080, 80])].filter((port) => port && port !== here);
  await isAway(30);
  const since = performance.now();
  for (; !(await answers()); await sleep(1000)) {
    while (document.hidden) await sleep(500);
    if (performance.now() - since < 12000 || !ports.length) continue;
    dialog.append('It may have moved to another port: ', ...ports.splice(0).flatMap((port) => [linkTo(port), ' ']));
    if (known) location.assign(linkTo(known).href);
  }
  location.reload();
}

// ---- What happens around a virtual camera

/** @param {HTMLElement} page @param {AbortSignal} signal */
async function simulator(page, signal) {
  await awake(signal);
  /** @type {{ commands: { name: string, usage: string, help: string }[] }} */
  const { commands } = await requestJson('/simulator', { signal });
  const run = async (/** @type {string} */ command) => {
    const text = await request('/simulator', posted(`command=${encodeURIComponent(command)}`, 'text/plain'),
      (reply) => reply.text());
    return text ? el('pre', {}, bdi(text)) : 'Done.';
  };
  page.append(section('Simulate events', 'simulator', el('p', { class: 'summary' },
    'This camera is a virtual one. Here you make something happen to it.'), el('div', { class: 'cards' },
    ...commands.map(({ name, usage, help }) => el('div', { class: 'card', 'data-command': name },
      el('h3', {}, words(name)), el('p', { class: 'hint' }, help), simulated(name, usage, run))))));
}

/** A usage has words between bars and values in capitals; what is in brackets may be left out. @param {string} name
 * @param {string} usage @param {(command: string) => Promise<Child>} run */
function simulated(name, usage, run) {
  const parts = usage.split(/[;,]/)[0].trim().split(/\s+/).slice(1);
  const fields = parts.map((part) => {
    const text = part.replace(/[[\]]/g, '');
    const required = !part.startsWith('[');
    if (text.includes('|')) return makeField(text, { enum: text.split('|'), title: 'State' }, required);
    const [, min, max] = new RegExp(`${text} (\\d+) to (\\d+)`).exec(usage) ?? [];
    const range = max ? { type: 'integer', minimum: Number(min), maximum: Number(max) } : {};
    const field = makeField(text, { ...range, title: words(text.toLowerCase()) }, required);
    return { ...field, start: max && required ? '50' : '' };
  });
  const [only, ...others] = fields;
  if (only?.choices.length && !others.length) {
    return actionForm([], only.choices, (_, word) => run(`${name} ${word}`), '');
  }
  return actionForm(fields, words(name), (params) => run([name, ...Object.values(params)].join(' ')), '');
}

// ---- Accounts

/** @typedef {{ name: string, group: string }} Account */

const passwordField = () => fieldOf('user_mod.cgi', 'password', { description: '', accepted:
  'Up to 30 letters, digits and punctuation marks, no spaces' });

/** @param {HTMLElement} page @param {AbortSignal} signal */
export function showAccounts(page, signal) {
  const place = el('div');
  const node = section('Who may log in', 'user_list.cgi', place, el('p', { class: 'hint' },
    'All ordinary accounts have the privileges that the product gives them; the administrator may do everything.'));
  const load = async () => {
    /** @type {{ users: Account[] }} */
    const { users } = /** @type {any} */ (await read('user_list.cgi', {}, signal));
    /** @type {string[]} */
    const privileges = has('group_list.cgi') ? (await read('group_list.cgi', { name: 'Users' })).privilege : [];
    const labels = privileges.map((word) => words(word.replace('notify', 'events').replace(/^ptz?$/, 'turn the head')));
    const box = (/** @type {string} */ label) =>
      el('td', {}, el('input', { type: 'checkbox', checked: true, disabled: true, 'aria-label': label }));
    const rows = users.map((account) => el('tr', {}, el('th', { scope: 'row' }, bdi(account.name),
      account.group === 'Administrator' && el('div', { class: 'soft' }, account.group)),
    el('td', {}, el('div', { class: 'tight' }, ...actions(account, load))), ...labels.map(box)));
    refill(place, table('Accounts and privileges', ['Account', 'Actions', ...labels], ...rows));
  };
  loadWhenSeen(node, signal, load);
  page.append(node, section('New account', 'user_mod.cgi', el('p', { class: 'summary' },
    'Without a password, an account cannot log in.'), actionForm([fieldOf('user_mod.cgi', 'name', { label: 'Name',
    description: '' }), passwordField()], 'Add account', async (params) => {
    const { users } = await read('user_list.cgi');
    if (users.some((/** @type {Account} */ { name }) => name === params.name)) {
      throw new Refusal(400, 'there is such an account already', 'name');
    }
    await change('user_mod.cgi', { password: '', ...params });
    await load();
    return 'The account is added.';
  })));
}

/** @param {Account} account @param {() => Promise<void>} load */
function actions({ name, group }, load) {
  const isAdministrator = group === 'Administrator';
  const who = () => bdi(name);
  const label = (/** @type {string} */ word) => el('span', {}, `${word}…`, el('span', { class: 'hide' }, who()));
  /** @param {string} word @param {Partial<Parameters<typeof ask>[0]>} question */
  const act = (word, question) => button(label(word), async () => {
    if (!(await ask({ title: `${word}?`, body: [who()], action: word, ...question }))) return;
    sessionStorage.removeItem('hasPassword');
    if (isAdministrator) location.reload();  // the browser has to log in again
    say('Done.');
    await load();
  });
  const send = (/** @type {Params} */ params) => change('user_mod.cgi', { name, ...params });
  return [
    act('New password', { fields: [passwordField()], send: (params) => send({ password: '', ...params }), body: [who(),
      isAdministrator && el('p', {}, 'If it is empty, everybody who reaches the camera can do everything.')] }),
    act('Rename', { fields: [fieldOf('user_mod.cgi', 'newname', { description: '' })], send }),
    !isAdministrator && has('user_del.cgi') &&
      act('Delete', { danger: true, send: () => change('user_del.cgi', { name }) }),
  ];
}

// ---- API

/** @param {HTMLElement} page */
export function showApi(page) {
  const search = el('input', { id: newId(), type: 'search', name: 'search', autocomplete: 'off' });
  const groups = camera.tags.map(({ name, description }) => el('section', { 'aria-label': name }, el('h2', {}, name),
    el('p', { class: 'summary' }, description), ...endpointsOf(name).map((endpoint) => {
      const details = el('details', { class: 'card api', 'data-name': endpoint.name }, el('summary', {},
        el('h3', {}, endpoint.name), el('span', { class: 'summary' }, ' ', ...prose(endpoint.summary))));
      details.addEventListener('toggle', () => details.children.length < 2 && details.append(trial(endpoint)));
      return details;
    })));
  search.addEventListener('input', () => {
    const wanted = search.value.toLowerCase();
    for (const group of groups) {
      for (const node of group.querySelectorAll('details')) {
        node.hidden = !node.textContent?.toLowerCase().includes(wanted);
      }
      group.hidden = !group.querySelector('details:not([hidden])');
    }
  });
  page.append(el('p', {}, 'For programs: ', el('a', { href: '/openapi.json' }, '/openapi.json'), '.'),
    el('div', { class: 'control' }, el('label', { for: search.id }, 'Search'), search), ...groups);
}

/** @param {Endpoint} endpoint */
function trial({ name, fields, privilege, changes }) {
  // Any text may be tried.
  const free = { choices: [], number: false, secret: false, base64: false, maxLength: 0 };
  const controls = fields.map((field) => controlOf({ ...field, ...free, label: field.name, accepted: field.accepted ||
    field.choices.map(([value]) => value).join(', ') }));
  const pick = (/** @type {string} */ label, /** @type {string[]} */ ...choices) =>
    el('select', { 'aria-label': label }, ...choices.map((text) => new Option(text)));
  const method = pick('Method', 'GET', ...(changes ? ['POST'] : []));
  const format = pick('Answer as', 'application/json', 'text/plain');
  const command = el('pre', { class: 'scroll', tabIndex: 0, role: 'group', 'aria-label': 'Command' });
  const answer = el('pre', { class: 'scroll', tabIndex: 0, role: 'status', 'aria-label': 'Answer' });
  const target = () => {
    const query = controls.filter(({ get }) => get()).map(({ field, get }) =>
      `${field.name}=${encodeBytes(bytesOf(get()))}`).join('&');
    return method.value === 'POST' ? { url: `/cgi-bin/${name}`, body: query }
      : { url: `/cgi-bin/${name}${query && '?'}${query}`, body: undefined };
  };
  /** For a shell. @param {string} text */
  const quote = (text) => `'${text.replace(/'/g, `'\\''`)}'`;
  const write = () => {
    const { url, body } = target();
    const login = sessionStorage.getItem('hasPassword') && `--digest -u ${quote(camera.administrator)}`;
    command.textContent = ['curl', login, `-H 'Accept: ${format.value}'`, body !== undefined && `--data ${quote(body)}`,
      quote(location.origin + url)].filter(Boolean).join(' ');
  };
  const send = button('Try it', async () => {
    const { url, body } = target();
    const start = performance.now();
    answer.textContent = 'Under way…';
    const sent = request(url, body === undefined ? { accept: format.value } : posted(body, format.value));
    const [status, text] = await sent.then(async (response) => [response.status, await response.text()],
      ({ status, parameter, message }) => [status || 'no answer', parameter ? `${parameter}: ${message}` : message]);
    answer.replaceChildren(`${status}, ${Math.round(performance.now() - start)} ms\n`, bdi(text));
    answer.scrollIntoView({ block: 'nearest' });
  }, { class: 'primary', type: 'submit' });
  const copy = button('Copy as curl', () => {
    getSelection()?.selectAllChildren(command);
    // Without TLS, a page has no other way.
    say(document.execCommand('copy') ? 'The command is copied.' : 'Copy the marked text.');
  });
  const form = el('form', { noValidate: true }, el('p', { class: 'hint' }, `Open to: ${privilege}.`),
    ...controls.map(({ row }) => row), el('div', { class: 'buttons' }, method, format, send, copy), command, answer);
  form.addEventListener('submit', (event) => event.preventDefault());
  form.addEventListener('input', write);
  write();
  return form;
}

// ---- The card. Names are kept as bytes: they need not be UTF-8.

/** name: bytes @typedef {{ name: string, type: string, entries: number, kib: number }} Entry */

const kPageSize = 20;
const kPictures = /\.(jpe?g|png|gif)$/i;

/** @param {string} path bytes @returns {string} for an address */
const addressOf = (path) => encodeBytes(path, /[A-Za-z0-9_.~/-]/);

/** @param {HTMLElement} page @param {AbortSignal} signal @param {string} rest */
export function showCard(page, signal, rest) {
  const [place, query] = rest.split('?p=');
  page.append(stateCard(signal), folderCard(decodeBytes(place), Number(query ?? 1), signal));
}

/** @param {AbortSignal} signal */
function stateCard(signal) {
  const box = el('div');
  const node = section('State', 'sdcard.cgi', box);
  const fill = (/** @type {any} */ { status, total, used, free }) =>
    box.replaceChildren(el('p', {}, el('strong', {}, status ? words(status) : 'No card')),
      total ? el('meter', { max: total, value: used, 'aria-label': 'Used space' }) : '',
      el('p', { class: 'soft' }, `${size(free)} free of ${size(total)}`));
  const format = button('Format the card…', async () => {
    const field = makeField('word', { title: 'To go on, type the word format' });
    const send = async (/** @type {Params} */ { word }) => {
      if (word !== 'format') throw new Refusal(400, 'type the word format', 'word');
      fill(await change('sdcard_format.cgi', { format: 'go' }));
    };
    const isDone = await ask({ title: 'Format the card?', danger: true, action: 'Format', fields: [field], send, body:
      ['All that is on the card will be lost.'] });
    if (!isDone) return;
    say('The card is formatted.');
    location.hash = '#/card/';
  }, { class: 'danger' });
  loadWhenSeen(node, signal, async () => fill(await read('sdcard.cgi', {}, signal)));
  if (has('sdcard_format.cgi')) node.append(el('div', { class: 'buttons' }, format));
  return node;
}

/** What a name of digits says. @param {Entry} entry */
function timeOf({ name, type }) {
  const [, year, month, day] = (type === 'folder' && /^(\d{4})(\d\d)(\d\d)$/.exec(name)) || [];
  if (year) return new Date(+year, +month - 1, +day).toLocaleDateString(undefined, { dateStyle: 'full' });
  const [, hour, minute, second] = /^(\d\d)(\d\d)(\d\d)\./.exec(name) ?? [];
  return hour && new Date(2000, 0, 1, +hour, +minute, +second).toLocaleTimeString(undefined, { timeStyle: 'medium' });
}

/** @param {string} path @param {number} number of the page @param {AbortSignal} signal */
function folderCard(path, number, signal) {
  const parts = path ? path.split('/') : [];
  const links = ['Card', ...parts].map((part, i) => el('li', {}, el('a', { href: `#/card/${addressOf(parts.slice(0, i)
    .join('/'))}`, 'aria-current': i === parts.length ? 'page' : null }, bdi(textOf(part)))));
  const crumbs = el('nav', { class: 'crumbs', 'aria-label': 'Folder' }, el('ol', {}, ...links));
  const body = el('div');
  const node = section('Files', 'sdcard_list.cgi', crumbs, body);
  /** @type {Map<HTMLInputElement, Entry>} */
  const boxes = new Map();
  const inside = (/** @type {string} */ name) => [...parts, name].join('/');

  const load = async () => {
    const query = `page=${number}&pagesize=${kPageSize}${path && `&path=${encodeBytes(path)}`}`;
    const { items: found, total_page: pages, total_file: total } = await read('sdcard_list.cgi', query, signal);
    /** @type {Entry[]} */
    const items = found;
    const names = await exactNames(`/cgi-bin/sdcard_list.cgi?${query}`, items.map(({ name }) => name), (text) =>
      /^items=(.*)$/m.exec(text)?.[1].split(':').map((item) => item.split('|')[0]) ?? []);
    const pageAt = (/** @type {number} */ page) => `#/card/${addressOf(path)}${page > 1 ? `?p=${page}` : ''}`;
    if (!items.length && number > 1) return void (location.hash = pageAt(Math.max(1, pages)));
    boxes.clear();
    const all = el('input', { type: 'checkbox', 'aria-label': 'Select all of this page' });
    all.addEventListener('change', () => boxes.forEach((_, box) => (box.checked = all.checked)));
    const rows = items.map((item, i) => row({ ...item, name: names[i] }));
    const go = (/** @type {string} */ text, /** @type {number} */ page) => page >= 1 && page <= pages &&
      el('a', { class: 'button', href: pageAt(page) }, text);
    refill(body, rows.length ? table('Files', [el('td', {}, all), 'Name', 'Time', 'Size'], ...rows) : el('p'),
      el('div', { class: 'buttons' }, rows.length > 0 && has('sdcard_delete.cgi') &&
        button('Delete selected…', remove, { class: 'danger' }), go('Previous', number - 1),
      el('span', { class: 'soft' }, `${total} entries, page ${number} of ${pages || 1}`), go('Next', number + 1)));
  };
  const row = (/** @type {Entry} */ entry) => {
    const { type, entries, kib } = entry;
    const [name, id, isFolder] = [textOf(entry.name), newId(), type === 'folder'];
    const box = el('input', { type: 'checkbox', 'aria-labelledby': id });
    boxes.set(box, entry);
    const href = `${isFolder ? '#/card/' : '/volumes/local/'}${addressOf(inside(entry.name))}`;
    const link = el('a', { href, id, download: isFolder ? null : '' }, bdi(name));
    if (!isFolder && kPictures.test(name)) {
      link.addEventListener('click', (event) => (event.preventDefault(), showPicture(name, href)));
    }
    return el('tr', {}, el('td', {}, box), el('td', { class: `name ${type}` }, link), el('td', {}, timeOf(entry)),
      el('td', {}, isFolder ? `${entries} entries` : size(kib)));
  };
  const remove = async () => {
    const chosen = [...boxes].filter(([box]) => box.checked).map(([, entry]) => entry);
    if (!chosen.length) return say('Select something first.');
    const list = el('ul', {}, ...chosen.map(({ name, type }) =>
      el('li', {}, bdi(textOf(name)), type === 'folder' && ' with all that is in it')));
    await ask({ title: `Delete ${chosen.length === 1 ? 'this' : `these ${chosen.length}`}?`, body: [list], danger: true,
      action: 'Delete', send: async () => {
        const names = chosen.map(({ name }) => inside(name)).join(':');
        const { items } = await change('sdcard_delete.cgi', `name=${encodeBytes(names)}`);
        for (const { name, result } of items) if (result) say(el('span', {}, 'Not deleted: ', bdi(name)), true);
        await load();
      } });
  };
  loadWhenSeen(node, signal, load);
  return node;
}

/** @param {string} name @param {string} src */
function showPicture(name, src) {
  const note = el('p', { role: 'status' }, 'Loading…');
  const image = el('img', { alt: name, src });
  image.addEventListener('load', () => note.remove());
  image.addEventListener('error', () => (image.remove(), note.textContent = 'This is not a picture.'));
  const send = async () => el('a', { href: src, download: '' }).click();
  void ask({ title: 'Picture', body: [bdi(name), note, image], action: 'Fetch', cancel: 'Close', send });
}
