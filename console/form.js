// Forms, made from the description: a card for each endpoint, with its settings, its commands or what it reports.
import { Refusal, awake, bdi, bus, button, change, el, newId, prose, read, section, table, textOf, toBase64,
  words } from './core.js';

/** @typedef {import('./core.js').Endpoint} Endpoint */
/** @typedef {import('./core.js').Field} Field */
/** @typedef {import('./core.js').Params} Params */
/**
 * set: undefined is what the camera does not report now; fail: an empty message, if the value is accepted.
 * @typedef {{ field: Field, row: HTMLElement, input: any, get: () => string, set: (value?: string) => void,
 *   fail: (message: string) => void, note: (message: string) => void }} Control
 */
/** pace: changes are sent at once, through it. @typedef {{ signal: AbortSignal, title?: string, level?: number,
 *   pace?: import('./core.js').Pace }} Options */

// ---- Values

/** The text of a value in a reply. @param {any} value @returns {string} */
function textOfValue(value) {
  if (Array.isArray(value)) return value.map(textOfValue).join(', ');
  if (typeof value !== 'object') return String(value ?? '');
  return 'min' in value ? `${value.min} to ${value.max}` : Object.values(value).map(textOfValue).join(' ');
}

/** What a reply has, lists of entries as tables. @param {Record<string, any>} reply @param {string[]} [skip] */
export function values(reply, skip = []) {
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

const [kOn, kOff] = [/^(on|yes)$/, /^(off|no)$/];

/** @param {Field} field @param {RegExp} pattern @returns {string} the choice of this form, or nothing */
const choiceLike = ({ choices }, pattern) => choices.find(([value]) => pattern.test(value))?.[0] ?? '';

/** @param {Field} field @param {boolean} isSwitch @param {Record<string, unknown>} props @returns {any} */
function inputOf({ choices, number, min, max, step, maxLength, secret }, isSwitch, props) {
  if (isSwitch) return el('input', { type: 'checkbox', role: 'switch', ...props });
  if (choices.length) return el('select', props, ...choices.map(([value, text]) => new Option(text, value)));
  if (number) return el('input', { type: 'number', min, max, step, ...props });
  if (maxLength >= 200) return el('textarea', { rows: 3, spellcheck: false, ...props });
  return el('input', { type: secret ? 'password' : 'text', maxLength: maxLength || 2000, spellcheck: false,
    autocomplete: secret ? 'new-password' : 'off', ...props });
}

/** @param {Field} field @param {boolean} [isBlank] nothing is chosen at first @returns {Control} */
function controlOf(field, isBlank = false) {
  const { choices, factory, accepted, unit, base64, min, max, step } = field;
  const [id, hint, error] = [newId(), el('p', { class: 'hint', id: newId() }), el('p', { class: 'error', id: newId() })];
  const [on, off] = [choiceLike(field, kOn), choiceLike(field, kOff)];
  const isSwitch = !isBlank && choices.length === 2 && !!on && !!off;
  const input = inputOf(field, isSwitch, { id, name: field.name, required: field.required,
    'aria-describedby': `${error.id} ${hint.id}` });
  const note = el('p', { class: 'note' });
  const box = el('div', { class: 'control' }, input);
  if (isBlank && choices.length && !field.required) input.prepend(new Option('–', '', true, true));
  if (field.number && (max - min) / step <= 300) box.append(sliderOf(field, input));
  if (unit) box.append(el('span', { class: 'unit' }, unit));
  if (field.secret) box.append(revealOf(input));
  const usual = isSwitch ? (factory === on ? 'on' : 'off') : choices.find(([value]) => value === factory)?.[1] ?? factory;
  hint.append(...prose(field.description), el('span', {}, accepted && ` ${accepted}.`,
    factory && factory.length < 80 && ` Factory value: ${usual}.`));
  const row = el('div', { class: isSwitch ? 'field switch' : 'field' }, el('label', { for: id }, field.label), box, error,
    note, hint);
  return {
    field, row, input,
    get: () => isSwitch ? (input.checked ? on : off) : base64 ? toBase64(input.value) : input.value,
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
    fail: (message) => {
      error.textContent = message;
      input.setAttribute('aria-invalid', String(!!message));
    },
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

/** A slider beside a number. @param {Field} field @param {any} input */
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

/** Shows a refusal at its field, or else in `place`. @param {Control[]} controls @param {any} error @param {Element} place */
function showRefusal(controls, error, place) {
  if (!(error instanceof Refusal)) throw error;
  const control = controls.find(({ field }) => field.name === error.parameter);
  control?.fail(`Not accepted: ${error.message}`);
  place.classList.add('error');
  place.textContent = control ? 'Nothing was changed.' : error.message;
  return control;
}

/**
 * A form that sends what is filled in; what `send` returns is shown below it.
 * @param {Field[]} fields @param {string} action
 * @param {(params: Params) => Promise<import('./core.js').Child | void>} send @param {string} [look] of its button
 */
export function actionForm(fields, action, send, look = 'primary') {
  const controls = fields.map((field) => controlOf(field, true));
  const answer = el('div', { class: 'status', role: 'status' });
  const go = el('button', { class: look }, action);
  const form = el('form', { noValidate: true }, ...controls.map(({ row }) => row), el('div', { class: 'buttons' }, go),
    answer);
  form.addEventListener('submit', async (event) => {
    event.preventDefault();
    if (go.getAttribute('aria-busy')) return;
    go.setAttribute('aria-busy', 'true');
    controls.forEach((control) => control.fail(''));
    answer.className = 'status';
    answer.textContent = 'Under way…';
    const given = controls.filter(({ field, input }) => field.required || input.value);
    try {
      const params = Object.fromEntries(given.map(({ field, get }) => [field.name, get()]));
      answer.replaceChildren(el('div', {}, (await send(params)) || ''));
    } catch (error) {
      showRefusal(controls, error, answer)?.input.focus();
    }
    go.removeAttribute('aria-busy');
  });
  return form;
}

/**
 * Asks a question; resolves to whether it was done. The dialog stays until `send` succeeds.
 * @param {{ title: string, body?: import('./core.js').Child[], action: string, danger?: boolean, fields?: Field[],
 *   send?: (params: Params) => Promise<unknown> }} question
 * @returns {Promise<boolean>}
 */
export function ask({ title, body = [], action, danger, fields = [], send }) {
  const [before, id] = [document.activeElement, newId()];
  let isDone = false;
  const form = actionForm(fields, action, async (params) => {
    await send?.(params);
    isDone = true;
    dialog.close();
  }, danger ? 'danger' : 'primary');
  const cancel = button('Cancel', () => dialog.close());
  form.querySelector('.buttons')?.prepend(cancel);
  form.prepend(el('h2', { id }, title), ...body.map((child) => el('div', {}, child)));
  const dialog = el('dialog', { 'aria-labelledby': id }, form);
  document.body.append(dialog);
  dialog.showModal();
  (form.querySelector('input') ?? cancel).focus();
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
  return hasState || selectorOf(endpoint) ? 'Settings' : 'Commands';
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

/**
 * Calls `load` when the card comes into view, and again once the camera answers.
 * @param {HTMLElement} node @param {AbortSignal} signal @param {() => Promise<unknown>} load
 */
export function loadWhenSeen(node, signal, load) {
  const status = el('p', { class: 'status', role: 'status' }, 'Loading…');
  node.append(status);
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

/** Carries out a command, after a question if need be. @param {Endpoint} endpoint @param {Params} params */
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
  node.dataset.state = 'ready';
  const look = isGrave(name) ? 'danger' : 'primary';
  if (others.length || !only?.required || !only.choices.length) {
    return node.append(actionForm(fields, 'Send', (params) => carryOut(endpoint, params), look));
  }
  // A button for each word.
  const words = only.choices.filter(([value]) => value);
  node.append(el('p', { class: 'hint' }, ...prose(only.description)), ...words.map(([value, text]) =>
    actionForm([], words.length > 1 ? text : endpoint.title, () => carryOut(endpoint, { [only.name]: value }),
      words.length > 1 ? '' : look)));
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

  /** Fields that changed, but were not sent, are marked. @param {Record<string, any>} reply @param {Map<Control, string>} [sent] */
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
  bus.addEventListener('saved', (/** @type {any} */ { detail }) => {
    if (detail !== endpoint && endpoint.records.some((record) => detail.records.includes(record))) readAgain();
  }, { signal });
  loadWhenSeen(node, signal, load);
}

