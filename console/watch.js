// The pages Live and Events: what the camera sees, what turns it and changes its picture, and what happens.
import { Pace, Refusal, actionForm, ask, awake, bdi, bus, button, card, carryOut, change, el, endpointOf, fieldOf, has,
  isNear, link, loadWhenSeen, newId, ping, read, refill, repeat, report, request, say, section, sleep, table,
  words } from './core.js';

/** @import { Child, Params } from './core.js' */

const kAngle = 60;  // that the picture shows from side to side, about
const kMaxStep = 32;

/** @param {HTMLElement} page @param {AbortSignal} signal */
export function showLive(page, signal) {
  const pace = new Pace();
  const head = has('ptz_move_rel.cgi') ? new Head(pace, signal) : null;
  const side = el('div');
  page.append(el('div', { class: 'live' }, picture(signal, head), side));
  const cards = (/** @type {string[]} */ ...names) =>
    names.filter(has).map((name) => card(endpointOf(name), { signal, pace }));
  if (head) panel(side, 'Head', () => head.controls(), true);
  if (has('sensor.cgi')) {
    panel(side, 'Picture', () => {
      const [sensor] = cards('sensor.cgi');
      return [sensor, has('sensor_reset.cgi') && button('Factory values', async () => {
        if (await carryOut(endpointOf('sensor_reset.cgi'), { reset: 'go' })) sensor.dispatchEvent(new Event('reread'));
      })];
    }, !head);
  }
  const others = { Light: ['icr.cgi', 'irled.cgi', 'privacy.cgi'], Sound: ['mic.cgi', 'speaker.cgi'] };
  for (const [title, names] of Object.entries(others)) {
    if (names.some(has)) panel(side, title, () => cards(...names));
  }
  if (!has('io.cgi')) return;
  panel(side, 'Inputs and outputs', (details) => {
    const all = cards('io.cgi', 'sw_input.cgi');
    // Inputs change by themselves.
    void repeat(signal, 1000, async () => details.open && all[0].dispatchEvent(new Event('reread')));
    return all;
  });
}

/** A part of the side that loads when it is opened. @param {HTMLElement} side @param {string} title @param {(details:
 * HTMLDetailsElement) => Child[]} fill @param {boolean} [isOpen] */
function panel(side, title, fill, isOpen = false) {
  const box = el('div', { class: 'inside' });
  const details = el('details', { class: 'card' }, el('summary', {}, el('h2', {}, title)), box);
  details.addEventListener('toggle', () => {
    if (details.open && !box.hasChildNodes()) box.append(...fill(details).filter((node) => node instanceof Node));
  });
  details.open = isOpen;
  side.append(details);
}

/** @param {AbortSignal} signal @param {Head | null} head */
function picture(signal, head) {
  const image = el('img', { alt: 'Live picture', draggable: false });
  const note = el('p', { class: 'overlay', role: 'status' });
  const stage = el('div', { class: 'stage' }, image, note);
  const profile = el('select', { id: newId(), name: 'profile' },
    ...['1', '2', '3', '4'].map((number) => new Option(`Profile ${number}`, number)));
  // The fragment makes the browser ask again.
  const play = () => {
    note.textContent = 'Loading…';
    image.src = `/video.mjpg?profile=${profile.value}#${Date.now()}`;
  };
  const stop = () => image.removeAttribute('src');
  image.addEventListener('load', () => (note.textContent = ''));
  image.addEventListener('error', async () => {
    if (!image.hasAttribute('src')) return;
    note.textContent = 'There is no picture. Trying again…';
    await sleep(2000, signal);
    await awake(signal);
    if (!signal.aborted) play();
  });
  document.addEventListener('visibilitychange', () => (document.hidden ? stop() : play()), { signal });
  bus.addEventListener('online', play, { signal });
  bus.addEventListener('saved', (/** @type {any} */ { detail }) => detail.name === 'video.cgi' && play(), { signal });
  signal.addEventListener('abort', stop);
  profile.addEventListener('change', play);
  play();
  // The browser does not tell that a stream has ended.
  void repeat(signal, 1000, async () => performance.now() - link.lastContact > 1500 && ping(4000));
  const full = button('Full screen', () =>
    document.fullscreenElement ? document.exitFullscreen() : stage.requestFullscreen());
  const keep = button('Save a snapshot', async () => {
    const href = URL.createObjectURL(await request(`/snapshot.jpg?profile=${profile.value}`, { accept: 'image/jpeg' },
      (reply) => reply.blob()));
    const time = new Date().toISOString().slice(0, 19).replace(/[:T]/g, '-');
    el('a', { href, download: `snapshot-${time}.jpg` }).click();
    setTimeout(() => URL.revokeObjectURL(href), 10000);
    say('The snapshot is saved.');
  });
  head?.listenOn(stage);
  return el('section', { 'aria-label': 'Picture' }, stage, el('div', { class: 'buttons' },
    el('label', { class: 'hide', for: profile.id }, 'Profile'), profile, keep, full), head && el('p', { class: 'hint' },
    'To turn the head, drag in the picture, or select it and use the arrow keys; the key Home turns it home.'));
}

/** The pan/tilt head. */
class Head {
  /** @param {Pace} pace @param {AbortSignal} signal */
  constructor(pace, signal) {
    this.pace = pace;
    this.signal = signal;
    this.wanted = { p: 0, t: 0 };
    this.step = el('input', { type: 'range', min: 1, max: kMaxStep, value: 5, id: newId() });
    this.place = el('p', { class: 'soft', role: 'status' }, 'Position: …');
    this.presets = el('ul', { class: 'presets' });
    /** @type {string[]} */
    this.names = [];
  }

  /** Turns by an angle; angles that wait are sent together. @param {number} p @param {number} t */
  turn(p, t) {
    this.wanted.p += p;
    this.wanted.t += t;
    this.place.textContent = 'Turning…';
    this.pace.add('turn', async () => {
      const part = (/** @type {number} */ angle) => Math.max(-kMaxStep, Math.min(kMaxStep, Math.trunc(angle)));
      const step = { p: part(this.wanted.p), t: part(this.wanted.t) };
      if (!step.p && !step.t) return;
      this.wanted.p -= step.p;
      this.wanted.t -= step.t;
      await change('ptz_move_rel.cgi', step).catch(report);
      if (Math.hypot(this.wanted.p, this.wanted.t) >= 1) this.turn(0, 0);
    }, true);
  }

  /** @param {string} name @param {Params} params @returns {Promise<unknown>} */
  do(name, params) {
    this.wanted = { p: 0, t: 0 };
    this.place.textContent = 'Turning…';
    return new Promise((done, fail) => this.pace.add(name, () => change(name, params).then(done, fail), true));
  }

  goHome = () => this.do('ptz_home.cgi', { act: 'go' });

  /** @param {KeyboardEvent} event */
  onKey(event) {
    const step = Number(this.step.value);
    /** @type {Record<string, [number, number]>} */
    const moves = { ArrowLeft: [-step, 0], ArrowRight: [step, 0], ArrowUp: [0, step], ArrowDown: [0, -step] };
    const move = moves[event.key];
    if (event.ctrlKey || event.altKey || event.metaKey || (!move && event.key !== 'Home')) return;
    event.preventDefault();
    if (move) this.turn(...move);
    else this.goHome().catch(report);
  }

  /** Keys and dragging; the picture follows the pointer. @param {HTMLElement} stage */
  listenOn(stage) {
    stage.tabIndex = 0;
    stage.setAttribute('role', 'application');
    stage.setAttribute('aria-label', 'Picture; arrow keys turn the head');
    stage.classList.add('turns');
    stage.addEventListener('keydown', (event) => this.onKey(event));
    let x = 0, y = 0;
    stage.addEventListener('pointerdown', (event) => {
      if (event.button) return;
      [x, y] = [event.clientX, event.clientY];
      stage.setPointerCapture(event.pointerId);
    });
    stage.addEventListener('pointermove', (event) => {
      if (!stage.hasPointerCapture(event.pointerId)) return;
      const scale = kAngle / stage.clientWidth;
      this.turn((x - event.clientX) * scale, (event.clientY - y) * scale);
      [x, y] = [event.clientX, event.clientY];
    });
  }

  /** @returns {Child[]} */
  controls() {
    const act = (/** @type {string} */ text, /** @type {string} */ name, /** @type {string} */ word) =>
      has(name) && button(text, () => this.do(name, { act: word }).then(() => say(`${text}: done.`)));
    const stepText = el('output', {}, this.step.value);
    this.step.addEventListener('input', () => (stepText.textContent = this.step.value));
    void this.#listPresets().catch(report);
    void sleep(1000, this.signal).then(() => repeat(this.signal, 1000, async () =>
      this.place.closest('details')?.open && has('ptz_pos.cgi') && this.pace.add('position', () => this.#showPlace())));
    const route = el('details', {}, el('summary', {}, 'Route of the patrol'));
    route.addEventListener('toggle', () => route.children.length < 2 &&
      route.append(card(endpointOf('config_auto_patrol.cgi'), { signal: this.signal, title: 'Route' })));
    const save = () => actionForm([fieldOf('ptz_preset.cgi', 'name', { label: 'New preset' })], 'Save position',
      async (params) => {
        await change('ptz_preset.cgi', { act: 'add', ...params });
        await this.#listPresets();
        return 'Saved.';
      }, '');
    return [this.#pad(), this.place, el('label', { for: this.step.id, class: 'label' }, 'Step: ', stepText), this.step,
      el('div', { class: 'buttons' }, act('Make this home', 'ptz_home.cgi', 'set'),
        act('Default home', 'ptz_home.cgi', 'reset'), act('Start patrol', 'auto_patrol.cgi', 'go'),
        act('Auto pan', 'auto_pan.cgi', 'go'), act('Stop', 'auto_pan.cgi', 'stop')),
      ...(has('ptz_preset.cgi') ? [el('h3', {}, 'Presets'), this.presets, save()] : []),
      has('config_auto_patrol.cgi') && route];
  }

  async #showPlace() {
    const { p, t } = await read('ptz_pos.cgi', {}, this.signal).catch(() => ({ p: '?', t: '?' }));
    const text = `Position: pan ${p}, tilt ${t}`;
    if (this.place.textContent !== text) this.place.textContent = text;
  }

  #pad() {
    const keys = Array.from('↖↑↗←⌂→↙↓↘', (sign, i) => {
      const [p, t] = [(i % 3) - 1, 1 - Math.floor(i / 3)];
      const parts = [['down', '', 'up'][t + 1], ['left', '', 'right'][p + 1]].filter(Boolean);
      const title = words(parts.join(' and ') || 'home');
      const turn = () => this.turn(p * Number(this.step.value), t * Number(this.step.value));
      const key = button(sign, title === 'Home' ? this.goHome : turn, { 'aria-label': title, title });
      let timer = 0;
      if (title === 'Home') return key;
      key.addEventListener('pointerdown', () => (timer = window.setInterval(turn, 400)));
      for (const end of ['pointerup', 'pointerleave', 'pointercancel']) {
        key.addEventListener(end, () => clearInterval(timer));
      }
      return key;
    });
    const pad = el('div', { class: 'pad', role: 'group', 'aria-label': 'Turn the head' }, ...keys);
    pad.addEventListener('keydown', (event) => this.onKey(event));
    return pad;
  }

  async #listPresets() {
    if (!has('ptz_preset.cgi')) return;
    /** @type {{ presets: { name: string, p: number, t: number }[] }} */
    const { presets } = /** @type {any} */ (await read('ptz_preset_list.cgi', {}, this.signal));
    this.names = presets.map(({ name }) => name);
    refill(this.presets, ...presets.map(({ name, p, t }) => {
      const label = (/** @type {string} */ word) => el('span', {}, word, el('span', { class: 'hide' }, ' ', bdi(name)));
      return el('li', {}, button(bdi(name), () => this.do('ptz_preset.cgi', { act: 'go', name }), { class: 'go' }),
        button(label('Rename'), () => this.#rename(name, p, t), { class: 'quiet' }),
        button(label('Delete'), async () => {
          const send = () => change('ptz_preset.cgi', { act: 'del', name });
          await ask({ title: 'Delete this preset?', body: [bdi(name)], action: 'Delete', danger: true, send });
          await this.#listPresets();
        }, { class: 'quiet' }));
    }));
    if (!presets.length) this.presets.append(el('li', { class: 'soft' }, 'None yet.'));
  }

  /** A preset gets its name when it is stored: the head goes there, stores the position anew and deletes the old
   * preset. @param {string} name @param {number} p its pan @param {number} t its tilt */
  async #rename(name, p, t) {
    const send = async (/** @type {any} */ { name: fresh }) => {
      if (this.names.includes(fresh)) throw new Refusal(400, 'there is such a preset already', 'name');
      await this.do('ptz_preset.cgi', { act: 'go', name });
      for (let at = { p: NaN, t: NaN }, tries = 0; at.p !== p || at.t !== t; ++tries) {
        if (tries > 60 || this.signal.aborted) throw new Refusal(0, 'The head does not reach the preset.');
        await sleep(500, this.signal);
        at = /** @type {any} */ (await read('ptz_pos.cgi', {}, this.signal));
      }
      /** @type {string[]} */
      const route = has('config_auto_patrol.cgi') ? (await read('config_auto_patrol.cgi')).presets : [];
      await change('ptz_preset.cgi', { act: 'add', name: fresh });
      await change('ptz_preset.cgi', { act: 'del', name });
      const presets = route.map((stop) => (stop === name ? fresh : stop)).join(',');
      if (route.includes(name)) await change('config_auto_patrol.cgi', { presets });
    };
    await ask({ title: 'Rename the preset', body: [bdi(name), 'The head goes there for that.'], action: 'Rename', send,
      fields: [fieldOf('ptz_preset.cgi', 'name', { label: 'New name', description: '' })] });
    await this.#listPresets();
  }
}

// ---- Events

/** at: by the camera's clock. @typedef {{ at: number, kind: string, number: number, value: any }} Report */
/** What a report means. @typedef {{ key: string, on: boolean, level: number, text: string }} Sign */

const kWindow = 5 * 60000;
const kHolds = 2500;  // ms that a report is true; the camera repeats it each second while it is

/** @type {Report[]} */
const history = [];
let lastId = '0';
let lead = Infinity;  // of the browser's clock over the camera's

/** @type {Record<string, string>} */
const kLabels = { md: 'Motion', md1: 'Motion', speaker_occupied: 'Speaker in use', mail_shot: 'Picture by mail',
  ftp_shot: 'Picture by FTP', cifs_rec: 'Record to a share', sd1_rec: 'Record to the card' };
/** @param {string} key */
const labelOf = (key) => kLabels[key] ?? words(key).replace(/\d+$/, ' $&');

/** @param {Report} report @returns {Sign} */
function signOf({ kind, number, value }) {
  const level = Number(value) || 0;
  const on = value !== 0 && value !== 'off' && value !== false;
  if (kind === 'md') return { key: kind, on: true, level: level / 100, text: `strength ${level}` };
  if (/^audio_detect/.test(kind)) {
    return { key: 'sound', on: kind === 'audio_detected', level: level / 255, text: `level ${level}` };
  }
  const storage = /^storage(.*)/.exec(kind)?.[1];
  if (storage) return { key: 'storage', on, level: 1, text: storage };
  return { key: /^(in|out)put$/.test(kind) ? kind + number : kind, on, level: 1, text: value === 2 ? 'failed' : '' };
}

/** Tells when the camera has reported something, or why it does not. @param {AbortSignal} signal
 * @param {(problem?: string) => void} tell */
const listen = (signal, tell) => repeat(signal, 2000, async () => {
  const ended = new AbortController();
  const end = () => ended.abort();
  document.addEventListener('visibilitychange', end, { signal: ended.signal });
  signal.addEventListener('abort', end, { signal: ended.signal });
  try {
    const response = await request('/events', { accept: 'text/event-stream', signal: ended.signal,
      headers: { 'Last-Event-ID': lastId } });
    const reader = /** @type {ReadableStream<Uint8Array>} */ (response.body).getReader();
    const decoder = new TextDecoder();
    for (let text = '';;) {
      const timer = setTimeout(end, 40000);  // a line comes every fifteen seconds
      const { done, value } = await reader.read().finally(() => clearTimeout(timer));
      if (done) break;
      const blocks = (text + decoder.decode(value, { stream: true })).split('\n\n');
      text = blocks.pop() ?? '';
      blocks.forEach(take);
      tell();
    }
  } catch (error) {
    if (error instanceof Refusal) tell(error.message);  // else the stream ended
  }
  end();
});

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

/** @param {number} at */
const timeText = (at) => new Date(at).toLocaleTimeString(undefined, { timeStyle: 'medium' });

/** @param {HTMLElement} page @param {AbortSignal} signal */
export function showEvents(page, signal) {
  page.append(has('notify.cgi') ? now(signal) : '');
  if (isNear) page.append(el('p', {}, 'Simulate events: ', el('a', { href: '#/system' }, 'System'), '.'));
  if (has('event_log.cgi')) page.append(log(signal));
  if (has('event_info.cgi')) page.append(rules(signal));
}

/** @param {AbortSignal} signal */
function now(signal) {
  /** @type {Map<string, { tile: HTMLElement, strip: HTMLCanvasElement }>} */
  const rows = new Map();
  const [tiles, strips, recent] = [el('ul', { class: 'tiles' }), el('div'), el('ol')];
  const state = el('p', { class: 'status', role: 'status' }, 'Listening…');
  const rowOf = (/** @type {string} */ key) => {
    const row = rows.get(key) ?? { tile: el('li', { 'data-sign': key }), strip: el('canvas') };
    if (!rows.has(key)) {
      tiles.append(row.tile);
      strips.append(el('div', { class: 'strip' }, el('span', {}, labelOf(key)), row.strip));
    }
    rows.set(key, row);
    return row;
  };
  ['md', 'sound', 'recording', 'storage'].forEach(rowOf);
  if (fieldOf('motion.cgi', 'pir').factory !== undefined) rowOf('pir');

  const draw = () => {
    if (signal.aborted || document.hidden) return;
    const time = Date.now() - (Number.isFinite(lead) ? lead : 0);
    const signs = history.map((happening) => ({ ...signOf(happening), at: happening.at }));
    for (const { key } of signs) rowOf(key);
    const began = [];
    for (const [key, { tile, strip }] of rows) {
      const all = signs.filter((sign) => sign.key === key);
      const on = all.filter((sign) => sign.on);
      began.push(...on.filter(({ at }, i) => !i || at - on[i - 1].at > kHolds));
      const [last, newest] = [on[on.length - 1], all[all.length - 1]];
      const isOn = !!last && time - last.at < kHolds;
      const text = isOn ? last.text || 'on' : key === 'storage' ? 'ok' : (key === 'sound' && newest?.text) || 'off';
      tile.replaceChildren(el('span', { class: `lamp ${key} ${isOn ? 'on' : ''}` }, labelOf(key)),
        el('strong', {}, text), el('span', { class: 'soft' }, last ? `last ${timeText(last.at)}` : 'none seen yet'));
      drawStrip(strip, all, time, key);
    }
    began.sort((a, b) => b.at - a.at);
    recent.replaceChildren(...began.slice(0, 8).map(({ at, key, text }) =>
      el('li', {}, el('time', {}, timeText(at)), ` ${labelOf(key)} ${text}`)));
    if (!began.length) recent.append(el('li', { class: 'soft' }, 'Nothing in the last minutes.'));
  };
  let isDue = false;
  void listen(signal, (problem = 'Connected. What happens appears by itself.') => {
    state.textContent = problem;
    if (!isDue) setTimeout(() => (isDue = false, draw()), 100);
    isDue = true;
  });
  const pause = matchMedia('(prefers-reduced-motion: reduce)').matches ? 5000 : 1000;
  void (async () => {
    for (; !signal.aborted; await sleep(pause, signal)) draw();
  })();
  const axis = ['−5 min', '−4', '−3', '−2', '−1', 'now'].map((text) => el('span', {}, text));
  return section('Now', 'events', tiles, el('h3', {}, 'The last five minutes'), el('div', { role: 'img', 'aria-label':
    'Time line of the last five minutes; the list below says the same in words' }, strips,
  el('div', { class: 'axis' }, ...axis)), el('h3', {}, 'What began'), recent, state);
}

/** @param {HTMLCanvasElement} canvas @param {(Sign & { at: number })[]} signs @param {number} time
 * @param {string} key */
function drawStrip(canvas, signs, time, key) {
  const { clientWidth: width, clientHeight: height } = canvas;
  canvas.width = width * devicePixelRatio;
  canvas.height = height * devicePixelRatio;
  const paint = /** @type {CanvasRenderingContext2D} */ (canvas.getContext('2d'));
  paint.scale(devicePixelRatio, devicePixelRatio);
  const name = { md: '--accent', sound: '--sound', recording: '--bad', storage: '--bad' }[key] ?? '--good';
  paint.fillStyle = getComputedStyle(canvas).getPropertyValue(name);
  for (const { at, on, level } of signs) {
    const tall = Math.max(2, Math.min(1, level) * height);
    paint.globalAlpha = on ? 1 : 0.35;
    if (on || key === 'sound') {
      paint.fillRect(width * (1 - (time - at) / kWindow), height - tall, Math.max(2, (width * 1200) / kWindow), tall);
    }
  }
}

/** @param {AbortSignal} signal */
function rules(signal) {
  const box = el('div');
  const node = section('Rules', 'event_info.cgi', el('p', { class: 'summary' },
    'Which event can lead to which action. ', el('a', { href: '#/settings/Events' }, 'Settings')), box);
  loadWhenSeen(node, signal, async () => {
    /** @type {Record<string, string[]>} */
    const { name, events, handlers } = await read('event_info.cgi', {}, signal);
    box.replaceChildren(table('Rules', ['Event', ...handlers.map(labelOf)], ...events.map((e) =>
      el('tr', {}, el('th', { scope: 'row' }, labelOf(e)), ...handlers.map((h) => el('td', {},
        name.includes(`${e}-${h}`) || name.includes(`${e}-${h}-event`) ? '✓' : '–'))))));
  });
  return node;
}

/** @param {AbortSignal} signal */
function log(signal) {
  const list = el('ol');
  const box = el('div', { class: 'log scroll', role: 'log', tabIndex: 0, 'aria-label': 'Lines of the log', 'aria-live':
    'off' }, list);
  const search = el('input', { id: newId(), type: 'search', name: 'search', autocomplete: 'off' });
  const follow = el('input', { type: 'checkbox', role: 'switch', id: newId(), name: 'follow' });
  const count = el('p', { class: 'status', role: 'status' });
  /** @type {string[]} */
  let lines = [];
  let size = 0;
  const fill = () => {
    const found = lines.filter((line) => line.toLowerCase().includes(search.value.toLowerCase()));
    list.replaceChildren(...found.slice(-500).map((line) => el('li', {}, bdi(line))));
    count.textContent = `${found.length} of ${lines.length} lines, at most 500 shown`;
    box.scrollTop = box.scrollHeight;
  };
  const load = async () => {
    const [bytes, total] = await request(`/log${size ? `?after=${size}` : ''}`, { accept: 'text/plain', signal },
      async (reply) => [await reply.arrayBuffer(), Number(reply.headers.get('X-Log-Size'))]);
    // The camera may have forgotten what was read.
    if (total - bytes.byteLength !== size) lines = [];
    size = total;
    lines = [...lines, ...new TextDecoder().decode(bytes).split('\n').filter(Boolean)].slice(-20000);
    if (bytes.byteLength || !lines.length) fill();
  };
  follow.addEventListener('change', () => box.setAttribute('aria-live', follow.checked ? 'polite' : 'off'));
  void repeat(signal, 2000, async () => follow.checked && load());
  search.addEventListener('input', fill);
  const node = section('Log', 'log', el('div', { class: 'control' }, el('label', { for: search.id }, 'Search'), search,
    button('Read again', load), el('label', { for: follow.id }, 'Follow'), follow), box, count);
  loadWhenSeen(node, signal, load);
  return node;
}
