// A card of settings in the console, used as a person does.
import assert from 'node:assert/strict';
import { eventually } from './console.js';

const kSave = { name: 'Save', exact: true };

// What a person might try in a field, until one is accepted.
function* tries(field) {
  if (field.type === 'checkbox') yield 'toggle';
  yield* field.options.filter(value => value !== field.value);
  if (field.type === 'number') yield* [field.min, field.max].filter(value => value !== field.value);
  if (field.tag === 'TEXTAREA' || /text|password/.test(field.type)) yield* ['a1', '10.1.2.3', '2026-11-26', '1,2'];
}

export const describeFields = card => card.locator('fieldset').locator('input:not([type=range]), select, textarea').evaluateAll(nodes =>
  nodes.map(({ name, type, tagName, value, min, max, maxLength, options, required }) => ({ name, type, tag: tagName, value, min, max,
    maxLength, required, options: [...options ?? []].map(option => option.value) })));

async function put(input, field, value) {
  if (value === 'toggle') return input.click();
  return field.tag === 'SELECT' ? input.selectOption(value) : input.fill(value);
}

// Saves the card; returns the name of the field at which a refusal stands, 'form' if none, or '' if it is saved.
export async function save(card) {
  await card.getByRole('button', kSave).click();
  const status = card.locator('form .status');
  await eventually(() => status.textContent(), /^(?!Saving)./);
  if (await status.textContent() === 'Saved.') return '';
  assert.match(await status.getAttribute('class'), /error/);
  const [at] = await card.locator('[aria-invalid=true]').evaluateAll(nodes => nodes.map(node => node.name));
  if (at) assert.match(await card.locator('.field .error:not(:empty)').textContent(), /^Not accepted: ./);
  return at ?? 'form';
}

async function undo(card) {
  const button = card.getByRole('button', { name: 'Undo' });
  if (await button.isEnabled()) await button.click();
}

// The fields of a card that refuse what is over their bound; each refusal has to stand at its field.
export async function refuse(card, name, fields) {
  for (const field of fields) {
    const over = field.type === 'number' ? String(Number(field.max) + 1) : 'x'.repeat(field.maxLength + 1);
    if (field.type === 'number' ? field.max === '' : !(field.maxLength > 0 && field.maxLength < 2000)) continue;
    const input = card.locator(`fieldset [name="${field.name}"]:not([type=range])`);
    // Typed, it would be cut.
    await input.evaluate((node, text) => {
      node.value = text;
      node.dispatchEvent(new Event('input', { bubbles: true }));
    }, over);
    assert.equal(await save(card), field.name, `${name} ${field.name}=${over}`);
    await undo(card);
  }
}

export async function change(camera, card, name, fields) {
  // The record that the card shows, such as a profile.
  const keys = await card.locator('form > .field select').evaluateAll(nodes => nodes.map(({ name, value }) => [name, value]));
  const said = async () => JSON.stringify((await camera.get(`/cgi-bin/${name}`, Object.fromEntries(keys))).json);
  for (const field of fields) {
    const input = card.locator(`fieldset [name="${field.name}"]:not([type=range])`);
    for (const value of tries(field)) {
      const before = await said();
      await put(input, field, value);
      if (await card.getByRole('button', kSave).isEnabled() && await save(card) === '' && await said() !== before) return;
      await undo(card);
    }
  }
  assert.fail(`${name}: nothing could be changed`);
}
