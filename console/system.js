// The page System: information, backup, restart, what happens around a virtual camera; and waiting for the camera.
import { Refusal, ask, awake, bdi, button, camera, el, endpointOf, has, newId, prose, read, report, request, say,
  sleep, words } from './core.js';
import { card, carryOut } from './form.js';

/** @param {HTMLElement} page @param {AbortSignal} signal */
export function show(page, signal) {
  const cards = el('div', { class: 'cards' });
  if (has('info.cgi')) cards.append(card(endpointOf('info.cgi'), { signal, level: 2, title: 'Product' }));
  if (camera.administrator) cards.append(backup());
  for (const [name, title] of [['system_reboot.cgi', 'Restart'], ['system_reset.cgi', 'Factory reset']]) {
    if (!has(name)) continue;
    const { summary, fields: [field] } = endpointOf(name);
    cards.append(box(title, name, el('p', { class: 'summary' }, ...prose(summary)), el('div', { class: 'buttons' },
      button(`${title}…`, () => carryOut({ ...endpointOf(name), title }, { [field.name]: 'go' }), { class: 'danger' }))));
  }
  cards.append(box('For programs', 'openapi', el('p', {}, 'Everything that this console does, a program can do: ',
    el('a', { href: '#/api' }, 'all endpoints'), ', to try and to copy.')));
  page.append(cards);
  if (/^(127\.|localhost$|\[::1\]$)/.test(location.hostname)) void simulator(page, signal).catch(() => undefined);
}

/** @param {string} title @param {string} endpoint @param {...import('./core.js').Child} content */
function box(title, endpoint, ...content) {
  const id = newId();
  return el('section', { class: 'card', 'data-endpoint': endpoint, 'data-state': 'ready', 'aria-labelledby': id },
    el('h2', { id }, title), ...content);
}

function backup() {
  const [fileId, error] = [newId(), el('div', { class: 'error', id: newId() })];
  const file = el('input', { type: 'file', id: fileId, name: 'file', accept: '.txt,text/plain', 'aria-describedby': error.id });
  const restore = button('Restore…', async () => {
    error.replaceChildren();
    file.setAttribute('aria-invalid', 'false');
    const chosen = file.files?.[0];
    if (!chosen) return say('Choose a file first.', true);
    const text = await chosen.text();
    if (await ask({ title: 'Restore the settings?', danger: true, action: 'Restore', body: [el('p', {}, bdi(chosen.name)),
      el('p', {}, 'All settings, accounts and passwords become those of the file.')] }) === null) return;
    try {
      await request('/backup', { method: 'POST', body: text, headers: { 'Content-Type': 'text/plain' } });
    } catch (refusal) {
      if (!(refusal instanceof Refusal)) throw refusal;
      const line = Number(/^LINE (\d+)/i.exec(refusal.message)?.[1]);
      const fault = text.split('\n')[line - 1];
      error.replaceChildren(el('p', {}, 'Nothing was restored. ', bdi(refusal.message)),
        fault === undefined ? '' : el('code', {}, bdi(fault)));
      file.setAttribute('aria-invalid', 'true');
      return file.focus();
    }
    sessionStorage.removeItem('hasPassword');
    const port = /^httpsvr[. ]http_port=(\d+)/m.exec(text)?.[1];
    if (port && port !== (location.port || '80')) return void awaitMove(Number(port));
    say('The settings are restored.');
    await sleep(1500);
    location.reload();
  });
  return box('Backup', 'backup', el('p', { class: 'summary' },
    'The file holds all settings, also accounts and passwords: keep it safe.'),
  el('div', { class: 'buttons' }, el('a', { class: 'button', href: '/backup', download: '' }, 'Save the settings to a file')),
  el('label', { class: 'label', for: fileId }, 'Restore from a file'), el('div', { class: 'control' }, file, restore), error);
}

// ---- Waiting for the camera

/** @param {string} title */
function waiting(title) {
  const id = newId();
  const text = el('div', { role: 'status' });
  const dialog = el('dialog', { 'aria-labelledby': id, 'data-waits': '' }, el('h2', { id, tabIndex: -1 }, title), text);
  dialog.addEventListener('cancel', (event) => event.preventDefault());
  document.body.append(dialog);
  dialog.showModal();
  return { dialog, text };
}

/** @returns {Promise<boolean>} whether there is a web server at this address */
const answers = () =>
  request('/console/style.css', { method: 'HEAD', accept: '*/*', limit: 3000, cache: 'no-store' })
    .then(() => true, (error) => error.status > 0);

/** Waits until the web server is away, at most so long. @param {number} seconds */
async function isAway(seconds) {
  for (const end = Date.now() + seconds * 1000; Date.now() < end; await sleep(300)) {
    if (!document.hidden && !(await answers())) return true;
  }
  return false;
}

/** @param {number} port */
const addressAt = (port) => `${location.protocol}//${location.hostname}:${port}/`;

/** The web server moves to another port: goes there. @param {number} port */
export async function awaitMove(port) {
  const { dialog, text } = waiting(`The camera moves to port ${port}.`);
  text.append(el('p', {}, 'This page follows. If it does not: '),
    el('p', {}, el('a', { href: addressAt(port) }, addressAt(port))));
  if (await isAway(10)) {
    await sleep(1000);
    location.assign(`${addressAt(port)}${location.hash}`);
    return;
  }
  const { warnings = [] } = await read('httpport.cgi').catch(() => ({ warnings: [] }));
  dialog.close();
  dialog.remove();
  say(bdi(warnings[0] ?? 'The web server is still at this port.'), true);
}

/** The camera restarts: waits, and loads the page again. @param {boolean} isReset */
export async function awaitRestart(isReset) {
  sessionStorage.removeItem('hasPassword');
  const { text } = waiting('The camera restarts.');
  text.append(el('p', {}, 'This page waits until it is back, and then goes on by itself.'));
  const here = Number(location.port || 80);
  const stored = has('httpport.cgi') ? (await read('httpport.cgi').catch(() => ({ httpport: here }))).httpport : here;
  const ports = isReset ? [camera.port, 8080].filter((port) => port !== here) : [stored].filter((port) => port !== here);
  await isAway(30);
  const since = Date.now();
  for (let isTold = false; !(await answers()); await sleep(1000)) {
    while (document.hidden) await sleep(500);
    if (Date.now() - since < 12000 || isTold || !ports.length) continue;
    isTold = true;
    text.append(el('p', {}, 'It may have moved to another port: '), ...ports.map((port) =>
      el('p', {}, el('a', { href: addressAt(port) }, addressAt(port)))));
    if (!isReset) location.assign(addressAt(ports[0]));
  }
  location.reload();
}

// ---- A virtual camera

/** @param {HTMLElement} page @param {AbortSignal} signal */
async function simulator(page, signal) {
  await awake(signal);
  const { commands } = await (await request('/simulator', { signal })).json();
  if (signal.aborted) return;
  const id = newId();
  const answer = el('p', { class: 'answer', role: 'status' });
  const run = async (/** @type {string} */ command) => {
    answer.textContent = `${command} …`;
    const headers = { 'Content-Type': 'application/x-www-form-urlencoded' };
    const body = `command=${encodeURIComponent(command)}`;
    try {
      const text = await (await request('/simulator', { method: 'POST', body, headers, accept: 'text/plain' })).text();
      answer.textContent = `${command}: ${text || 'done'}`;
    } catch (error) {
      answer.textContent = '';
      report(error);
    }
  };
  page.append(el('section', { class: 'card', 'data-endpoint': 'simulator', 'data-state': 'ready', 'aria-labelledby': id },
    el('h2', { id }, 'What happens around it'), el('p', { class: 'summary' },
      'This camera is a virtual one. Here you make something happen to it.'), answer,
    ...commands.map((/** @type {any} */ c) => simulated(c, run))));
}

/**
 * The controls of a command: its usage names words by | and values in capitals; what is in brackets may be left out.
 * @param {{ name: string, usage: string, help: string }} command @param {(command: string) => Promise<void>} run
 */
function simulated({ name, usage, help }, run) {
  const [pattern] = usage.split(/;|, or /);
  const parts = pattern.trim().split(/\s+/).slice(1);
  const title = words(name);
  const hint = el('p', { class: 'hint' }, help);
  const group = el('form', { class: 'field', noValidate: true }, el('h3', {}, title));
  if (parts.length === 1 && parts[0].includes('|')) {
    group.append(el('div', { class: 'buttons' }, ...parts[0].replace(/[[\]]/g, '').split('|').map((word) =>
      button(words(word), () => run(`${name} ${word}`), { 'aria-label': `${title}: ${word}` }))), hint);
    return group;
  }
  const inputs = parts.map((part) => {
    const isOptional = part.startsWith('[');
    const text = part.replace(/[[\]]/g, '');
    const label = `${title}: ${text.toLowerCase()}`;
    if (text.includes('|')) {
      const options = text.split('|').map((word) => new Option(word, word));
      return el('select', { 'aria-label': title, 'data-optional': isOptional || null },
        ...(isOptional ? [new Option('–', '')] : []), ...options);
    }
    const [, min, max] = new RegExp(`${text} (\\d+) to (\\d+)`).exec(usage) ?? [];
    return el('input', { type: max ? 'number' : 'text', min, max, 'aria-label': label, autocomplete: 'off', placeholder:
      `${text.toLowerCase()}${max ? ` ${min} to ${max}` : ''}${isOptional ? ', optional' : ''}` });
  });
  group.append(el('div', { class: 'control' }, ...inputs, button('Do it', () =>
    run([name, ...inputs.map(({ value }) => value).filter(Boolean)].join(' ')), { type: 'submit', 'aria-label': `${title}: do it` })), hint);
  group.addEventListener('submit', (event) => event.preventDefault());
  return group;
}

