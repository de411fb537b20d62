// The page API: every endpoint of the description, to try and to copy.
import { bdi, button, camera, el, encodeBytes, bytesOf, newId, prose, request, say } from './core.js';

/** @param {HTMLElement} page */
export function show(page) {
  const id = newId();
  const search = el('input', { id, type: 'search', name: 'search', autocomplete: 'off' });
  const count = el('p', { class: 'status', role: 'status' });
  page.append(el('p', {}, 'The whole interface is described in ', el('a', { href: '/openapi.json' }, '/openapi.json'),
    ' for programs.'), el('div', { class: 'control' }, el('label', { for: id }, 'Search'), search), count);
  /** @type {HTMLElement[]} */
  const all = [];
  for (const tag of camera.tags) {
    const items = [...camera.endpoints.values()].filter((endpoint) => endpoint.tag === tag.name).map(item);
    all.push(...items);
    page.append(el('section', { class: 'group-of' }, el('h2', {}, tag.name), el('p', { class: 'summary' }, tag.description),
      ...items));
  }
  const filter = () => {
    for (const node of all) node.hidden = !node.textContent?.toLowerCase().includes(search.value.toLowerCase());
    for (const group of page.querySelectorAll('.group-of')) {
      group.toggleAttribute('hidden', !group.querySelector('details:not([hidden])'));
    }
    count.textContent = `${all.filter((node) => !node.hidden).length} endpoints`;
  };
  search.addEventListener('input', filter);
  filter();
}

/** @param {import('./core.js').Endpoint} endpoint */
function item(endpoint) {
  const details = el('details', { class: 'card api', 'data-name': endpoint.name }, el('summary', {}, el('h3', {}, endpoint.name),
    el('span', { class: 'summary' }, ' ', ...prose(endpoint.summary))));
  details.addEventListener('toggle', () => details.children.length < 2 && details.append(trial(endpoint)));
  return details;
}

/** @param {import('./core.js').Endpoint} endpoint */
function trial({ name, fields, privilege, changes }) {
  const inputs = fields.map((field) => ({ field, input: el('input', { id: newId(), name: field.name, autocomplete: 'off',
    spellcheck: false }) }));
  const method = el('select', { id: newId(), name: 'method' }, new Option('GET'), ...(changes ? [new Option('POST')] : []));
  const format = el('select', { id: newId(), name: 'format' }, new Option('JSON', 'application/json'),
    new Option('Text', 'text/plain'));
  const command = el('pre', { class: 'scroll', tabIndex: 0, 'aria-label': 'Command' });
  const answer = el('pre', { class: 'scroll answer', tabIndex: 0, 'aria-label': 'Answer', role: 'status' });
  const given = () => inputs.filter(({ input }) => input.value !== '' || input.dataset.touched)
    .map(({ field, input }) => `${encodeBytes(bytesOf(field.name))}=${encodeBytes(bytesOf(input.value))}`).join('&');
  const target = () => {
    const isPost = method.value === 'POST';
    const query = given();
    return { url: `/cgi-bin/${name}${!isPost && query ? `?${query}` : ''}`, body: isPost ? query : undefined };
  };
  const write = () => {
    const { url, body } = target();
    const parts = ['curl', sessionStorage.getItem('hasPassword') && `--digest -u ${quote(camera.administrator || 'NAME')}`,
      format.value === 'application/json' && `-H 'Accept: application/json'`, body !== undefined && `--data ${quote(body)}`,
      quote(location.origin + url)];
    command.textContent = parts.filter(Boolean).join(' ');
  };
  const send = button('Try it', async () => {
    const { url, body } = target();
    const start = performance.now();
    answer.textContent = 'Under way…';
    const headers = body === undefined ? undefined : { 'Content-Type': 'application/x-www-form-urlencoded' };
    const options = { method: method.value, body, headers, accept: format.value, cache: /** @type {const} */ ('no-store') };
    const [status, text] = await request(url, options).then(async (response) => [response.status, await response.text()],
      ({ status, parameter, message }) => [status || 'no answer', parameter ? `${parameter}: ${message}` : message]);
    answer.replaceChildren(`${status}, ${Math.round(performance.now() - start)} ms\n`, bdi(text));
  }, { class: 'primary', type: 'submit' });
  const copy = button('Copy as curl', async () => {
    getSelection()?.selectAllChildren(command);
    // Without TLS a page has no other way.
    say(document.execCommand('copy') ? 'The command is copied.' : 'Copy the marked text.');
  });
  const form = el('form', { noValidate: true }, el('p', { class: 'hint' }, `Open to: ${privilege || 'every account'}.`),
    ...inputs.map(({ field, input }) => el('div', { class: 'field' }, el('label', { for: input.id },
      el('code', {}, field.name), field.required && ' (required)'), el('div', { class: 'control' }, input), el('p', { class: 'hint' },
      ...prose(`${field.description} ${field.accepted} ${field.choices.map(({ value }) => `\`${value}\``).join(', ')} ${field.unit}`)))),
    el('div', { class: 'buttons' }, el('label', { for: method.id }, 'Method'), method, el('label', { for: format.id }, 'Answer as'),
      format, send, copy), command, answer);
  form.addEventListener('submit', (event) => event.preventDefault());
  form.addEventListener('input', ({ target: changed }) => {
    if (changed instanceof HTMLInputElement) changed.dataset.touched = changed.value ? '1' : '';
    write();
  });
  write();
  return form;
}

/** For a shell. @param {string} text */
const quote = (text) => `'${text.replace(/'/g, `'\\''`)}'`;
