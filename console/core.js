// What every page uses: elements, requests, names of any bytes, the description of the camera, and forms made from it.

/** @typedef {Node | string | number | null | undefined | false} Child */
/** @typedef {Record<string, string | number>} Params */
/** A parameter. accepted: in words; depends: other settings can make the camera reject it; choices: value and text.
 * @typedef {{ name: string, label: string, description: string, accepted: string, unit: string, factory?: string,
 * start?: string, required: boolean, depends: boolean, choices: [string, string][], number: boolean, min: number, max:
 * number, step: number, maxLength: number, secret: boolean, base64: boolean }} Field */
/** records: that it changes or reads; stores: if it changes some; changes: if it takes a POST; always: keys of replies.
 * @typedef {{ name: string, title: string, summary: string, tag: string, privilege: string, records: string[], stores:
 * boolean, changes: boolean, fields: Field[], always: string[] }} Endpoint */

/** @typedef {ReturnType<typeof controlOf>} Control */
/** pace: changes are sent at once, through it. @typedef {{ signal: AbortSignal, title?: string, level?: number, pace?:
 * Pace }} Options */

/** Creates an element. Texts become text nodes: no name or value is ever read as markup. @template {keyof
 * HTMLElementTagNameMap} K @param {K} tag @param {Record<string, unknown>} [props] properties, or else attributes
 * @param {...Child} children @returns {HTMLElementTagNameMap[K]} */
export function el(tag, props = {}, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(props)) {
    if (value === undefined || value === null) continue;
    if (name in node && !name.includes('-')) Reflect.set(node, name, value);
    else node.setAttribute(name, String(value));
  }
  for (const child of children) {
    if (child || child === 0) node.append(child instanceof Node ? child : String(child));
  }
  return node;
}

/** Text from outside, kept apart from the writing direction around it. @param {unknown} text */
export const bdi = (text) => el('bdi', {}, String(text));

/** A sentence of the description, in which backquotes mark code. @param {string} text */
export const prose = (text) => text.split('`').map((part, i) => (i % 2 ? el('code', {}, part) : part));

let lastId = 0;
export const newId = () => `id${++lastId}`;
export const isNear = /^(127\.|localhost$|\[::1\]$)/.test(location.hostname);  // perhaps a virtual camera

/** @param {string} title @param {string} endpoint @param {...Child} content */
export function section(title, endpoint, ...content) {
  const id = newId();
  return el('section', { class: 'card', 'data-endpoint': endpoint, 'data-state': 'ready', 'aria-labelledby': id },
    el('h2', { id }, title), ...content);
}

/** @param {string} label @param {...Child} rows of the body @param {Child[]} head */
export const table = (label, head, ...rows) =>
  el('div', { class: 'scroll', tabIndex: 0, role: 'group', 'aria-label': label }, el('table', {}, el('thead', {},
    el('tr', {}, ...head.map((cell) => (cell instanceof Node ? cell : el('th', { scope: 'col' }, cell))))),
  el('tbody', {}, ...rows)));

/** Changes a list; the focus stays in it. @param {HTMLElement} node @param {...Node} children */
export function refill(node, ...children) {
  const hadFocus = node.contains(document.activeElement);
  node.replaceChildren(...children);
  const first = hadFocus && node.querySelector('a, button');
  if (first instanceof HTMLElement) first.focus();
}

/** @param {number} ms @param {AbortSignal} [signal] @returns {Promise<void>} */
export const sleep = (ms, signal) => new Promise((resolve) => {
  const timer = setTimeout(resolve, ms);
  signal?.addEventListener('abort', () => (clearTimeout(timer), resolve()));
});

// ---- Requests

/** A request that the camera did not carry out; status 0: it does not answer. */
export class Refusal extends Error {
  /** @param {number} status @param {string} message @param {string} [parameter] */
  constructor(status, message, parameter) {
    super(message);
    this.status = status;
    this.parameter = parameter;
  }
}

/** Fires "online", "offline", and "saved" with the endpoint as detail. */
export const bus = new EventTarget();
export const link = { online: true, lastContact: performance.now() };
let underWay = 0;

/** @param {boolean} online */
function setOnline(online) {
  if (online) link.lastContact = performance.now();
  if (link.online === online) return;
  link.online = online;
  bus.dispatchEvent(new Event(online ? 'online' : 'offline'));
}

/** Answers a successful reply, or what `take` makes of it while the signal still counts. @param {string} url @param
 * {RequestInit & { accept?: string, limit?: number }} [options] limit: ms @param {(r: Response) => any} [take] */
export async function request(url, { accept = 'application/json', limit = 40000, signal, headers, ...init } = {},
  take = (response) => response) {
  const ended = new AbortController();
  const timer = setTimeout(() => ended.abort(), limit);
  if (signal?.aborted) ended.abort();
  signal?.addEventListener('abort', () => ended.abort());
  document.body.classList.toggle('busy', ++underWay > 0);
  try {
    const response = await fetch(url, { cache: 'no-cache', ...init, signal: ended.signal, headers: { Accept: accept,
      ...headers } });
    setOnline(true);
    if (!response.ok) throw refusalOf(response.status, await response.text());
    return await take(response);
  } catch (error) {
    if (error instanceof Refusal) throw error;
    if (signal?.aborted) throw new Refusal(0, 'ended');
    setOnline(false);
    throw new Refusal(0, 'The camera does not answer.');
  } finally {
    clearTimeout(timer);
    document.body.classList.toggle('busy', --underWay > 0);
  }
}

export const requestJson = (/** @type {string} */ url, options = {}) => request(url, options, (r) => r.json());

/** @param {number} status @param {string} body JSON, or lines KEY=VALUE, or another server's page */
function refusalOf(status, body) {
  try {
    const { message, parameter } = JSON.parse(body);
    return new Refusal(status, message || `Refused (${status}).`, parameter);
  } catch {
    return new Refusal(status, /^message=(.*)$/m.exec(body)?.[1] ?? `The camera refused the request (${status}).`);
  }
}

/** @param {Params | string} params a string: a form that is encoded already */
const form = (params) => typeof params === 'string' ? params :
  String(new URLSearchParams(Object.entries(params).map(([key, value]) => [key, String(value)])));

/** Asks whether there is a web server. @param {number} limit in milliseconds */
export const ping = (limit) => request('/console/style.css', { method: 'HEAD', accept: '*/*', limit });

/** @param {string} name @param {Params | string} [params] @param {AbortSignal} [signal] */
export const read = (name, params = {}, signal) =>
  requestJson(`/cgi-bin/${name}?${form(params)}`.replace(/\?$/, ''), { signal });

/** @param {string} name @param {Params | string} params */
export const change = (name, params) => requestJson(`/cgi-bin/${name}`, posted(form(params)));

/** The options of a request. @param {string} body a form @param {string} [accept] */
export const posted = (body, accept) =>
  ({ method: 'POST', body, accept, headers: { 'Content-Type': 'application/x-www-form-urlencoded' } });

/** Resolves once the page is visible and the camera answers. @param {AbortSignal} signal */
export async function awake(signal) {
  while (!signal.aborted && (document.hidden || !link.online)) {
    await new Promise((resolve) => {
      document.addEventListener('visibilitychange', resolve, { once: true });
      bus.addEventListener('online', resolve, { once: true });
      signal.addEventListener('abort', resolve, { once: true });
    });
  }
}

/** Calls `task` again and again while the page is visible and the camera answers, until `signal`. @param {AbortSignal}
 * signal @param {number} pause in milliseconds @param {() => Promise<unknown>} task */
export async function repeat(signal, pause, task) {
  for (;;) {
    await awake(signal);
    if (signal.aborted) return;
    await task().catch((error) => {
      if (!(error instanceof Refusal)) throw error;
    });
    await sleep(pause, signal);
  }
}

/** Spreads requests in time: one each half second. Of those that wait under one key, only the last is made. */
export class Pace {
  /** @type {Map<string, () => Promise<unknown>>} */
  #waiting = new Map();
  #runs = false;

  /** @param {string} key @param {() => Promise<unknown>} task which handles its own failure @param {boolean} [isUrgent]
   * what the person does goes before what the page watches */
  add(key, task, isUrgent = false) {
    if (isUrgent && !this.#waiting.has(key)) this.#waiting = new Map([[key, task], ...this.#waiting]);
    else this.#waiting.set(key, task);
    if (!this.#runs) void this.#run();
  }

  async #run() {
    this.#runs = true;
    while (this.#waiting.size) {
      const [[key, task]] = this.#waiting;
      this.#waiting.delete(key);
      await Promise.all([task(), sleep(550)]);
    }
    this.#runs = false;
  }
}

// ---- Names that hold any bytes, as characters 0 to 255

/** @param {string} text */
export const bytesOf = (text) => String.fromCharCode(...new TextEncoder().encode(text));

/** @param {string} bytes @returns {string} for people: U+FFFD stands for what is not UTF-8 */
export const textOf = (bytes) => new TextDecoder().decode(Uint8Array.from(bytes, (c) => c.charCodeAt(0)));

/** @param {string} bytes @param {RegExp} [plain] characters that stay */
export const encodeBytes = (bytes, plain = /[A-Za-z0-9_.-]/) =>
  Array.from(bytes, (c) => (plain.test(c) ? c : `%${c.charCodeAt(0).toString(16).padStart(2, '0')}`)).join('');

/** @param {string} text @param {RegExp} [code] what to decode */
export const decodeBytes = (text, code = /%([0-9a-f]{2})/gi) =>
  text.replace(code, (_, hex) => String.fromCharCode(parseInt(hex, 16)));

/** The names of a listing, exactly. JSON shows control characters as they are, but no bytes that are not UTF-8; text
 * does the opposite, and is asked for only if needed. @param {string} url @param {string[]} names those of JSON @param
 * {(text: string) => string[]} find those of text */
export async function exactNames(url, names, find) {
  if (!names.some((name) => name.includes('\ufffd'))) return names.map(bytesOf);
  const buffer = await request(url, { accept: 'text/plain' }, (reply) => reply.arrayBuffer());
  const found = find(Array.from(new Uint8Array(buffer), (byte) => String.fromCharCode(byte)).join(''));
  return names.map((name, i) => {
    if (!name.includes('\ufffd') || found[i] === undefined) return bytesOf(name);
    const hasControl = Array.from(name).some((c) => c < ' ' || c === '\x7f');
    return hasControl ? decodeBytes(found[i], /%([01][0-9A-F]|7F)/gi) : found[i];
  });
}

// ---- The description

/** Better words for names, or parts of them. What is not here is shown as it is, with a capital. */
const kWords = Object.fromEntries(`
  auth:authentication, autoexposure:automatic exposure, autogainctrl:automatic gain,
  backlightcomp:back-light compensation, bitrate:bit rate, current:display system, ddns:dynamic DNS, del:delete,
  dhcp:DHCP, dns1:DNS server 1, dns2:DNS server 2, dstauto:daylight saving by region, dstenable:daylight saving time,
  essid:network name, framerate:frame rate, ftp:FTP, httpexternalport:external HTTP port, httpport:HTTP port,
  icr:day/night switch, info:information, io:inputs and outputs, ip:IP address, ipaddr:IP address, irled:infrared LEDs,
  key1:WEP key, livevideo:live video needs login, macaddr:MAC address, maxexposuretime:longest exposure,
  mbmask:motion mask, method:clock set by, mic:microphone, mod:change, newname:new name, samplerate:sample rate,
  noisereduction:noise reduction, p:pan, t:tilt, z:zoom, pass:password, pir:infrared sensor, pppoe:PPPoE,
  privacy:privacy mode, profileid:profile, ptz:head, rel:step, rtspexternalport:external RTSP port, rtspport:RTSP port,
  rtspurl:RTSP path, sd:SD card, sdcard:SD card, sensor:image sensor, snapshoturl:snapshot needs login, sw:software,
  timeserver:NTP server, timestamp:on-screen display, timezone:time zone, upnp:UPnP, qualitymode:quality mode,
  urlentry:path, videoinformat:video format, user:account, whitebalance:white balance, reboot:restart, H264:H.264,
  MPEG4:MPEG-4, CBR:constant bit rate, Fixquality:fixed quality, datetime.cgi:clock, video.cgi:video profiles,
  audio.cgi:audio profiles`
  .split(',').map((pair) => pair.trim().split(':')));

/** @param {string} name of an endpoint, a parameter or a value */
export function words(name) {
  const text = kWords[name] ?? name.replace('.cgi', '').split('_').map((word) =>
    kWords[word] ?? word.replace(/^(in|out)(\d)$/, '$1put $2').replace(/^(ddns|pppoe)(?=\w)/, (kind) =>
    `${kWords[kind]} `)).join(' ');
  return text.charAt(0).toUpperCase() + text.slice(1);
}

/** What is known about the camera. administrator: that account's name; empty if another account is logged in.
 * @type {{ endpoints: Map<string, Endpoint>, tags: { name: string, description: string }[], administrator: string }} */
export const camera = { endpoints: new Map(), tags: [], administrator: '' };

/** @param {string} name @returns {Endpoint} one that the camera has */
export const endpointOf = (name) => /** @type {Endpoint} */ (camera.endpoints.get(name));

/** Whether the camera has the endpoint, and this account may call it. @param {string} name */
export const has = (name) =>
  camera.endpoints.has(name) && (!!camera.administrator || endpointOf(name).privilege !== 'administrator');

/** The endpoints of a subsystem that this account may call. @param {string} tag */
export const endpointsOf = (tag) => [...camera.endpoints.values()].filter((e) => e.tag === tag && has(e.name));

/** @param {string} name @param {string} field @param {Partial<Field>} [other] what is to be different */
export const fieldOf = (name, field, other = {}) =>
  ({ ...makeField(field, {}), ...endpointOf(name)?.fields.find((f) => f.name === field), ...other });

/** @param {string} name @param {any} schema @param {boolean} [required] @returns {Field} */
export function makeField(name, schema, required = false) {
  const parts = schema.anyOf ?? schema.oneOf ?? [schema];
  /** @type {[string, string][]} */
  const choices = [];
  const add = (/** @type {unknown} */ value) => choices.push([String(value), words(String(value))]);
  for (const part of parts) {
    if ('const' in part) choices.push([String(part.const), part.title ?? words(String(part.const))]);
    part.enum?.forEach(add);
    const few = parts.length > 1 ? 300 : 3 * (part.multipleOf ?? 1);
    if (part.maximum - part.minimum <= few) {
      for (let i = part.minimum; i <= part.maximum; i += part.multipleOf ?? 1) add(i);
    }
  }
  let { minimum: min, maximum: max, multipleOf: step = 1 } = schema;
  const numbers = choices.map(([value]) => Number(value));
  if (numbers.length > 4 && numbers.every((n, i) => n === numbers[0] + i * (numbers[1] - numbers[0]))) {
    [min, max, step] = [numbers[0], numbers[numbers.length - 1], numbers[1] - numbers[0]];
    choices.length = 0;
  }
  const { description = '', maxLength = 0 } = schema;
  const factory = schema.default ?? schema['x-factory'];
  const length = maxLength && maxLength !== schema.minLength ? `At most ${maxLength} characters` : '';
  const range = min === undefined ? length : `${min} to ${max}${step > 1 ? ` in steps of ${step}` : ''}`;
  return {
    name, label: schema.title ?? words(name), description, required, choices, min, max, step, maxLength,
    number: schema.type === 'integer' && !choices.length, unit: schema['x-unit'] ?? '',
    accepted: choices.length ? '' : schema['x-accepted'] ?? range, depends: !!schema['x-depends'],
    factory: factory === undefined ? undefined : String(factory), secret: /pass|secret|^key\d/.test(name),
    base64: schema.contentEncoding === 'base64' || /base64/.test(schema['x-accepted']),
  };
}

export async function loadDescription() {
  const api = await requestJson('/openapi.json');
  /** What a reference stands for. @param {any} node @returns {any} */
  const at = (node) => {
    /** @type {string[]} */
    const path = node?.$ref?.slice(2).split('/') ?? [];
    return path.length ? at(path.reduce((part, key) => part?.[key], api)) : node ?? {};
  };
  for (const [path, item] of Object.entries(api.paths)) {
    const name = /^\/cgi-bin\/([^/]+\.cgi)$/.exec(path)?.[1];
    if (!name) continue;
    const { get, post } = at(item);
    const operation = post ?? get;
    const body = at(at(post?.requestBody).content?.['application/x-www-form-urlencoded']?.schema);
    const fields = post
      ? Object.entries(body.properties ?? {}).map(([key, s]) => makeField(key, at(s), body.required?.includes(key)))
      : (get.parameters ?? []).map(at).map((/** @type {any} */ p) => makeField(p.name, at(p.schema), p.required));
    const reply = at(at(operation.responses?.['200']).content?.['application/json']?.schema);
    camera.endpoints.set(name, { name, title: words(name), summary: operation.summary ?? '', fields, changes: !!post,
      tag: operation.tags?.[0] ?? 'Other', privilege: operation['x-privilege'] ?? '', always: reply.required ?? [],
      records: operation['x-records']?.match(/\w+(?=`)/g) ?? [], stores: !/^none/.test(operation['x-records']) });
  }
  const tags = new Set([...camera.endpoints.values()].map(({ tag }) => tag));
  camera.tags = (api.tags ?? []).filter((/** @type {any} */ { name }) => tags.delete(name));
  for (const name of tags) camera.tags.push({ name, description: '' });
}

// ---- Messages

/** @param {Child} message @param {boolean} [bad] */
export function say(message, bad = false) {
  const toast = el('div', { class: bad ? 'toast bad' : 'toast' }, message);
  document.getElementById('toasts')?.append(toast);
  setTimeout(() => toast.remove(), bad ? 9000 : 4000);
}

/** @param {unknown} error */
export function report(error) {
  if (!(error instanceof Refusal)) throw error;
  if (error.message !== 'ended') say(error.parameter ? `${error.parameter}: ${error.message}` : error.message, true);
}

/** A button that shows at once that its action is under way, and does not start it twice. @param {Child} text @param
 * {() => unknown} action @param {Record<string, unknown>} [props] */
export function button(text, action, props = {}) {
  const node = el('button', { type: 'button', ...props }, text);
  node.addEventListener('click', async () => {
    if (node.getAttribute('aria-busy')) return;
    node.setAttribute('aria-busy', 'true');
    await Promise.resolve().then(action).catch(report);
    node.removeAttribute('aria-busy');
  });
  return node;
}

/** @param {number} kib */
export function size(kib) {
  const [unit, value] = kib < 1024 ? ['kilobyte', kib] : kib < 1048576 ? ['megabyte', kib / 1024]
    : ['gigabyte', kib / 1048576];
  return value.toLocaleString(undefined, { style: 'unit', unit, maximumFractionDigits: value < 10 ? 1 : 0 });
}

/** @param {string} text @returns {string} base64 of its UTF-8 */
export const toBase64 = (text) => btoa(bytesOf(text));

// ---- Values

/** @param {any} value @returns {string} */
function textOfValue(value) {
  if (Array.isArray(value)) return value.map(textOfValue).join(', ');
  if (!value || typeof value !== 'object') return String(value ?? '');
  return 'min' in value ? `${value.min} to ${value.max}` : Object.values(value).map(textOfValue).join(' ');
}

/** @param {Record<string, any>} reply @param {string[]} [skip] */
function values(reply, skip = []) {
  const list = el('dl', { class: 'values' });
  for (const [key, value] of Object.entries(reply)) {
    if (skip.includes(key)) continue;
    const cell = typeof value?.[0] === 'object' ? tableOf(words(key), value)
      : /^(on|off)$/.test(value) ? el('span', { class: `lamp ${value}` }, value) : bdi(textOfValue(value) || '–');
    list.append(el('dt', {}, words(key)), el('dd', {}, cell));
  }
  return list;
}

/** @param {string} label @param {Record<string, any>[]} entries */
function tableOf(label, entries) {
  const keys = [...new Set(entries.flatMap(Object.keys))];
  return table(label, keys.map(words), ...entries.map((entry) =>
    el('tr', {}, ...keys.map((key) => el('td', {}, bdi(textOfValue(entry[key])))))));
}

// ---- Fields

/** @param {Field} field @param {boolean} isSwitch @param {Record<string, unknown>} props @returns {any} */
function inputOf({ choices, number, min, max, step, maxLength, secret }, isSwitch, props) {
  if (isSwitch) return el('input', { type: 'checkbox', role: 'switch', ...props });
  if (choices.length) return el('select', props, ...choices.map(([value, text]) => new Option(text, value)));
  if (number) return el('input', { type: 'number', min, max, step, ...props });
  if (maxLength >= 200) return el('textarea', { rows: 3, spellcheck: false, ...props });
  return el('input', { type: secret ? 'password' : 'text', maxLength: maxLength || 2000, spellcheck: false,
    autocomplete: secret ? 'new-password' : 'off', ...props });
}

/** @param {Field} field @param {boolean} [isBlank] nothing is chosen at first */
export function controlOf(field, isBlank = false) {
  const { choices, factory, accepted, unit, base64, min, max, step } = field;
  const id = newId();
  const [hint, error] = ['hint', 'error'].map((name) => el('p', { class: name, id: newId() }));
  const [off, on] = [/^(off|no)$/, /^(on|yes)$/].map((word) => choices.find(([value]) => word.test(value))?.[0]);
  const isSwitch = !isBlank && choices.length === 2 && !!on && !!off;
  const input = inputOf(field, isSwitch, { id, name: field.name, required: field.required,
    'aria-describedby': `${error.id} ${hint.id}` });
  const note = el('p', { class: 'note' });
  const box = el('div', { class: 'control' }, input);
  if (isBlank && field.start) input.value = field.start;
  if (isBlank && choices.length && !field.required) input.prepend(new Option('–', '', true, true));
  if (field.number && (max - min) / step <= 300) box.append(sliderOf(field, input));
  if (unit) box.append(el('span', { class: 'unit' }, unit));
  if (field.secret) box.append(revealOf(input));
  const usual = isSwitch ? (factory === on ? 'on' : 'off')
    : choices.find(([value]) => value === factory)?.[1] ?? factory;
  hint.append(...prose(field.description), el('span', {}, accepted && ` ${accepted}.`,
    factory && factory.length < 80 && ` Factory value: ${usual}.`));
  const row = el('div', { class: isSwitch ? 'field switch' : 'field' }, el('label', { for: id }, field.label), box,
    error, note, hint);
  return {
    field, row, input,
    /** @returns {string} */
    get: () => isSwitch ? (input.checked ? on : off) : base64 ? toBase64(input.value) : input.value,
    /** @param {string} [value] undefined: the camera does not report it now */
    set: (value) => {
      row.classList.toggle('unused', value === undefined);
      input.checked = value === on;
      if (!isSwitch) input.value = base64 ? fromBase64(value ?? '') : value ?? '';
      // What is set need not be among what may be chosen.
      if (input.selectedIndex < 0) {
        input.prepend(new Option(value ? words(value) : 'not in use', value ?? '', true, true));
      }
      input.dispatchEvent(new Event('shown'));
    },
    /** @param {string} message empty: the value is accepted */
    fail: (message) => {
      error.textContent = message;
      input.setAttribute('aria-invalid', String(!!message));
    },
    /** @param {string} message */
    note: (message) => {
      note.textContent = message;
      row.classList.toggle('followed', !!message);
    },
  };
}

/** @param {string} text @returns {string} the text itself if it is not base64 */
function fromBase64(text) {
  try {
    return textOf(atob(text));
  } catch {
    return text;
  }
}

/** @param {Field} field @param {any} input */
function sliderOf({ min, max, step, label }, input) {
  const slider = el('input', { type: 'range', min, max, step, 'aria-label': `${label}, slider` });
  const follow = () => (slider.value = input.value);
  follow();
  input.addEventListener('input', follow);
  input.addEventListener('shown', follow);
  slider.addEventListener('input', () => {
    input.value = slider.value;
    input.dispatchEvent(new Event('input', { bubbles: true }));
  });
  return slider;
}

/** @param {HTMLInputElement} input */
function revealOf(input) {
  const reveal = button('Show', () => {
    input.type = input.type === 'password' ? 'text' : 'password';
    reveal.setAttribute('aria-pressed', String(input.type === 'text'));
  }, { class: 'quiet', 'aria-label': 'Show the password', 'aria-pressed': 'false' });
  return reveal;
}

/** @param {Control[]} controls @param {any} error @param {Element} at */
function showRefusal(controls, error, at) {
  if (!(error instanceof Refusal)) throw error;
  const control = controls.find(({ field }) => field.name === error.parameter);
  control?.fail(`Not accepted: ${error.message}`);
  at.classList.add('error');
  at.textContent = control ? 'Nothing was changed.' : error.message;
  return control;
}

/** A form that sends what is filled in; what `send` returns is shown below it. @param {Field[]} fields @param {string |
 * [string, string][]} actions its button, or several with value and text @param {(params: Params, action: string) =>
 * Promise<Child | void>} send @param {string} [look] */
export function actionForm(fields, actions, send, look = 'primary') {
  const controls = fields.map((field) => controlOf(field, true));
  const answer = el('div', { class: 'status', role: 'status' });
  let [go, ...more] = (typeof actions === 'string' ? [['', actions]] : actions).map(([value, text]) =>
    el('button', { class: look, value, onclick: (/** @type {any} */ event) => (go = event.currentTarget) }, text));
  const form = el('form', { noValidate: true }, ...controls.map(({ row }) => row),
    el('div', { class: 'buttons' }, go, ...more), answer);
  form.addEventListener('submit', async (event) => {
    event.preventDefault();
    if (form.querySelector('[aria-busy]')) return;
    go.setAttribute('aria-busy', 'true');
    controls.forEach((control) => control.fail(''));
    answer.className = 'status';
    answer.textContent = 'Under way…';
    const given = controls.filter(({ field, input }) => field.required || input.value);
    try {
      const params = Object.fromEntries(given.map(({ field, get }) => [field.name, get()]));
      answer.replaceChildren(el('div', {}, (await send(params, go.value)) || ''));
      for (const { input } of controls) if (/text|password/.test(input.type)) input.value = '';  // done with
    } catch (error) {
      showRefusal(controls, error, answer)?.input.focus();
    }
    go.removeAttribute('aria-busy');
  });
  return form;
}

/** Asks a question; resolves to whether it was done. The dialog stays until `send` succeeds.
 * @param {{ title: string, body?: Child[], action: string, cancel?: string, danger?: boolean, fields?: Field[],
 * send?: (params: Params) => Promise<unknown> }} question @returns {Promise<boolean>} */
export function ask({ title, body = [], action, cancel = 'Cancel', danger, fields = [], send }) {
  const [before, id] = [document.activeElement, newId()];
  let isDone = false;
  const form = actionForm(fields, action, async (params) => {
    await send?.(params);
    isDone = true;
    dialog.close();
  }, danger ? 'danger' : 'primary');
  const no = button(cancel, () => dialog.close());
  form.querySelector('.buttons')?.prepend(no);
  form.prepend(el('h2', { id }, title), ...body.map((child) => el('div', {}, child)));
  const dialog = el('dialog', { 'aria-labelledby': id }, form);
  document.body.append(dialog);
  dialog.showModal();
  (form.querySelector('input') ?? no).focus();
  return new Promise((resolve) => dialog.addEventListener('close', () => {
    dialog.remove();
    if (before instanceof HTMLElement) before.focus();
    resolve(isDone);
  }));
}

// ---- Cards

/** What a parameter like profileid chooses: the record that the others belong to. @param {Endpoint} endpoint */
function selectorOf({ fields }) {
  const [field, ...others] = fields.filter(({ required }) => required);
  const isOne = field && !others.length && fields.length > 1 && field.choices.every(([value]) => /^\d+$/.test(value));
  return isOne && field.choices.length ? field : undefined;
}

/** @param {Endpoint} endpoint @returns {'Settings' | 'Commands' | 'Information'} */
export function kindOf(endpoint) {
  const { fields, always, changes } = endpoint;
  if (!changes) return 'Information';
  const hasState = !fields.some(({ required }) => required) &&
    fields.some(({ name, factory, depends }) => factory !== undefined || (always.includes(name) && !depends));
  return hasState || (endpoint.stores && selectorOf(endpoint)) ? 'Settings' : 'Commands';
}

/** @param {Endpoint} endpoint @param {Options} options */
export function card(endpoint, options) {
  const node = section(options.title ?? endpoint.title, endpoint.name, el('p', { class: 'summary' },
    ...prose(endpoint.summary)));
  const heading = node.firstElementChild;
  if (options.level !== 2) heading?.replaceWith(el('h3', { id: heading.id }, heading.textContent));
  ({ Settings: settings, Commands: command, Information: information })[kindOf(endpoint)](node, endpoint, options);
  return node;
}

/** Calls `load` when the card comes into view, and again once the camera answers. @param {HTMLElement} node @param
 * {AbortSignal} signal @param {() => Promise<unknown>} load */
export function loadWhenSeen(node, signal, load) {
  const status = el('p', { class: 'status', role: 'status' }, 'Loading…');
  node.append(status);
  node.dataset.state = 'loading';
  const attempt = async () => {
    try {
      await awake(signal);
      await load();
      status.remove();
      node.dataset.state = 'ready';
    } catch (error) {
      if (!(error instanceof Refusal)) throw error;
      status.textContent = error.message;
      node.dataset.state = 'failed';
      if (!error.status) bus.addEventListener('online', attempt, { once: true, signal });
    }
  };
  const observer = new IntersectionObserver((entries) => {
    if (!entries.some(({ isIntersecting }) => isIntersecting)) return;
    observer.disconnect();
    void attempt();
  });
  observer.observe(node);
}

/** @param {HTMLElement} node @param {Endpoint} endpoint @param {Options} options */
function information(node, { name }, { signal }) {
  const box = el('div');
  const load = async () => box.replaceChildren(values(await read(name, {}, signal)));
  node.append(box);
  loadWhenSeen(node, signal, async () => {
    await load();
    node.append(el('div', { class: 'buttons' }, button('Read again', load)));
  });
}

/** Whether to ask before a command. @param {string} name */
const isGrave = (name) => /_(reset|format|reboot|delete|del)\.cgi$/.test(name);

/** @param {Endpoint} endpoint @param {Params} params */
export async function carryOut(endpoint, params) {
  const { name, title, summary } = endpoint;
  /** @type {Record<string, any>} */
  let reply = {};
  const send = async () => (reply = await change(name, params));
  const question = { title: `${title}?`, body: [el('p', {}, ...prose(summary)), values(params)], action: title, send };
  if (!isGrave(name)) await send();
  else if (!(await ask({ ...question, danger: true }))) return null;
  bus.dispatchEvent(new CustomEvent('saved', { detail: endpoint }));
  if (/^system_re/.test(name)) void (await import('./manage.js')).awaitRestart(name === 'system_reset.cgi');
  return el('div', {}, el('p', {}, 'Done.'), values(reply));
}

/** @param {HTMLElement} node @param {Endpoint} endpoint */
function command(node, endpoint) {
  const { fields: [only, ...others], fields, name } = endpoint;
  const look = isGrave(name) ? 'danger' : 'primary';
  if (others.length || !only?.required || !only.choices.length) {
    return node.append(actionForm(fields, 'Send', (params) => carryOut(endpoint, params), look));
  }
  const words = only.choices.filter(([value]) => value);
  if (words.length === 1) words[0][1] = endpoint.title;
  node.append(el('p', { class: 'hint' }, ...prose(only.description)), actionForm([], words, (_, value) =>
    carryOut(endpoint, { [only.name]: value }), words.length > 1 ? '' : look));
}

/** @param {HTMLElement} node @param {Endpoint} endpoint @param {Options} options */
function settings(node, endpoint, { signal, pace }) {
  const selector = selectorOf(endpoint);
  const key = selector && controlOf(selector);
  const controls = endpoint.fields.filter((field) => field !== selector).map((field) => controlOf(field));
  /** What the camera is known to have. @type {Map<Control, string>} */
  const saved = new Map();
  const status = el('p', { class: 'status', role: 'status' });
  const save = el('button', { class: 'primary', disabled: true }, 'Save');
  const undo = button('Undo', () => {
    for (const control of controls) control.set(saved.get(control));
    clear();
  }, { class: 'quiet', disabled: true });
  const fieldset = el('fieldset', { disabled: true, 'aria-label': endpoint.title }, ...controls.map(({ row }) => row));
  const more = el('div');
  const form = el('form', { noValidate: true }, key?.row, fieldset, more,
    pace ? status : el('div', { class: 'buttons' }, save, undo, status));
  node.append(form);

  const keyParams = () => (key ? { [key.field.name]: key.get() } : {});
  const changed = () => controls.filter((control) => saved.get(control) !== control.get());
  const mark = () => {
    const dirty = changed();
    for (const control of controls) control.row.classList.toggle('changed', !pace && dirty.includes(control));
    save.disabled = undo.disabled = !dirty.length;
  };
  const clear = (text = '') => {
    for (const control of controls) (control.fail(''), control.note(''));
    status.className = 'status';
    status.textContent = text;
    mark();
  };

  /** Fields that changed, but were not sent, are marked. @param {Record<string, any>} reply @param {Map<Control,
   * string>} [sent] */
  const show = (reply, sent) => {
    for (const control of controls) {
      const { name, choices } = control.field;
      const value = Array.isArray(reply[name]) && choices.length ? reply[name][0] : reply[name];
      const [before, given, kept] = [saved.get(control), sent?.get(control), control.get()];
      control.set(value === undefined ? undefined : String(value));
      const now = control.get();
      saved.set(control, now);
      // Set again while the request was under way, or not yet sent.
      if (before !== undefined && kept !== (given ?? before)) control.set(kept);
      const expected = given ?? before ?? now;
      control.note(reply.ignored?.includes(name) ? 'This had no effect.' : now === expected ? ''
        : given === undefined ? 'Changed along with it.' : 'The camera stored the nearest value.');
    }
    const names = [...endpoint.fields.map(({ name }) => name), 'ignored', 'warnings'];
    const warnings = (reply.warnings ?? []).map((/** @type {string} */ text) => el('p', { class: 'error' }, bdi(text)));
    const rest = values(reply, names);
    // The reply to a change need not have everything.
    if (rest.hasChildNodes() || warnings.length || !sent) more.replaceChildren(rest, ...warnings);
    mark();
  };
  const load = async () => {
    saved.clear();
    show(await read(endpoint.name, keyParams(), signal));
    fieldset.disabled = false;
  };
  const send = async () => {
    const sent = new Map(changed().map((control) => [control, control.get()]));
    if (!sent.size) return;
    clear('Saving…');
    const params = Object.fromEntries([...sent].map(([control, value]) => [control.field.name, value]));
    try {
      show(await change(endpoint.name, { ...keyParams(), ...params }), sent);
      status.textContent = 'Saved.';
      bus.dispatchEvent(new CustomEvent('saved', { detail: endpoint }));
      if (params.httpport && params.httpport !== (location.port || '80')) {
        void (await import('./manage.js')).awaitMove(Number(params.httpport));
      }
    } catch (error) {
      const control = showRefusal(controls, error, status);
      if (!pace) control?.input.focus();
    }
    mark();
  };
  form.addEventListener('input', ({ target }) => {
    if (target === key?.input) {
      fieldset.disabled = true;
      clear('Loading…');
      load().then(() => clear(), (error) => showRefusal([], error, status));
    } else {
      mark();
      if (!pace || !changed().length) return;
      status.textContent = 'Saving…';
      pace.add(endpoint.name, send, true);
    }
  });
  form.addEventListener('submit', (event) => (event.preventDefault(), void send()));
  const readAgain = () => {
    if (node.dataset.state !== 'ready') return;
    const again = () => read(endpoint.name, keyParams(), signal).then((reply) => show(reply), () => undefined);
    if (pace) pace.add(`read ${endpoint.name}`, again);
    else void again();
  };
  node.addEventListener('reread', readAgain);
  // Another endpoint may have changed the same records.
  bus.addEventListener('saved', (/** @type {any} */ { detail }) => detail !== endpoint &&
    endpoint.records.some((record) => detail.records.includes(record)) && readAgain(), { signal });
  loadWhenSeen(node, signal, load);
}
