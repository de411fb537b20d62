// Cards made from the description: the settings of an endpoint, what it reports, or what it can be told to do.
import { Refusal, ask, awake, bdi, bus, button, change, el, newId, prose, read, report, textOf, toBase64,
  whenSeen, words } from './core.js';

/** @typedef {import('./core.js').Endpoint} Endpoint */
/** @typedef {import('./core.js').Field} Field */
/**
 * @typedef {object} Control
 * @property {Field} field
 * @property {HTMLElement} row
 * @property {HTMLElement} input
 * @property {() => string} get
 * @property {(value: string | undefined) => void} set undefined: the camera does not report it now
 * @property {(message: string) => void} fail empty: accepted
 * @property {(message: string) => void} note
 */
/**
 * @typedef {object} Options
 * @property {AbortSignal} signal the end of the page
 * @property {number} [level] of the heading
 * @property {string} [title]
 * @property {import('./core.js').Pace} [pace] a change is sent at once, through this
 */

const kOnWords = ['on', 'yes'];

/** A choice between off and on, or no and yes. @param {Field} field */
const isSwitch = ({ choices, required }) => choices.length === 2 && !required &&
  choices.some(({ value }) => kOnWords.includes(value)) && choices.some(({ value }) => /^(off|no)$/.test(value));

/** The text of a value in a reply. @param {any} value @returns {string} */
function textOfValue(value) {
  if (Array.isArray(value)) return value.map(textOfValue).join(', ');
  if (value && typeof value === 'object') {
    return 'min' in value ? `${value.min} to ${value.max}` : Object.values(value).map(textOfValue).join(' ');
  }
  return String(value ?? '');
}

/** The value as a parameter; a key that comes twice is a list of equal values. @param {any} value */
const asParameter = (value, /** @type {Field} */ field) => {
  if (!Array.isArray(value)) return value === undefined ? undefined : String(value);
  return field.choices.length ? String(value[0]) : value.join(',');
};

/** @param {string} text @returns {string} the text itself if it is not base64 */
function fromBase64(text) {
  try {
    return textOf(atob(text));
  } catch {
    return text;
  }
}

/** Several values of a reply: lists of entries as tables. @param {Record<string, any>} reply @param {string[]} [skip] */
export function values(reply, skip = []) {
  const list = el('dl', { class: 'values' });
  for (const [key, value] of Object.entries(reply)) {
    if (skip.includes(key)) continue;
    const isTable = Array.isArray(value) && value.length && typeof value[0] === 'object';
    list.append(el('dt', {}, words(key)), el('dd', {}, isTable ? table(value) : /^(on|off)$/.test(value) ? lamp(value)
      : bdi(textOfValue(value) || '–')));
  }
  return list;
}

/** @param {string} state */
const lamp = (state) => el('span', { class: `lamp ${state}` }, state);

/** @param {Record<string, any>[]} entries */
function table(entries) {
  const keys = [...new Set(entries.flatMap(Object.keys))];
  return el('div', { class: 'scroll', tabIndex: 0, role: 'group', 'aria-label': 'Table' }, el('table', {},
    el('thead', {}, el('tr', {}, ...keys.map((key) => el('th', { scope: 'col' }, words(key))))),
    el('tbody', {}, ...entries.map((entry) =>
      el('tr', {}, ...keys.map((key) => el('td', {}, bdi(textOfValue(entry[key])))))))));
}

/** The element that a field is set with. @param {Field} field @param {Record<string, unknown>} props */
function inputOf(field, props) {
  const { choices, number, min, max, step, maxLength = 0, secret } = field;
  if (isSwitch(field)) return el('input', { type: 'checkbox', role: 'switch', ...props });
  if (choices.length) return el('select', props, ...choices.map(({ value, text }) => new Option(text, value)));
  if (number) return el('input', { type: 'number', min, max, step, ...props });
  if (maxLength >= 200) return el('textarea', { rows: 3, spellcheck: false, ...props });
  return el('input', { type: secret ? 'password' : 'text', maxLength: maxLength || 2000, autocomplete:
    secret ? 'new-password' : 'off', spellcheck: false, ...props });
}

/** @param {Field} field @returns {Control} */
function controlOf(field) {
  const [id, hintId, errorId] = [newId(), newId(), newId()];
  const { choices, factory, number, min = NaN, max = NaN, step } = field;
  const input = inputOf(field, { id, name: field.name, 'aria-describedby': hintId });
  const label = el('label', { for: id }, field.label);
  const error = el('p', { class: 'error', id: errorId });
  const note = el('p', { class: 'note' });
  const factoryText = choices.find(({ value }) => value === factory)?.text ?? factory;
  const isOn = kOnWords.includes(factory ?? '') && isSwitch(field);
  const { accepted } = field;
  const facts = [/\.cgi/.test(accepted) ? accepted : accepted.charAt(0).toUpperCase() + accepted.slice(1),
    factory && factory.length < 80 && `Factory value: ${isSwitch(field) ? (isOn ? 'on' : 'off') : factoryText}`];
  const hint = el('p', { class: 'hint', id: hintId }, ...prose(field.description), ' ',
    el('span', { class: 'facts' }, facts.filter(Boolean).map((fact) => `${fact}. `).join('')));
  const box = el('div', { class: 'control' }, input);
  if (number && (max - min) / step <= 300) box.append(sliderOf(field, input));
  if (field.unit) box.append(el('span', { class: 'unit' }, field.unit));
  if (field.secret) box.append(revealOf(input));
  const row = el('div', { class: `field${isSwitch(field) ? ' switch' : ''}` }, label, box, error, note, hint);
  const [off, on] = [/^(off|no)$/, /^(on|yes)$/].map((w) => choices.find(({ value }) => w.test(value))?.value ?? '');
  return {
    field, row, input,
    get: () => {
      if (input instanceof HTMLInputElement && input.type === 'checkbox') return input.checked ? on : off;
      return field.base64 ? toBase64(input.value) : input.value;
    },
    set: (value) => {
      row.classList.toggle('unused', value === undefined);
      if (input instanceof HTMLInputElement && input.type === 'checkbox') {
        input.checked = value === on;
      } else {
        input.value = field.base64 ? fromBase64(value ?? '') : value ?? '';
        // What is set need not be among what may be chosen.
        if (input instanceof HTMLSelectElement && input.selectedIndex < 0) {
          input.prepend(new Option(value ? words(value) : 'not in use', value ?? '', true, true));
        }
      }
      input.dispatchEvent(new Event('shown'));
    },
    fail: (message) => {
      error.textContent = message;
      input.setAttribute('aria-invalid', String(!!message));
      input.setAttribute('aria-describedby', message ? `${errorId} ${hintId}` : hintId);
    },
    note: (message) => {
      note.textContent = message;
      row.classList.toggle('followed', !!message);
    },
  };
}

/** A slider beside a number. @param {Field} field @param {HTMLInputElement | any} input */
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

/** @param {HTMLInputElement | any} input */
export function revealOf(input) {
  const reveal = el('button', { type: 'button', class: 'quiet', 'aria-pressed': 'false' }, 'Show');
  reveal.setAttribute('aria-label', 'Show the password');
  reveal.addEventListener('click', () => {
    const shown = input.type === 'password';
    input.type = shown ? 'text' : 'password';
    reveal.setAttribute('aria-pressed', String(shown));
  });
  return reveal;
}

/** What a parameter like profileid chooses: the record that the others belong to. @param {Endpoint} endpoint */
function selectorOf({ fields }) {
  const required = fields.filter((field) => field.required);
  const [field] = required;
  const isOne = required.length === 1 && fields.length > 1 && field.number && Number(field.max) - Number(field.min) < 32;
  return isOne ? field : undefined;
}

/** Whether the endpoint has a state to show and to set; otherwise it is told to do something. @param {Endpoint} e */
function hasState(e) {
  if (selectorOf(e)) return true;
  return !e.fields.some((field) => field.required) &&
    e.fields.some((f) => f.factory !== undefined || (e.always.includes(f.name) && !f.depends));
}

/** @param {Endpoint} endpoint @returns {'Settings' | 'Commands' | 'Information'} */
export function kindOf(endpoint) {
  if (!endpoint.changes) return 'Information';
  return hasState(endpoint) ? 'Settings' : 'Commands';
}

/** @param {Endpoint} endpoint @param {Options} options @returns {HTMLElement} */
export function card(endpoint, options) {
  const id = newId();
  const { level = 3, title = endpoint.title } = options;
  const heading = el(level === 2 ? 'h2' : 'h3', { id }, title);
  const section = el('section', { class: 'card', 'data-endpoint': endpoint.name, 'aria-labelledby': id }, heading,
    el('p', { class: 'summary' }, ...prose(endpoint.summary)));
  const kinds = { Settings: settings, Commands: command, Information: information };
  kinds[kindOf(endpoint)](section, endpoint, options);
  return section;
}

/** Calls `load` when the card comes into view, and again once the camera answers.
 * @param {HTMLElement} section @param {AbortSignal} signal @param {() => Promise<void>} load */
function loadWhenSeen(section, signal, load) {
  const status = el('p', { class: 'status', role: 'status' }, 'Loading…');
  section.append(status);
  const attempt = async () => {
    try {
      await awake(signal);
      await load();
      status.remove();
      section.dataset.state = 'ready';
    } catch (error) {
      if (!(error instanceof Refusal) || signal.aborted) return;
      status.textContent = error.message;
      section.dataset.state = 'failed';
      if (!error.status) bus.addEventListener('online', attempt, { once: true, signal });
    }
  };
  whenSeen(section, attempt);
}

/** @param {HTMLElement} section @param {Endpoint} endpoint @param {Options} options */
function information(section, { name }, { signal }) {
  const box = el('div');
  const load = async () => box.replaceChildren(values(await read(name, {}, signal)));
  const again = button('Read again', load);
  again.hidden = true;
  section.append(box, again);
  loadWhenSeen(section, signal, async () => {
    await load();
    again.hidden = false;
  });
}

/** Whether to ask before a command. @param {string} name */
const isGrave = (name) => /_(reset|format|reboot|delete|del)\.cgi$/.test(name);

/**
 * Carries out a command; null if the person does not want it after all.
 * @param {Endpoint} endpoint @param {import('./core.js').Params} params
 */
export async function carryOut({ name, title, summary }, params) {
  const isAsked = isGrave(name);
  if (isAsked && (await ask({ title: `${title}?`, body: [el('p', {}, ...prose(summary))], action: title, danger: true }))
    === null) return null;
  const reply = await change(name, params);
  if (/^system_re/.test(name)) (await import('./system.js')).awaitRestart(name === 'system_reset.cgi');
  return reply;
}

/** @param {HTMLElement} section @param {Endpoint} endpoint */
function command(section, endpoint) {
  const { fields } = endpoint;
  const controls = fields.map(controlOf);
  const answer = el('div', { role: 'status', class: 'answer' });
  const run = async (/** @type {import('./core.js').Params} */ params) => {
    controls.forEach((control) => control.fail(''));
    answer.textContent = 'Under way…';
    try {
      const reply = await carryOut(endpoint, params);
      answer.replaceChildren(reply ? el('p', {}, 'Done.') : '', reply ? values(reply) : '');
      // As after a change of settings: what shows the same records reads them again.
      if (reply) bus.dispatchEvent(new CustomEvent('saved', { detail: endpoint }));
    } catch (error) {
      answer.replaceChildren();
      if (!showRefusal(controls, error)) report(error);
    }
  };
  section.dataset.state = 'ready';
  const [only] = fields;
  if (fields.length === 1 && only.required && only.choices.length) {  // a button for each word
    const buttons = only.choices.filter(({ value }) => value).map(({ value, text }) =>
      button(only.choices.length === 1 ? endpoint.title : text, () => run({ [only.name]: value }),
        { name: only.name, value, class: isGrave(endpoint.name) ? 'danger' : '' }));
    section.append(el('p', { class: 'hint' }, ...prose(only.description)), el('div', { class: 'buttons' }, ...buttons),
      answer);
    return;
  }
  for (const { input, field } of controls) {
    if (input instanceof HTMLSelectElement && !field.required) input.prepend(new Option('–', '', true, true));
  }
  const go = el('button', { class: isGrave(endpoint.name) ? 'danger' : 'primary' }, 'Send');
  const form = el('form', { noValidate: true }, ...controls.map(({ row }) => row), el('div', { class: 'buttons' }, go));
  form.addEventListener('submit', (event) => {
    event.preventDefault();
    const given = controls.filter(({ input, field }) =>
      input instanceof HTMLInputElement && input.type === 'checkbox' ? input.dataset.touched : controlValue(input) ||
        field.required);
    void run(Object.fromEntries(given.map((control) => [control.field.name, control.get()])));
  });
  form.addEventListener('input', ({ target }) => target instanceof HTMLElement && (target.dataset.touched = '1'));
  section.append(form, answer);
}

/** @param {HTMLElement | any} input @returns {string} */
const controlValue = (input) => input.value;

/** Shows a refusal at its field; false if it belongs to none. @param {Control[]} controls @param {unknown} error */
function showRefusal(controls, error) {
  const control = controls.find(({ field }) => error instanceof Refusal && field.name === error.parameter);
  if (!control || !(error instanceof Refusal)) return false;
  control.fail(`Not accepted: ${error.message}.`.replace(/\.\.$/, '.'));
  return true;
}

/** @param {HTMLElement} section @param {Endpoint} endpoint @param {Options} options */
function settings(section, endpoint, { signal, pace }) {
  const selector = selectorOf(endpoint);
  const controls = endpoint.fields.filter((field) => field !== selector).map(controlOf);
  /** @type {Map<Control, string>} what the camera is known to have */
  const saved = new Map();
  const key = selector && controlOf({ ...selector, choices: Array.from(
    { length: Number(selector.max) - Number(selector.min) + 1 }, (_, i) => String(Number(selector.min) + i))
    .map((value) => ({ value, text: value })), number: false });
  const keyParams = () => (key && selector ? { [selector.name]: key.get() } : {});
  const status = el('p', { class: 'status', role: 'status' });
  const save = el('button', { class: 'primary', disabled: true }, 'Save');
  const undo = el('button', { type: 'button', class: 'quiet', disabled: true }, 'Undo');
  const fieldset = el('fieldset', { disabled: true }, ...controls.map(({ row }) => row));
  fieldset.setAttribute('aria-label', endpoint.title);
  const more = el('div');
  const form = el('form', { noValidate: true }, key?.row, fieldset, more, pace ? status :
    el('div', { class: 'buttons' }, save, undo, status));
  section.append(form);

  const changed = () => controls.filter((control) => saved.get(control) !== control.get());
  const mark = () => {
    const dirty = changed();
    controls.forEach((control) => control.row.classList.toggle('changed', !pace && dirty.includes(control)));
    save.disabled = undo.disabled = !dirty.length;
  };
  const names = endpoint.fields.map(({ name }) => name);

  /** Shows a reply. Fields that changed, but were not sent, are marked. @param {Record<string, any>} reply */
  const show = (reply, /** @type {Map<Control, string> | undefined} */ sent = undefined) => {
    for (const control of controls) {
      const value = asParameter(reply[control.field.name], control.field);
      const before = saved.get(control);
      const given = sent?.get(control);
      // Set again while the request was under way, or not yet sent.
      const isTouched = before !== undefined && control.get() !== (given ?? before);
      const kept = control.get();
      control.set(value);
      saved.set(control, control.get());
      const now = control.get();
      if (isTouched) control.set(kept);
      const follows = before !== undefined && (given === undefined ? before !== now : given !== now);
      control.note(follows ? (given === undefined ? 'Changed along with it.' : 'The camera stored the nearest value.') : '');
    }
    const ignored = reply.ignored ?? [];
    for (const control of controls) if (ignored.includes(control.field.name)) control.note('This had no effect.');
    const rest = Object.fromEntries(Object.entries(reply).filter(([name]) =>
      !names.includes(name) && name !== 'ignored' && name !== 'warnings'));
    const warnings = (reply.warnings ?? []).map((/** @type {string} */ text) => el('p', { class: 'error' }, bdi(text)));
    // A reply to a change need not have everything.
    if (Object.keys(rest).length || warnings.length || !sent) more.replaceChildren(values(rest), ...warnings);
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
    controls.forEach((control) => (control.fail(''), control.note('')));
    status.className = 'status';
    status.textContent = 'Saving…';
    form.setAttribute('aria-busy', 'true');
    const params = Object.fromEntries([...sent].map(([control, value]) => [control.field.name, value]));
    try {
      const before = location.port;
      show(await change(endpoint.name, { ...keyParams(), ...params }), sent);
      status.textContent = 'Saved.';
      bus.dispatchEvent(new CustomEvent('saved', { detail: endpoint }));
      if ('httpport' in params && params.httpport !== (before || '80')) {
        (await import('./system.js')).awaitMove(Number(params.httpport));
      }
    } catch (error) {
      if (!(error instanceof Refusal)) throw error;
      const isShown = showRefusal(controls, error);
      status.className = 'status error';
      status.textContent = isShown ? 'Nothing was saved.' : error.message;
      if (isShown && !pace) controls.find(({ input }) => input.getAttribute('aria-invalid') === 'true')?.input.focus();
    }
    form.removeAttribute('aria-busy');
    mark();
  };
  form.addEventListener('input', ({ target }) => {
    if (target === key?.input) return;
    mark();
    if (pace && changed().length) {
      status.textContent = 'Saving…';
      pace.add(endpoint.name, send, true);
    }
  });
  form.addEventListener('submit', (event) => (event.preventDefault(), void send()));
  undo.addEventListener('click', () => {
    controls.forEach((control) => (control.set(saved.get(control)), control.fail('')));
    status.textContent = '';
    mark();
  });
  key?.input.addEventListener('input', () => {
    fieldset.disabled = true;
    status.textContent = 'Loading…';
    controls.forEach((control) => (control.fail(''), control.note('')));
    load().then(() => (status.textContent = ''), report);
  });
  // Another endpoint may have changed the same records.
  const readAgain = () => {
    if (section.dataset.state !== 'ready') return;
    const again = () => read(endpoint.name, keyParams(), signal).then((reply) => show(reply), () => undefined);
    if (pace) pace.add(`read ${endpoint.name}`, again);
    else void again();
  };
  bus.addEventListener('saved', (/** @type {any} */ { detail }) => {
    const isShared = detail.records.some((/** @type {string} */ record) => endpoint.records.includes(record));
    if (detail !== endpoint && isShared) readAgain();
  }, { signal });
  section.addEventListener('reread', readAgain);
  loadWhenSeen(section, signal, load);
}
