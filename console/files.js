// The page Card: its state, and its folders page by page. Names are kept as bytes: they need not be UTF-8.
import { ask, awake, bdi, button, change, el, encodeBytes, exactName, has, newId, read, readBytes, report,
  request, say, size, textOf, words } from './core.js';

/** @typedef {{ name: string, type: string, entries?: number, kib?: number }} Entry name: bytes */

const kPageSize = 20;
const kAtOnce = 30;  // entries of one request to delete; a form has at most 64 KiB
const kPictures = /\.(jpe?g|png|gif)$/i;

/** @param {string} path bytes @returns {string} for an address */
const addressOf = (path) => encodeBytes(path, /[A-Za-z0-9_.~/-]/);

/** @param {HTMLElement} page @param {AbortSignal} signal @param {string} rest */
export async function show(page, signal, rest) {
  const [place, query] = rest.split('?');
  const path = place.replace(/%([0-9a-f]{2})/gi, (_, code) => String.fromCharCode(parseInt(code, 16)));
  const id = newId();
  const folder = el('section', { class: 'card', 'data-endpoint': 'sdcard_list.cgi', 'aria-labelledby': id },
    el('h2', { id }, 'Files'), breadcrumb(path), el('p', { class: 'status', role: 'status' }, 'Loading…'));
  page.append(stateCard(signal), folder);
  await awake(signal);
  const folderView = new Folder(folder, path, Number(/^p=(\d+)/.exec(query ?? '')?.[1] ?? 1), signal);
  await folderView.load();
}

/** @param {string} path */
function breadcrumb(path) {
  const parts = path ? path.split('/') : [];
  const links = parts.map((part, i) =>
    el('li', {}, el('a', { href: `#/card/${addressOf(parts.slice(0, i + 1).join('/'))}` }, bdi(textOf(part)))));
  links[links.length - 1]?.querySelector('a')?.setAttribute('aria-current', 'page');
  return el('nav', { class: 'crumbs', 'aria-label': 'Folder' },
    el('ol', {}, el('li', {}, el('a', { href: '#/card', 'aria-current': parts.length ? null : 'page' }, 'Card')), ...links));
}

/** The card's state and space. @param {AbortSignal} signal */
function stateCard(signal) {
  const id = newId();
  const box = el('div', {}, 'Loading…');
  const section = el('section', { class: 'card', 'data-endpoint': 'sdcard.cgi', 'aria-labelledby': id },
    el('h2', { id }, 'State'), box);
  const fill = (/** @type {any} */ { status, total, used, free }) => {
    const bar = el('meter', { max: total || 1, value: used, 'aria-label': 'Used space' });
    box.replaceChildren(el('p', {}, el('strong', {}, status ? words(status) : 'No card')),
      total ? bar : '', el('p', { class: 'soft' }, `${size(free)} free of ${size(total)}`));
    section.dataset.state = 'ready';
  };
  const format = button('Format the card…', async () => {
    const field = el('input', { autocomplete: 'off', 'aria-label': 'Type the word format' });
    const isSure = await ask({ title: 'Format the card?', danger: true, action: 'Format', field, body: [
      el('p', {}, 'Everything on the card will be lost. To go on, type the word '), el('strong', {}, 'format'), '.'],
    accept: (value) => value.trim().toLowerCase() === 'format', send: async () => {
      fill(await change('sdcard_format.cgi', { format: 'go' }));
    } });
    if (isSure === null) return;
    say('The card is formatted.');
    location.hash = '#/card';
  }, { class: 'danger' });
  if (has('sdcard_format.cgi')) section.append(el('div', { class: 'buttons' }, format));
  awake(signal).then(() => read('sdcard.cgi', {}, signal)).then(fill).catch(report);
  return section;
}

/** What a name of digits says. @param {Entry} entry @returns {string} */
function timeOf({ name, type }) {
  const [, year, month, day] = /^(\d{4})(\d\d)(\d\d)$/.exec(name) ?? [];
  if (type === 'folder' && year) {
    return new Intl.DateTimeFormat(undefined, { dateStyle: 'full' }).format(new Date(+year, +month - 1, +day));
  }
  const [, hour, minute, second] = /^(\d\d)(\d\d)(\d\d)\./.exec(name) ?? [];
  if (!hour) return '';
  return new Intl.DateTimeFormat(undefined, { timeStyle: 'medium' }).format(new Date(2000, 0, 1, +hour, +minute, +second));
}

/** One page of a folder. */
class Folder {
  /** @param {HTMLElement} section @param {string} path @param {number} page @param {AbortSignal} signal */
  constructor(section, path, page, signal) {
    this.section = section;
    this.path = path;
    this.page = page;
    this.signal = signal;
    this.status = /** @type {HTMLElement} */ (section.querySelector('.status'));
    this.body = el('div');
    section.insertBefore(this.body, this.status);
    /** @type {Map<HTMLInputElement, Entry>} */
    this.boxes = new Map();
  }

  /** @returns {Promise<{ entries: Entry[], pages: number, total: number }>} */
  async list() {
    const path = this.path && `&path=${encodeBytes(this.path)}`;
    const url = `/cgi-bin/sdcard_list.cgi?page=${this.page}&pagesize=${kPageSize}${path}`;
    const reply = await (await request(url, { signal: this.signal, cache: 'no-store' })).json();
    /** @type {Entry[]} */
    const items = reply.items;
    let raw = '';
    if (items.some(({ name }) => name.includes('\ufffd'))) raw = await readBytes(url, { cache: 'no-store' });
    const names = /^items=(.*)$/m.exec(raw)?.[1].split(':').map((item) => item.split('|')[0]) ?? [];
    const entries = items.map((entry, i) => ({ ...entry, name: exactName(entry.name, names[i]) }));
    return { entries, pages: reply.total_page, total: reply.total_file };
  }

  /** @param {string} name */
  inside(name) {
    return this.path ? `${this.path}/${name}` : name;
  }

  async load() {
    try {
      const { entries, pages, total } = await this.list();
      if (!entries.length && this.page > 1) return void (location.hash = this.#pageAddress(Math.max(1, pages)));
      this.boxes.clear();
      this.body.replaceChildren(entries.length ? this.#table(entries) : el('p', { class: 'soft' }, 'Nothing here.'),
        this.#tools(pages));
      this.status.textContent = `${total} ${total === 1 ? 'entry' : 'entries'}`;
      this.section.dataset.state = 'ready';
    } catch (error) {
      if (this.signal.aborted) return;
      this.status.textContent = /** @type {Error} */ (error).message;
      this.status.classList.add('error');
    }
  }

  /** @param {number} page */
  #pageAddress(page) {
    return `#/card/${addressOf(this.path)}${page > 1 ? `?p=${page}` : ''}`;
  }

  /** @param {Entry[]} entries */
  #table(entries) {
    const all = el('input', { type: 'checkbox', 'aria-label': 'Select all of this page' });
    all.addEventListener('change', () => {
      for (const box of this.boxes.keys()) box.checked = all.checked;
    });
    return el('div', { class: 'scroll' }, el('table', { class: 'files' }, el('thead', {}, el('tr', {}, el('td', { class:
      'check' }, all), ...['Name', 'Time', 'Size'].map((text) => el('th', { scope: 'col' }, text)))),
    el('tbody', {}, ...entries.map((entry) => this.#row(entry)))));
  }

  /** @param {Entry} entry */
  #row(entry) {
    const name = textOf(entry.name);
    const nameId = newId();
    const box = el('input', { type: 'checkbox', 'aria-labelledby': nameId });
    this.boxes.set(box, entry);
    const path = addressOf(this.inside(entry.name));
    const isFolder = entry.type === 'folder';
    const address = isFolder ? `#/card/${path}` : `/volumes/local/${path}`;
    const link = el('a', { href: address, id: nameId }, bdi(name));
    if (!isFolder && kPictures.test(name)) {
      link.addEventListener('click', (event) => (event.preventDefault(), showPicture(name, address)));
    } else if (!isFolder) {
      link.download = '';
    }
    const amount = isFolder ? `${entry.entries} ${entry.entries === 1 ? 'entry' : 'entries'}` : size(entry.kib ?? 0);
    return el('tr', {}, el('td', { class: 'check' }, box), el('td', { class: isFolder ? 'folder' : 'file' }, link),
      el('td', {}, timeOf(entry)), el('td', {}, amount));
  }

  /** @param {number} pages */
  #tools(pages) {
    const link = (/** @type {string} */ text, /** @type {number} */ page) => page >= 1 && page <= pages &&
      el('a', { class: 'button', href: this.#pageAddress(page) }, text);
    const remove = button('Delete selected…', () => this.#remove(), { class: 'danger', hidden: !has('sdcard_delete.cgi') });
    return el('div', { class: 'buttons' }, this.boxes.size > 0 && remove, link('Previous', this.page - 1),
      pages > 1 && el('span', {}, `Page ${this.page} of ${pages}`), link('Next', this.page + 1));
  }

  async #remove() {
    const chosen = [...this.boxes].filter(([box]) => box.checked).map(([, entry]) => entry);
    if (!chosen.length) return say('Select something first.');
    const list = el('ul', {}, ...chosen.map(({ name, type }) =>
      el('li', {}, bdi(textOf(name)), type === 'folder' && ' (with all that is in it)')));
    const title = chosen.length === 1 ? 'Delete this?' : `Delete these ${chosen.length}?`;
    if ((await ask({ title, body: [list], action: 'Delete', danger: true })) === null) return;
    this.status.textContent = 'Deleting…';
    const left = [];
    for (let i = 0; i < chosen.length; i += kAtOnce) {
      const names = chosen.slice(i, i + kAtOnce).map(({ name }) => this.inside(name)).join(':');
      const { items } = await change('sdcard_delete.cgi', `name=${encodeBytes(names)}`);
      left.push(...items.filter((/** @type {any} */ item) => item.result !== 0));
    }
    for (const { name } of left) say(el('span', {}, 'Not deleted: ', bdi(name)), true);
    if (!left.length) say('Deleted.');
    await this.load();
    this.section.querySelector('a')?.focus();
  }
}

/** @param {string} name @param {string} address */
function showPicture(name, address) {
  const note = el('p', { class: 'status', role: 'status' }, 'Loading…');
  const image = el('img', { alt: name, src: address });
  image.addEventListener('load', () => note.remove());
  image.addEventListener('error', () => (image.remove(), note.textContent = 'This is not a picture.'));
  const get = el('a', { class: 'button', href: address, download: '' }, 'Fetch');
  void ask({ title: 'Picture', body: [el('p', {}, bdi(name)), note, image, get], action: 'Close' });
}

