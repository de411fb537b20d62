// What every page uses: elements, requests, the description of the camera, questions and messages.

/** @typedef {Node | string | number | null | undefined | false} Child */
/** @typedef {Record<string, string | number>} Params */
/** @typedef {{ value: string, text: string }} Choice */
/**
 * A parameter of an endpoint, or a key of its reply.
 * @typedef {object} Field
 * @property {string} name
 * @property {string} label
 * @property {string} description
 * @property {string} accepted what is accepted, in words
 * @property {string} unit
 * @property {string | undefined} factory
 * @property {boolean} required
 * @property {boolean} depends whether other settings can make the camera reject it
 * @property {Choice[]} choices
 * @property {boolean} number
 * @property {number | undefined} min
 * @property {number | undefined} max
 * @property {number} step
 * @property {number | undefined} maxLength
 * @property {boolean} secret
 * @property {boolean} base64
 */
/**
 * @typedef {object} Endpoint
 * @property {string} name with .cgi
 * @property {string} title
 * @property {string} summary
 * @property {string} tag
 * @property {string} privilege
 * @property {string[]} records the settings records that it changes or reads
 * @property {boolean} changes whether it takes a POST
 * @property {Field[]} fields
 * @property {string[]} always the keys that each reply has
 */

/**
 * Creates an element. Children that are texts become text nodes: no name or value is ever read as markup.
 * @template {keyof HTMLElementTagNameMap} K
 * @param {K} tag
 * @param {Record<string, unknown>} [props] properties of the element, or else its attributes
 * @param {...Child} children
 * @returns {HTMLElementTagNameMap[K]}
 */
export function el(tag, props = {}, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(props)) {
    if (value === undefined || value === null) continue;
    if (name in node && !name.includes('-')) Reflect.set(node, name, value);
    else node.setAttribute(name, String(value));
  }
  node.append(...children.filter(isShown).map((child) => (child instanceof Node ? child : String(child))));
  return node;
}

/** @param {Child} child @returns {child is Node | string | number} */
const isShown = (child) => child !== null && child !== undefined && child !== false;

/** Text from outside, kept apart from the writing direction around it. @param {unknown} text */
export const bdi = (text) => el('bdi', {}, String(text));

/** A sentence of the description, in which backquotes mark code. @param {string} text @returns {Node[]} */
export const prose = (text) =>
  text.split('`').map((part, i) => (i % 2 ? el('code', {}, part) : document.createTextNode(part)));

let lastId = 0;
export const newId = () => `id${++lastId}`;

/** @param {number} ms @param {AbortSignal} [signal] @returns {Promise<void>} */
export const sleep = (ms, signal) =>
  new Promise((resolve) => {
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

/** @param {boolean} online */
function setOnline(online) {
  if (online) link.lastContact = Date.now();
  if (link.online === online) return;
  link.online = online;
  bus.dispatchEvent(new Event(online ? 'online' : 'offline'));
}

/**
 * @param {string} url
 * @param {RequestInit & { accept?: string, limit?: number }} [options] limit: milliseconds until the reply begins
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
    const response = await fetch(url, { ...init, headers: { Accept: accept, ...headers }, signal: ended.signal });
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
let underWay = 0;

/** @param {number} status @param {string} body JSON, or lines KEY=VALUE, or another server's page */
function refusalOf(status, body) {
  try {
    const { message, parameter } = JSON.parse(body);
    return new Refusal(status, message || `Refused (${status}).`, parameter);
  } catch {
    const message = /^message=(.*)$/m.exec(body)?.[1];
    const [, parameter, text] = /^([a-z]\w*): (.*)$/.exec(message ?? '') ?? [];
    return new Refusal(status, text ?? message ?? `The camera refused the request (${status}).`, parameter);
  }
}

/** Writes a parameter as a form does. @param {Params} params */
const form = (params) => new URLSearchParams(Object.entries(params).map(([key, value]) => [key, String(value)]));

/**
 * The state of an endpoint. @param {string} name @param {Params} [params] @param {AbortSignal} [signal]
 * @returns {Promise<Record<string, any>>}
 */
export async function read(name, params = {}, signal) {
  const query = String(form(params));
  return (await request(`/cgi-bin/${name}${query && '?'}${query}`, { signal, cache: 'no-store' })).json();
}

/**
 * Changes something. @param {string} name @param {Params | string} params a string: a form that is encoded already
 * @returns {Promise<Record<string, any>>}
 */
export async function change(name, params) {
  const body = typeof params === 'string' ? params : String(form(params));
  const headers = { 'Content-Type': 'application/x-www-form-urlencoded' };
  return (await request(`/cgi-bin/${name}`, { method: 'POST', body, headers })).json();
}

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
   * @param {boolean} [isUrgent] before those that wait: what the person does, rather than what the page watches
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

// ---- Names that hold any bytes

/** The bytes of a text as characters 0 to 255. @param {string} text */
export const bytesOf = (text) => String.fromCharCode(...new TextEncoder().encode(text));

/** @param {string} bytes @returns {string} for people: U+FFFD stands for what is not UTF-8 */
export const textOf = (bytes) => new TextDecoder().decode(Uint8Array.from(bytes, (c) => c.charCodeAt(0)));

/** @param {string} bytes @param {RegExp} [plain] characters that stay */
export const encodeBytes = (bytes, plain = /[A-Za-z0-9_.-]/) =>
  Array.from(bytes, (c) => (plain.test(c) ? c : `%${c.charCodeAt(0).toString(16).padStart(2, '0')}`)).join('');

/** A reply in text, byte for byte. @param {string} url @param {RequestInit} [init] */
export async function readBytes(url, init) {
  const bytes = new Uint8Array(await (await request(url, { accept: 'text/plain', ...init })).arrayBuffer());
  return Array.from(bytes, (b) => String.fromCharCode(b)).join('');
}

/**
 * The bytes of a name. JSON shows control characters as they are, but not bytes that are not UTF-8; text does the
 * opposite.
 * @param {string} json @param {string | undefined} text
 */
export function exactName(json, text) {
  if (!json.includes('\ufffd') || text === undefined) return bytesOf(json);
  // eslint-disable-next-line no-control-regex
  if (!/[\0-\x1f\x7f]/.test(json)) return text;
  return text.replace(/%([01][0-9A-F]|7F)/gi, (_, code) => String.fromCharCode(parseInt(code, 16)));
}

// ---- The description

/** Words of the field; what is not here is shown as it is, with a capital. @type {Record<string, string>} */
const kWords = {
  act: 'action', activekey: 'active key', 'audio.cgi': 'audio profiles', auth: 'authentication', autoexposure:
  'automatic exposure', autogainctrl: 'automatic gain', backlightcomp: 'back-light compensation', bitrate: 'bit rate',
  cgi: 'CGI', config: 'configure', cur: 'current', current: 'display system', ddns: 'dynamic DNS', del: 'delete',
  dgtalkie: 'talk', dhcp: 'DHCP', dns1: 'first DNS server', dns2: 'second DNS server', dstauto:
  'daylight saving by region', dstenable: 'daylight saving time', env: 'environment', essid: 'network name (ESSID)',
  framerate: 'frame rate', ftp: 'FTP', httpexternalport: 'external HTTP port', httpport: 'HTTP port',
  icr: 'day/night switch', info: 'information', io: 'inputs and outputs', ip: 'IP address', ipaddr: 'IP address',
  irled: 'infrared LEDs', key1: 'WEP key', lv: 'level', macaddr: 'MAC address', maxexposuretime: 'longest exposure',
  mbmask: 'motion mask', method: 'clock set by', mic: 'microphone', mod: 'change', newname: 'new name',
  noisereduction: 'noise reduction', p: 'pan', pagesize: 'page size', pass: 'password', pir: 'infrared sensor', pos:
  'position', pppoe: 'PPPoE', ddnshost: 'dynamic DNS host', ddnspass: 'dynamic DNS password', ddnsprovider:
  'dynamic DNS provider', ddnsuser: 'dynamic DNS account', pppoepass: 'PPPoE password', pppoeuser: 'PPPoE account',
  privacy: 'privacy mode', profileid: 'profile', ptz: 'head:', qualitymode: 'quality mode', rel: 'by a step',
  rtspexternalport: 'external RTSP port', rtspport: 'RTSP port', rtspurl: 'RTSP path', samplerate: 'sample rate', sd:
  'SD card', sdcard: 'SD card:', sensor: 'image sensor', showtime: 'show the time', snapshoturl: 'snapshot needs login',
  livevideo: 'live video needs login', starttime: 'daylight saving starts', stoptime: 'daylight saving ends', stream:
  'streams:', sw: 'software', system: 'camera:', t: 'tilt', timeserver: 'NTP server', timestamp: 'on-screen display',
  timezone: 'time zone', upnp: 'UPnP', urlentry: 'path', videoinformat: 'video input format', whitebalance:
  'white balance', wlansignal: 'wireless signal', wlansurvey: 'wireless networks', user: 'account', z: 'zoom', reboot:
  'restart', 'datetime.cgi': 'clock', action: 'send by', 'video.cgi': 'video profiles', kib: 'KiB', utcdate: 'UTC date', utctime:
  'UTC time', in1: 'input 1', in2: 'input 2', in3: 'input 3', in4: 'input 4', out1: 'output 1', out2: 'output 2', out3:
  'output 3', out4: 'output 4', H264: 'H.264', MPEG4: 'MPEG-4', CBR: 'constant bit rate', Fixquality: 'fixed quality',
};

/** @param {string} name of an endpoint, a parameter or a value */
export function words(name) {
  const text = name.split('_').map((word) => kWords[word] ?? word).join(' ').replace(/: (information)$/, ' $1');
  return text.charAt(0).toUpperCase() + text.slice(1).replace(/:$/, '');
}

/**
 * What is known about the camera. administrator: that account's name; empty if another account is logged in.
 * @type {{ endpoints: Map<string, Endpoint>, tags: { name: string, description: string }[], paths: any, port: number,
 *   administrator: string }}
 */
export const camera = { endpoints: new Map(), tags: [], paths: {}, port: 80, administrator: '' };

/** Whether the camera has the endpoint, and this account may call it. @param {string} name */
export const has = (name) =>
  camera.endpoints.has(name) && (!!camera.administrator || endpointOf(name).privilege !== 'administrator');

/** @param {string} name @returns {Endpoint} one that the camera has */
export const endpointOf = (name) => /** @type {Endpoint} */ (camera.endpoints.get(name));

/** @param {string} name @param {any} schema @param {boolean} [required] @returns {Field} */
function fieldOf(name, schema, required = false) {
  const parts = schema.anyOf ?? schema.oneOf ?? [schema];
  /** @type {Choice[]} */
  const choices = [];
  for (const part of parts) {
    if ('const' in part) choices.push({ value: String(part.const), text: part.title ?? words(String(part.const)) });
    for (const value of part.enum ?? []) choices.push({ value: String(value), text: words(String(value)) });
    for (let i = part.minimum; parts.length > 1 && i <= part.maximum; ++i) {
      if (part.maximum - part.minimum <= 300) choices.push({ value: String(i), text: String(i) });
    }
  }
  const { description = '', maxLength } = schema;
  let { minimum: min, maximum: max, multipleOf: step = 1 } = schema;
  if (max - min <= 3 * step && !choices.length) {
    for (let i = min; i <= max; i += step) choices.push({ value: String(i), text: String(i) });
  }
  const [first, second, ...others] = schema.enum ?? [];
  const isScale = schema.type === 'integer' && others.length > 2 &&
    others.every((/** @type {number} */ value, /** @type {number} */ i) => value === first + (i + 2) * (second - first));
  if (isScale) [min, max, step] = [first, others[others.length - 1], second - first];
  if (isScale) choices.length = 0;
  const number = schema.type === 'integer' && !choices.length;
  const steps = step > 1 ? ` in steps of ${step}` : '';
  const range = min === undefined ? '' : `${min} to ${max}${steps}`;
  const length = maxLength && maxLength !== schema.minLength ? `At most ${maxLength} characters` : '';
  const factory = schema.default ?? schema['x-factory'];
  return {
    name, description, required, choices, number, min, max, step, maxLength, label: schema.title ?? words(name),
    accepted: choices.length ? '' : schema['x-accepted'] ?? (range || length), unit: schema['x-unit'] ?? '',
    factory: factory === undefined ? undefined : String(factory), depends: schema['x-depends'] ?? false,
    secret: schema.format === 'password' || /pass|secret|^key\d/.test(name),
    base64: schema.contentEncoding === 'base64' || /base64/.test(schema['x-accepted']),
  };
}

export async function loadDescription() {
  const api = await (await request('/openapi.json')).json();
  /** @param {any} node @returns {any} what a reference stands for */
  const at = (node) =>
    node?.$ref ? at(node.$ref.slice(2).split('/').reduce((/** @type {any} */ o, /** @type {string} */ k) => o?.[k], api))
      : node ?? {};
  for (const [path, item] of Object.entries(api.paths)) {
    const { get, post } = at(item);
    const name = /^\/cgi-bin\/([^/]+\.cgi)$/.exec(path)?.[1];
    if (!name) continue;
    const operation = post ?? get;
    const body = at(at(post?.requestBody).content?.['application/x-www-form-urlencoded']?.schema);
    /** @type {Field[]} */
    const fields = post
      ? Object.entries(body.properties ?? {}).map(([key, s]) => fieldOf(key, at(s), body.required?.includes(key)))
      : (get.parameters ?? []).map(at).map((/** @type {any} */ p) =>
        fieldOf(p.name, { description: p.description, ...at(p.schema) }, p.required));
    camera.endpoints.set(name, {
      name, title: words(kWords[name] ?? name.slice(0, -4)), summary: operation.summary ?? '', tag: operation.tags?.[0] ?? 'Other',
      privilege: operation['x-privilege'] ?? '', records: (operation['x-records'] ?? '').match(/\w+(?=`)/g) ?? [],
      changes: !!post, fields, always: at(at(operation.responses?.['200']).content?.['application/json']?.schema)
        .required ?? [],
    });
  }
  camera.paths = api.paths;
  camera.port = Number(camera.endpoints.get('httpport.cgi')?.fields[0]?.factory ?? 80);
  const tags = new Set([...camera.endpoints.values()].map((endpoint) => endpoint.tag));
  const known = new Map((api.tags ?? []).map((/** @type {any} */ tag) => [tag.name, tag.description ?? '']));
  camera.tags = [...new Set([...known.keys(), ...tags])].filter((name) => tags.has(name))
    .map((name) => ({ name, description: known.get(name) ?? '' }));
}

// ---- Questions and messages

/** Shows a message for some seconds. @param {string | Node} message @param {boolean} [bad] */
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
 * Asks a question; null if it is cancelled. With `send`, the dialog stays until that succeeds, and shows a refusal at
 * its field.
 * @param {{ title: string, body?: Child[], action: string, danger?: boolean, field?: HTMLInputElement,
 *   accept?: (value: string) => boolean, send?: (value: string) => Promise<unknown> }} question
 * @returns {Promise<string | null>} the field's value
 */
export function ask({ title, body = [], action, danger = false, field, accept = () => true, send }) {
  const before = document.activeElement;
  const error = el('p', { class: 'error', id: newId(), role: 'alert' });
  const id = newId();
  const yes = el('button', { class: danger ? 'danger' : 'primary' }, action);
  const no = el('button', { type: 'button', onclick: () => dialog.close('') }, 'Cancel');
  const form = el('form', { noValidate: true }, el('h2', { id }, title), ...body, field, error,
    el('div', { class: 'buttons' }, no, yes));
  const dialog = el('dialog', { 'aria-labelledby': id }, form);
  field?.setAttribute('aria-describedby', error.id);
  const check = () => (yes.disabled = !accept(field?.value ?? ''));
  field?.addEventListener('input', check);
  check();
  form.addEventListener('submit', async (event) => {
    event.preventDefault();
    if (yes.getAttribute('aria-busy')) return;
    yes.setAttribute('aria-busy', 'true');
    try {
      await send?.(field?.value ?? '');
      dialog.close('yes');
    } catch (refusal) {
      error.textContent = `Not accepted: ${/** @type {Error} */ (refusal).message}`;
      field?.setAttribute('aria-invalid', 'true');
      field?.focus();
    }
    yes.removeAttribute('aria-busy');
  });
  document.body.append(dialog);
  dialog.showModal();
  (field ?? no).focus();
  return new Promise((resolve) =>
    dialog.addEventListener('close', () => {
      dialog.remove();
      if (before instanceof HTMLElement) before.focus();
      resolve(dialog.returnValue === 'yes' ? field?.value ?? '' : null);
    }));
}

/**
 * A button that shows at once that its action is under way, and does not start it twice.
 * @param {Child} text @param {(button: HTMLButtonElement) => Promise<unknown>} action
 * @param {Record<string, unknown>} [props]
 */
export function button(text, action, props = {}) {
  const node = el('button', { type: 'button', ...props }, text);
  node.addEventListener('click', async () => {
    if (node.getAttribute('aria-busy') === 'true') return;
    node.setAttribute('aria-busy', 'true');
    try {
      await action(node);
    } catch (error) {
      report(error);
    } finally {
      node.removeAttribute('aria-busy');
    }
  });
  return node;
}

/** Calls `load` once, when the element comes into view. @param {Element} node @param {() => void} load */
export function whenSeen(node, load) {
  const observer = new IntersectionObserver((entries) => {
    if (!entries.some((entry) => entry.isIntersecting)) return;
    observer.disconnect();
    load();
  });
  observer.observe(node);
}

/** @param {number} kib */
export function size(kib) {
  const unit = kib < 1024 ? 'kilobyte' : kib < 1048576 ? 'megabyte' : 'gigabyte';
  const value = kib / { kilobyte: 1, megabyte: 1024, gigabyte: 1048576 }[unit];
  return new Intl.NumberFormat(undefined, { style: 'unit', unit, maximumFractionDigits: value < 10 ? 1 : 0 })
    .format(value);
}

/** @param {string} text @returns {string} base64 of its UTF-8 */
export const toBase64 = (text) => btoa(bytesOf(text));
