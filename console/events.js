// The page Events: what happens now, what happened in the last minutes, the rules, and the log.
import { Refusal, awake, bdi, bus, button, el, endpointOf, has, newId, read, repeat, report, request, sleep,
  words } from './core.js';

/** @typedef {{ at: number, kind: string, number: number, value: any }} Happening at: milliseconds, the camera's clock */
/** @typedef {{ key: string, label: string, on: boolean, level: number, text: string }} Sign */

const kWindow = 5 * 60000;
const kHolds = 5000;  // how long a report is true; the camera repeats it while it is

/** @type {Happening[]} */
const history = [];
let lastId = '0';
let lead = Infinity;  // of the browser's clock over the camera's

/** @param {Happening} happening @returns {Sign} */
function signOf({ kind, number, value }) {
  const on = value !== 0 && value !== 'off' && value !== false;
  const level = Number(value) || 0;
  const sound = { key: 'sound', label: 'Sound', level: level / 255, text: `level ${level}` };
  switch (kind) {
    case 'md': return { key: 'md', label: 'Motion', on: true, level: level / 100, text: `strength ${level}` };
    case 'audio_detected': return { ...sound, on: true };
    case 'audio_detect_val': return { ...sound, on: false };
    case 'storagefull': return { key: 'storage', label: 'Storage', on, level: 1, text: 'full' };
    case 'storagefail': return { key: 'storage', label: 'Storage', on, level: 1, text: 'failed' };
    case 'input':
    case 'output': return { key: `${kind}${number}`, label: `${words(kind)} ${number}`, on, level: 1, text: '' };
    default: return { key: kind, label: kLabels[kind] ?? words(kind), on, level: 1, text: '' };
  }
}
/** @type {Record<string, string>} */
const kLabels = { pir: 'Infrared sensor', recording: 'Recording', speaker_occupied: 'Speaker in use', mic_muted:
  'Microphone muted' };

/** Tells of all that the camera reports, until `signal`. @param {AbortSignal} signal @param {() => void} tell */
function listen(signal, tell) {
  return repeat(signal, 2000, async () => {
    const ended = new AbortController();
    const end = () => (document.hidden || signal.aborted) && ended.abort();
    let timer = setTimeout(() => ended.abort(), 40000);
    document.addEventListener('visibilitychange', end, { signal: ended.signal });
    signal.addEventListener('abort', end);
    try {
      const response = await request('/events', { accept: 'text/event-stream', signal: ended.signal, cache: 'no-store',
        headers: { 'Last-Event-ID': lastId } });
      const reader = /** @type {ReadableStream<Uint8Array>} */ (response.body).getReader();
      const decoder = new TextDecoder();
      for (let text = '';;) {
        const { done, value } = await reader.read();
        if (done) break;
        clearTimeout(timer);
        timer = setTimeout(() => ended.abort(), 40000);
        const blocks = (text + decoder.decode(value, { stream: true })).split('\n\n');
        text = blocks.pop() ?? '';
        blocks.forEach(take);
        tell();
      }
    } catch (error) {
      if (error instanceof Refusal && error.status) throw error;  // else the stream ended
    } finally {
      clearTimeout(timer);
      ended.abort();
    }
  });
}

/** @param {string} block an event, or a comment */
function take(block) {
  const data = /^data: ?(.*)$/m.exec(block)?.[1];
  if (!data) return;
  lastId = /^id: ?(.*)$/m.exec(block)?.[1] ?? lastId;
  const { time, kind, number = 0, value = 1 } = JSON.parse(data);
  const at = Date.parse(time);
  // The clock was set back.
  if (history.length && at < history[history.length - 1].at - 2000) {
    history.length = 0;
    lead = Infinity;
  }
  lead = Math.min(lead, Date.now() - at);
  history.push({ at, kind, number, value });
  while (history[0].at < at - kWindow - kHolds) history.shift();
}

const clock = new Intl.DateTimeFormat(undefined, { timeStyle: 'medium' });

/** @param {HTMLElement} page @param {AbortSignal} signal */
export function show(page, signal) {
  const isAllowed = has('notify.cgi');
  if (isAllowed) page.append(now(signal));
  page.append(el('div', { class: 'pair' }, has('event_info.cgi') && rules(signal), has('event_log.cgi') && log(signal)));
  if (has('motion.cgi')) {
    page.append(el('p', {}, 'What is detected and what follows: ', el('a', { href: '#/settings/Events' },
      'settings of events'), '.'));
  }
}

/** The signs that the camera can give, in their order. @returns {[string, string][]} */
function expected() {
  const has1 = (/** @type {string} */ name, /** @type {string} */ field) =>
    has(name) && endpointOf(name).fields.some((f) => f.name === field);
  return [['md', 'Motion'], ['sound', 'Sound'], ...(has1('motion.cgi', 'pir') ? [['pir', 'Infrared sensor']] : []),
    ['recording', 'Recording'], ['storage', 'Storage']].map(([key, label]) => [key, label]);
}

/** Lamps, the time line, and in words what came. @param {AbortSignal} signal */
function now(signal) {
  /** @type {Map<string, { tile: HTMLElement, strip: HTMLCanvasElement, line: HTMLElement }>} */
  const rows = new Map();
  const tiles = el('ul', { class: 'tiles' });
  const lines = el('div', { class: 'strips' });
  const recent = el('ol', { class: 'recent' });
  const state = el('p', { class: 'status', role: 'status' }, 'Listening…');
  const rowOf = (/** @type {string} */ key, /** @type {string} */ label) => {
    let row = rows.get(key);
    if (!row) {
      const tile = el('li', { 'data-sign': key });
      const strip = el('canvas', { height: 28 });
      const line = el('div', { class: 'strip' }, el('span', {}, label), strip);
      row = { tile, strip, line };
      rows.set(key, row);
      tiles.append(tile);
      lines.append(line);
    }
    return row;
  };
  for (const [key, label] of expected()) rowOf(key, label);

  const draw = () => {
    if (signal.aborted || document.hidden) return;
    const time = Date.now() - (Number.isFinite(lead) ? lead : 0);
    /** @type {Map<string, (Sign & { at: number })[]>} */
    const signs = new Map(expected().map(([key]) => [key, []]));
    /** @type {(Sign & { at: number })[]} */
    const began = [];
    /** @type {Map<string, number>} */
    const lastOn = new Map();
    for (const happening of history) {
      const sign = { ...signOf(happening), at: happening.at };
      signs.set(sign.key, [...(signs.get(sign.key) ?? []), sign]);
      if (!sign.on) continue;
      if (sign.at - (lastOn.get(sign.key) ?? -Infinity) > kHolds) began.push(sign);
      lastOn.set(sign.key, sign.at);
    }
    for (const [key, list] of signs) {
      const row = rowOf(key, list[0]?.label ?? key);
      const on = list.filter((sign) => sign.on);
      const last = on[on.length - 1];
      const isOn = !!last && time - last.at < kHolds;
      const newest = list[list.length - 1];
      const value = (isOn ? last.text : key === 'sound' && newest?.text) || (isOn ? 'on' : key === 'storage' ? 'ok' : 'off');
      row.tile.replaceChildren(el('span', { class: `lamp ${isOn ? 'on' : ''} ${key}` }, row.line.textContent),
        el('strong', {}, value), el('span', { class: 'soft' }, last ? `last ${clock.format(last.at)}` : 'not yet'));
      drawStrip(row.strip, list, time, key);
    }
    const items = began.slice(-8).reverse().map(({ at, label, text }) =>
      el('li', {}, el('time', {}, clock.format(at)), ` ${label} ${text}`));
    recent.replaceChildren(...(items.length ? items : [el('li', { class: 'soft' }, 'Nothing in the last minutes.')]));
  };
  let isDue = false;
  const tell = () => {
    state.textContent = 'Connected. New events appear by themselves.';
    if (isDue) return;
    isDue = true;
    setTimeout(() => (isDue = false, draw()), 100);
  };
  listen(signal, tell).catch((error) => (state.textContent = error.message, report(error)));
  const pause = matchMedia('(prefers-reduced-motion: reduce)').matches ? 5000 : 1000;
  void (async () => {
    for (; !signal.aborted; await sleep(pause, signal)) draw();
  })();
  bus.addEventListener('offline', () => (state.textContent = 'Not connected.'), { signal });
  const id = newId();
  return el('section', { class: 'card', 'aria-labelledby': id, 'data-endpoint': 'events' }, el('h2', { id }, 'Now'), tiles,
    el('h3', {}, 'The last five minutes'), el('div', { role: 'img', 'aria-label':
      'Time line of the last five minutes; the list below says the same in words' }, lines,
    el('div', { class: 'axis' }, ...['−5 min', '−4', '−3', '−2', '−1', 'now'].map((text) => el('span', {}, text)))),
    el('h3', {}, 'What began'), recent, state);
}

/** @param {HTMLCanvasElement} canvas @param {(Sign & { at: number })[]} signs @param {number} time @param {string} key */
function drawStrip(canvas, signs, time, key) {
  const scale = devicePixelRatio;
  const [width, height] = [canvas.clientWidth, canvas.clientHeight];
  canvas.width = width * scale;
  canvas.height = height * scale;
  const paint = /** @type {CanvasRenderingContext2D} */ (canvas.getContext('2d'));
  paint.scale(scale, scale);
  const style = getComputedStyle(canvas);
  const name = { md: '--motion', sound: '--sound', recording: '--rec', storage: '--rec' }[key] ?? '--input';
  paint.fillStyle = style.getPropertyValue(name);
  const second = Math.max(2, (width * 1200) / kWindow);
  for (const { at, on, level } of signs) {
    const x = width * (1 - (time - at) / kWindow);
    const tall = Math.max(2, Math.min(1, level) * height);
    paint.globalAlpha = on ? 1 : 0.35;
    if (on || key === 'sound') paint.fillRect(x, height - tall, second, tall);
  }
}

/** Which trigger can lead to which action. @param {AbortSignal} signal */
function rules(signal) {
  const id = newId();
  const box = el('div', { class: 'scroll', tabIndex: 0, role: 'group', 'aria-label': 'Table of the rules' });
  const section = el('section', { class: 'card', 'data-endpoint': 'event_info.cgi', 'aria-labelledby': id },
    el('h2', { id }, 'Rules'), el('p', { class: 'summary' }, 'Which event can lead to which action.'), box);
  const load = async () => {
    await awake(signal);
    const { name, events, handlers } = await read('event_info.cgi', {}, signal);
    const nice = (/** @type {string} */ word) => kRuleWords[word] ?? words(word).replace(/(\d)$/, ' $1');
    box.replaceChildren(el('table', {}, el('thead', {}, el('tr', {}, el('th', { scope: 'col' }, 'Event'),
      ...handlers.map((/** @type {string} */ h) => el('th', { scope: 'col', class: 'check' }, nice(h))))),
    el('tbody', {}, ...events.map((/** @type {string} */ e) => el('tr', {}, el('th', { scope: 'row' }, nice(e)),
      ...handlers.map((/** @type {string} */ h) => el('td', { class: 'check' },
        name.includes(`${e}-${h}`) || name.includes(`${e}-${h}-event`) ? '✓' : '–')))))));
    section.dataset.state = 'ready';
  };
  load().catch(report);
  return section;
}
/** @type {Record<string, string>} */
const kRuleWords = { md1: 'Motion', schedule: 'Schedule', cifs_rec: 'Record to a share', sd1_rec: 'Record to the card',
  mail_shot: 'Picture by mail', ftp_shot: 'Picture by FTP' };

/** The camera's log: with search, and its end as it grows. @param {AbortSignal} signal */
function log(signal) {
  const [id, searchId] = [newId(), newId()];
  const list = el('ol', {});
  const box = el('div', { class: 'log scroll', role: 'log', tabIndex: 0, 'aria-label': 'Lines of the log', 'aria-live': 'off' },
    list);
  const search = el('input', { id: searchId, type: 'search', name: 'search', autocomplete: 'off' });
  const count = el('p', { class: 'status', role: 'status' });
  /** @type {string[]} */
  let lines = [];
  let size = 0;
  const show = () => {
    const wanted = search.value.toLowerCase();
    const found = lines.filter((line) => line.toLowerCase().includes(wanted));
    list.replaceChildren(...found.slice(-500).map((line) => el('li', {}, bdi(line))));
    count.textContent = `${found.length} of ${lines.length} lines${found.length > 500 ? ', the newest 500 shown' : ''}`;
    box.scrollTop = box.scrollHeight;
  };
  const load = async () => {
    const response = await request(size ? `/log?after=${size}` : '/log', { accept: 'text/plain', signal, cache: 'no-store' });
    const text = await response.text();
    size = Number(response.headers.get('X-Log-Size')) || size;
    if (!text) return;
    lines = [...lines, ...text.replace(/\n$/, '').split('\n')].slice(-20000);
    show();
  };
  let following = new AbortController();
  const follow = el('input', { type: 'checkbox', role: 'switch', id: newId(), name: 'follow' });
  follow.addEventListener('change', () => {
    following.abort();
    following = new AbortController();
    signal.addEventListener('abort', () => following.abort());
    box.setAttribute('aria-live', follow.checked ? 'polite' : 'off');
    if (follow.checked) void repeat(following.signal, 2000, load);
  });
  search.addEventListener('input', show);
  void awake(signal).then(load).catch(report);
  return el('section', { class: 'card', 'data-endpoint': 'log', 'aria-labelledby': id }, el('h2', { id }, 'Log'),
    el('div', { class: 'control' }, el('label', { for: searchId }, 'Search'), search,
      button('Read again', load), el('label', { for: follow.id }, 'Follow'), follow), box, count);
}
