// What every page uses: elements, requests, names of any bytes, the description of the camera, and messages.

/** @typedef {Node | string | number | null | undefined | false} Child */
/** @typedef {Record<string, string | number>} Params */
/**
 * A parameter. accepted: in words; depends: other settings can make the camera reject it; choices: value and text.
 * @typedef {{ name: string, label: string, description: string, accepted: string, unit: string, factory?: string,
 *   required: boolean, depends: boolean, choices: [string, string][], number: boolean, min: number, max: number,
 *   step: number, maxLength: number, secret: boolean, base64: boolean }} Field
 */
/**
 * records: that it changes or reads; changes: whether it takes a POST; always: the keys that each reply has.
 * @typedef {{ name: string, title: string, summary: string, tag: string, privilege: string, records: string[],
 *   changes: boolean, fields: Field[], always: string[] }} Endpoint
 */

/**
 * Creates an element. Texts become text nodes: no name or value is ever read as markup.
 * @template {keyof HTMLElementTagNameMap} K
 * @param {K} tag @param {Record<string, unknown>} [props] properties, or else attributes @param {...Child} children
 * @returns {HTMLElementTagNameMap[K]}
 */
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

/** @param {string} title @param {string} endpoint @param {...Child} content */
export function section(title, endpoint, ...content) {
  const id = newId();
  return el('section', { class: 'card', 'data-endpoint': endpoint, 'aria-labelledby': id }, el('h2', { id }, title),
    ...content);
}

/** @param {string} label @param {...Child} rows of the body @param {Child[]} head */
export const table = (label, head, ...rows) =>
  el('div', { class: 'scroll', tabIndex: 0, role: 'group', 'aria-label': label }, el('table', {}, el('thead', {},
    el('tr', {}, ...head.map((cell) => (cell instanceof Node ? cell : el('th', { scope: 'col' }, cell))))),
  el('tbody', {}, ...rows)));

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
export const link = { online: true, lastContact: Date.now() };
let underWay = 0;

/** @param {boolean} online */
function setOnline(online) {
  if (online) link.lastContact = Date.now();
  if (link.online === online) return;
  link.online = online;
  bus.dispatchEvent(new Event(online ? 'online' : 'offline'));
}

/**
 * @param {string} url @param {RequestInit & { accept?: string, limit?: number }} [options] limit: ms until the reply
 * @returns {Promise<Response>} a successful one
 */
export async function request(url, { accept = 'application/json', limit = 40000, signal, headers, ...init } = {}) {
  const ended = new AbortController();
  const abort = () => ended.abort();
  const timer = setTimeout(abort, limit);
  if (signal?.aborted) abort();
  signal?.addEventListener('abort', abort);
  document.body.classList.toggle('busy', ++underWay > 0);
  try {
    const options = { cache: /** @type {const} */ ('no-cache'), ...init, signal: ended.signal };
    const response = await fetch(url, { ...options, headers: { Accept: accept, ...headers } });
    setOnline(true);
    if (!response.ok) throw refusalOf(response.status, await response.text());
    return response;
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

/**
 * The state of an endpoint. @param {string} name @param {Params | string} [params] @param {AbortSignal} [signal]
 * @returns {Promise<Record<string, any>>}
 */
export const read = async (name, params = {}, signal) =>
  (await request(`/cgi-bin/${name}?${form(params)}`.replace(/\?$/, ''), { signal, cache: 'no-store' })).json();

/**
 * Changes something. @param {string} name @param {Params | string} params
 * @returns {Promise<Record<string, any>>}
 */
export const change = async (name, params) => (await post(`/cgi-bin/${name}`, form(params))).json();

/** @param {string} url @param {string} body a form @param {string} [accept] */
export const post = (url, body, accept) =>
  request(url, { method: 'POST', body, accept, headers: { 'Content-Type': 'application/x-www-form-urlencoded' } });

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

/**
 * Calls `task` again and again while the page is visible and the camera answers, until `signal`.
 * @param {AbortSignal} signal @param {number} pause in milliseconds @param {() => Promise<unknown>} task
 */
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

  /**
   * @param {string} key @param {() => Promise<unknown>} task which handles its own failure
   * @param {boolean} [isUrgent] what the person does goes before what the page watches
   */
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
      await Promise.all([task(), sleep(510)]);
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

/**
 * The names of a listing, exactly. JSON shows control characters as they are, but no bytes that are not UTF-8; text
 * does the opposite, and is asked for only if needed.
 * @param {string} url @param {string[]} names of the reply in JSON @param {(text: string) => string[]} find them in text
 */
export async function exactNames(url, names, find) {
  if (!names.some((name) => name.includes('\ufffd'))) return names.map(bytesOf);
  const buffer = await (await request(url, { accept: 'text/plain' })).arrayBuffer();
  const found = find(Array.from(new Uint8Array(buffer), (byte) => String.fromCharCode(byte)).join(''));
  return names.map((name, i) => {
    if (!name.includes('\ufffd') || found[i] === undefined) return bytesOf(name);
    // eslint-disable-next-line no-control-regex
    const hasControl = /[\0-\x1f\x7f]/.test(name);
    return found[i].replace(/%([01][0-9A-F]|7F)/gi, (all, hex) => hasControl ? String.fromCharCode(parseInt(hex, 16)) : all);
  });
}

// ---- The description

/** Better words for names, or parts of them. What is not here is shown as it is, with a capital. */
const kWords = Object.fromEntries(`act:action|auth:authentication|autoexposure:automatic exposure|autogainctrl:
automatic gain|backlightcomp:back-light compensation|bitrate:bit rate|current:display system|ddns:dynamic DNS|del:delete
|dhcp:DHCP|dns1:DNS server 1|dns2:DNS server 2|dstauto:daylight saving by region|dstenable:daylight saving time|essid:
network name (ESSID)|framerate:frame rate|ftp:FTP|httpexternalport:external HTTP port|httpport:HTTP port|icr:
day/night switch|info:information|io:inputs and outputs|ip:IP address|ipaddr:IP address|irled:infrared LEDs|key1:WEP key
|livevideo:live video needs login|macaddr:MAC address|maxexposuretime:longest exposure|mbmask:motion mask|method:
clock set by|mic:microphone|mod:change|newname:new name|noisereduction:noise reduction|p:pan|t:tilt|z:zoom|pass:password
|pir:infrared sensor|pppoe:PPPoE|privacy:privacy mode|profileid:profile|ptz:head|qualitymode:quality mode|rel:by a step
|rtspexternalport:external RTSP port|rtspport:RTSP port|rtspurl:RTSP path|samplerate:sample rate|sd:SD card|sdcard:
SD card|sensor:image sensor|showtime:show the time|snapshoturl:snapshot needs login|starttime:daylight saving starts|
stoptime:daylight saving ends|sw:software|timeserver:NTP server|timestamp:on-screen display|timezone:time zone|upnp:UPnP
|urlentry:path|user:account|whitebalance:white balance|reboot:restart|H264:H.264|MPEG4:MPEG-4|CBR:constant bit rate|
Fixquality:fixed quality|datetime.cgi:clock|video.cgi:video profiles|audio.cgi:audio profiles`.replace(/\n/g, '')
  .split('|').map((pair) => pair.split(':')));

/** @param {string} name of an endpoint, a parameter or a value */
export function words(name) {
  const text = kWords[name] ?? name.replace('.cgi', '').split('_').map((word) =>
    kWords[word] ?? word.replace(/^(in|out)(\d)$/, '$1put $2').replace(/^(ddns|pppoe)(?=\w)/, (part) => `${kWords[part]} `))
    .join(' ');
  return text.charAt(0).toUpperCase() + text.slice(1);
}

/**
 * What is known about the camera. administrator: that account's name; empty if another account is logged in.
 * port: the factory value of the HTTP port.
 * @type {{ endpoints: Map<string, Endpoint>, tags: { name: string, description: string }[], administrator: string,
 *   port: number }}
 */
export const camera = { endpoints: new Map(), tags: [], administrator: '', port: 80 };

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
  const api = await (await request('/openapi.json')).json();
  /** What a reference stands for. @param {any} node @returns {any} */
  const at = (node) => node?.$ref ?
    at(node.$ref.slice(2).split('/').reduce((/** @type {any} */ o, /** @type {string} */ k) => o?.[k], api)) : node ?? {};
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
      records: (operation['x-records'] ?? '').match(/\w+(?=`)/g) ?? [] });
  }
  camera.port = Number(fieldOf('httpport.cgi', 'httpport').factory ?? 80);
  const tags = new Set([...camera.endpoints.values()].map(({ tag }) => tag));
  camera.tags = (api.tags ?? []).filter((/** @type {any} */ { name }) => tags.delete(name));
  for (const name of tags) camera.tags.push({ name, description: '' });
}

// ---- Messages

/** Shows a message for some seconds. @param {Child} message @param {boolean} [bad] */
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

/**
 * A button that shows at once that its action is under way, and does not start it twice.
 * @param {Child} text @param {() => unknown} action @param {Record<string, unknown>} [props]
 */
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
