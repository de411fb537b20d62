// The page Live: the picture, and beside it what turns the head and changes what is seen and heard.
import { Pace, ask, awake, bdi, bus, button, change, el, endpointOf, has, newId, read, repeat, report, request, say,
  sleep } from './core.js';
import { card, carryOut } from './form.js';

const kAngle = 60;  // that the picture shows from side to side, about
const kMaxStep = 32;

/** @param {HTMLElement} page @param {AbortSignal} signal */
export function show(page, signal) {
  const pace = new Pace();
  const head = has('ptz_move_rel.cgi') ? new Head(pace) : null;
  const side = el('div', { class: 'side' });
  page.append(el('div', { class: 'live' }, picture(signal, head), side));
  /** @param {...string} names */
  const cards = (...names) => names.filter(has).map((name) => card(endpointOf(name), { signal, pace }));
  if (head) panel(side, 'Head', () => head.controls(signal), true);
  if (has('sensor.cgi')) panel(side, 'Picture', () => [...cards('sensor.cgi'), resetSensor()], !head);
  const others = { Light: ['icr.cgi', 'irled.cgi', 'privacy.cgi'], Sound: ['mic.cgi', 'speaker.cgi'] };
  for (const [title, names] of Object.entries(others)) {
    if (names.some(has)) panel(side, title, () => cards(...names));
  }
  if (has('io.cgi')) panel(side, 'Inputs and outputs', (details) => inputs(details, cards('io.cgi', 'sw_input.cgi'), signal));
}

/**
 * A part of the side that loads when it is opened.
 * @param {HTMLElement} side @param {string} title @param {(details: HTMLDetailsElement) => Node[]} fill
 * @param {boolean} [isOpen]
 */
function panel(side, title, fill, isOpen = false) {
  const box = el('div', { class: 'inside' });
  const details = el('details', { class: 'card panel' }, el('summary', {}, el('h2', {}, title)), box);
  const key = `panel ${title}`;
  details.addEventListener('toggle', () => {
    sessionStorage.setItem(key, details.open ? '1' : '');
    if (details.open && !box.hasChildNodes()) box.append(...fill(details));
  });
  details.open = isOpen || sessionStorage.getItem(key) === '1';
  side.append(details);
}

const resetSensor = () => button('Factory values', async () => {
  const reply = await carryOut(endpointOf('sensor_reset.cgi'), { reset: 'go' });
  if (reply) document.querySelector('[data-endpoint="sensor.cgi"]')?.dispatchEvent(new Event('reread'));
}, { hidden: !has('sensor_reset.cgi') });

/** Inputs change by themselves. @param {HTMLDetailsElement} details @param {Node[]} cards @param {AbortSignal} signal */
function inputs(details, cards, signal) {
  void repeat(signal, 1000, async () => details.open && cards[0].dispatchEvent(new Event('reread')));
  return cards;
}

/** @param {AbortSignal} signal @param {Head | null} head */
function picture(signal, head) {
  const image = el('img', { alt: 'Live picture', draggable: false });
  const note = el('p', { class: 'overlay', role: 'status' }, 'Loading…');
  const stage = el('div', { class: 'stage' }, image, note);
  const id = newId();
  const count = Number(endpointOf('video.cgi')?.fields.find(({ name }) => name === 'profileid')?.choices.length) || 4;
  const profile = el('select', { id, name: 'profile' },
    ...Array.from({ length: count }, (_, i) => new Option(`Profile ${i + 1}`, String(i + 1))));
  profile.value = sessionStorage.getItem('profile') || '1';

  let failures = 0;
  // The fragment makes the browser ask again.
  const play = () => {
    note.textContent = 'Loading…';
    image.src = `/video.mjpg?profile=${profile.value}#${Date.now()}`;
  };
  const stop = () => image.removeAttribute('src');
  image.addEventListener('load', () => (failures = 0, note.textContent = ''));
  image.addEventListener('error', async () => {
    if (!image.hasAttribute('src') || signal.aborted) return;
    note.textContent = 'There is no picture. Trying again…';
    await sleep(1000 * Math.min(++failures, 5), signal);
    await awake(signal);
    if (!signal.aborted) play();
  });
  document.addEventListener('visibilitychange', () => (document.hidden ? stop() : play()), { signal });
  bus.addEventListener('online', play, { signal });
  bus.addEventListener('saved', (/** @type {any} */ { detail }) => detail.name === 'video.cgi' && play(), { signal });
  signal.addEventListener('abort', stop);
  profile.addEventListener('change', () => (sessionStorage.setItem('profile', profile.value), play()));
  play();

  const full = button('Full screen', async () => {
    if (document.fullscreenElement) await document.exitFullscreen();
    else await stage.requestFullscreen();
  });
  const keep = button('Save a snapshot', async () => {
    const response = await request(`/snapshot.jpg?profile=${profile.value}`, { accept: 'image/jpeg', cache: 'no-store' });
    const url = URL.createObjectURL(await response.blob());
    const time = new Date().toISOString().slice(0, 19).replace(/[:T]/g, '-');
    el('a', { href: url, download: `snapshot-${time}.jpg` }).click();
    setTimeout(() => URL.revokeObjectURL(url), 10000);
    say('The snapshot is saved.');
  });
  head?.listenOn(stage);
  return el('section', { class: 'view', 'aria-label': 'Picture' }, stage, el('div', { class: 'buttons' },
    el('label', { class: 'hide', for: id }, 'Profile'), profile, keep, full), head && el('p', { class: 'hint' },
    'Drag in the picture, or select it and use the arrow keys, to turn the head. The key Home turns it home.'));
}

/** The pan/tilt head. */
class Head {
  /** @param {Pace} pace */
  constructor(pace) {
    this.pace = pace;
    this.wanted = { p: 0, t: 0 };
    this.step = el('input', { type: 'range', min: 1, max: kMaxStep, value: 5, id: newId() });
    this.stepText = el('output', {}, '5');
    this.step.addEventListener('input', () => (this.stepText.textContent = this.step.value));
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
    this.pace.add('turn', () => this.#sendTurn(), true);
  }

  async #sendTurn() {
    const part = (/** @type {number} */ angle) => Math.max(-kMaxStep, Math.min(kMaxStep, Math.trunc(angle)));
    const step = { p: part(this.wanted.p), t: part(this.wanted.t) };
    if (!step.p && !step.t) return;
    this.wanted.p -= step.p;
    this.wanted.t -= step.t;
    await change('ptz_move_rel.cgi', step).catch((error) => {
      this.wanted = { p: 0, t: 0 };
      report(error);
    });
    if (Math.abs(this.wanted.p) >= 1 || Math.abs(this.wanted.t) >= 1) this.pace.add('turn', () => this.#sendTurn(), true);
  }

  /** @param {string} name @param {import('./core.js').Params} params */
  do(name, params) {
    this.wanted = { p: 0, t: 0 };
    this.place.textContent = 'Turning…';
    return new Promise((resolve, reject) =>
      this.pace.add(name, () => change(name, params).then(resolve, reject), true));
  }

  goHome() {
    return this.do('ptz_home.cgi', { act: 'go' });
  }

  /** The arrow keys. @param {KeyboardEvent} event */
  onKey(event) {
    const step = Number(this.step.value);
    const moves = { ArrowLeft: [-step, 0], ArrowRight: [step, 0], ArrowUp: [0, step], ArrowDown: [0, -step] };
    const move = moves[/** @type {keyof typeof moves} */ (event.key)];
    if (event.ctrlKey || event.altKey || event.metaKey || (!move && event.key !== 'Home')) return;
    event.preventDefault();
    if (move) this.turn(move[0], move[1]);
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

  /** @param {AbortSignal} signal @returns {Node[]} */
  controls(signal) {
    void this.#listPresets(signal).catch(report);
    void sleep(1000, signal).then(() => repeat(signal, 1000, async () =>
      this.place.closest('details')?.open && this.pace.add('position', () => this.#showPlace(signal))));
    const label = el('label', { htmlFor: this.step.id, class: 'label' }, 'Step: ', this.stepText);
    return [this.#pad(), this.place, label, this.step, ...this.#homeAndTours(), ...this.#presetControls(signal),
      ...(has('config_auto_patrol.cgi') ? [this.#route(signal)] : [])];
  }

  /** @param {AbortSignal} signal */
  #route(signal) {
    const details = el('details', { class: 'route' }, el('summary', {}, 'Route of the patrol'));
    details.addEventListener('toggle', () => details.children.length < 2 &&
      details.append(card(endpointOf('config_auto_patrol.cgi'), { signal, title: 'Route' })));
    return details;
  }

  /** @param {AbortSignal} signal */
  async #showPlace(signal) {
    if (!has('ptz_pos.cgi')) return;
    const { p, t } = await read('ptz_pos.cgi', {}, signal).catch(() => ({ p: '?', t: '?' }));
    const text = `Position: pan ${p}, tilt ${t}`;
    if (this.place.textContent !== text) this.place.textContent = text;
  }

  #pad() {
    /** @type {[string, string, number, number][]} */
    const keys = [['↖', 'Up and left', -1, 1], ['↑', 'Up', 0, 1], ['↗', 'Up and right', 1, 1], ['←', 'Left', -1, 0],
      ['⌂', 'Home', 0, 0], ['→', 'Right', 1, 0], ['↙', 'Down and left', -1, -1], ['↓', 'Down', 0, -1],
      ['↘', 'Down and right', 1, -1]];
    const pad = el('div', { class: 'pad', role: 'group', 'aria-label': 'Turn the head' }, ...keys.map(([sign, name, p, t]) => {
      const turn = () => this.turn(p * Number(this.step.value), t * Number(this.step.value));
      if (!p && !t) return button(sign, () => this.goHome(), { 'aria-label': name });
      const key = el('button', { type: 'button', 'aria-label': name, onclick: turn }, sign);
      let timer = 0;
      key.addEventListener('pointerdown', () => (timer = window.setInterval(turn, 400)));
      for (const end of ['pointerup', 'pointerleave', 'pointercancel']) {
        key.addEventListener(end, () => clearInterval(timer));
      }
      return key;
    }));
    pad.addEventListener('keydown', (event) => this.onKey(event));
    return pad;
  }

  #homeAndTours() {
    const act = (/** @type {string} */ text, /** @type {string} */ name, /** @type {string} */ word) =>
      has(name) && button(text, () => this.do(name, { act: word }).then(() => say(`${text}: done.`)));
    const hasStop = has('auto_pan.cgi');
    return [
      el('div', { class: 'buttons' }, act('Make this home', 'ptz_home.cgi', 'set'),
        act('Default home', 'ptz_home.cgi', 'reset')),
      el('div', { class: 'buttons' }, act('Start patrol', 'auto_patrol.cgi', 'go'), act('Auto pan', 'auto_pan.cgi', 'go'),
        act('Stop', hasStop ? 'auto_pan.cgi' : 'auto_patrol.cgi', 'stop')),
    ];
  }

  /** @param {AbortSignal} signal */
  #presetControls(signal) {
    const error = el('p', { class: 'error', id: newId() });
    const name = el('input', { id: newId(), name: 'preset', maxLength: 15, autocomplete: 'off',
      'aria-describedby': error.id });
    const save = button('Save position', async () => {
      error.textContent = '';
      name.setAttribute('aria-invalid', 'false');
      try {
        await this.#preset('add', name.value);
        name.value = '';
        await this.#listPresets(signal);
      } catch (refusal) {
        error.textContent = `Not accepted: ${/** @type {Error} */ (refusal).message}`;
        name.setAttribute('aria-invalid', 'true');
      }
    }, { type: 'submit' });
    const form = el('form', { noValidate: true }, el('label', { class: 'label', for: name.id }, 'New preset'),
      el('div', { class: 'control' }, name, save), error);
    form.addEventListener('submit', (event) => event.preventDefault());
    return has('ptz_preset.cgi') ? [el('h3', {}, 'Presets'), this.presets, form] : [];
  }

  /** @param {'add' | 'go' | 'del'} act @param {string} name */
  #preset(act, name) {
    return change('ptz_preset.cgi', { act, name });
  }

  /** @param {AbortSignal} signal */
  async #listPresets(signal) {
    if (!has('ptz_preset.cgi')) return;
    const { presets } = await read('ptz_preset_list.cgi', {}, signal);
    this.names = presets.map((/** @type {any} */ preset) => preset.name);
    const of = (/** @type {string} */ name) => el('span', { class: 'hide' }, ' ', bdi(name));
    this.presets.replaceChildren(...presets.map((/** @type {{ name: string, p: number, t: number }} */ preset) =>
      el('li', {}, button(bdi(preset.name), () => this.do('ptz_preset.cgi', { act: 'go', name: preset.name }),
        { class: 'go' }),
      button(el('span', {}, 'Rename', of(preset.name)), () => this.#rename(preset, signal), { class: 'quiet' }),
      button(el('span', {}, 'Delete', of(preset.name)), async () => {
        const body = [el('p', {}, bdi(preset.name))];
        if (await ask({ title: 'Delete this preset?', body, action: 'Delete', danger: true }) === null) return;
        await this.#preset('del', preset.name);
        await this.#listPresets(signal);
      }, { class: 'quiet' }))));
    if (!presets.length) this.presets.append(el('li', { class: 'soft' }, 'None yet.'));
  }

  /**
   * A preset gets its name when it is stored: the head goes there, stores the position anew and deletes the old preset.
   * @param {{ name: string, p: number, t: number }} preset @param {AbortSignal} signal
   */
  async #rename({ name, p, t }, signal) {
    const field = el('input', { value: name, maxLength: 15, 'aria-label': 'New name', autocomplete: 'off' });
    const fresh = await ask({ title: 'Rename the preset', body: [el('p', {}, bdi(name)),
      el('p', { class: 'soft' }, 'The head goes to the preset for that.')], action: 'Rename', field,
    accept: (value) => !!value && !this.names.includes(value) });
    if (fresh === null) return;
    await this.do('ptz_preset.cgi', { act: 'go', name });
    for (let at = { p: NaN, t: NaN }, tries = 0; at.p !== p || at.t !== t; ++tries) {
      if (tries > 60 || signal.aborted) throw new Error('The head does not reach the preset.');
      await sleep(500, signal);
      at = /** @type {any} */ (await read('ptz_pos.cgi', {}, signal));
    }
    const route = has('config_auto_patrol.cgi') ? (await read('config_auto_patrol.cgi')).presets : [];
    await this.#preset('add', fresh);
    await this.#preset('del', name);
    if (route.includes(name)) {
      const presets = route.map((/** @type {string} */ stop) => (stop === name ? fresh : stop)).join(',');
      await change('config_auto_patrol.cgi', { presets });
    }
    await this.#listPresets(signal);
  }
}
