// Values that a parameter's schema allows, and values that it does not.
import fc from 'fast-check';

const kAscii = Array.from({ length: 95 }, (_, i) => String.fromCharCode(32 + i));
const text = limits => fc.string({ unit: fc.constantFrom(...kAscii), ...limits });

function edges({ enum: words = [], minimum, maximum, multipleOf = 1, pattern = '', minLength = 0, maxLength, anyOf = [] }) {
  const near = [...words, '', 'x', '1.5', '-1', '\t', 'é'];
  for (const n of [minimum, maximum].filter(Number.isInteger)) near.push(n, n - 1, n + 1, n - multipleOf, n + multipleOf);
  const fill = kAscii.find(c => RegExp(pattern).test(c.repeat(Math.max(1, minLength)))) ?? 'a';
  for (const n of [minLength, maxLength ?? 64]) near.push(...[n - 1, n, n + 1].filter(n => n >= 0).map(n => fill.repeat(n)));
  return near.concat(anyOf.flatMap(edges));
}

function random({ type, minimum, maximum, pattern, minLength, maxLength = 64 }) {
  if (type === 'integer') return fc.integer({ min: minimum, max: maximum });
  const any = text({ minLength, maxLength });
  if (!pattern) return any;
  const letters = kAscii.filter(c => RegExp(pattern).test(c.repeat(Math.max(1, minLength ?? 0))));
  const some = fc.stringMatching(RegExp(pattern));
  return letters.length ? fc.oneof(some, fc.string({ unit: fc.constantFrom(...letters), minLength, maxLength })) : some;
}

// Calls check with values that fit the schema, or that do not: all its edges, and random ones. A query is text, also for
// numbers. "isValid" is the schema's validator.
export async function checkValues(schema, isValid, isInside, check) {
  const isNumber = value => /^-?\d+$/.test(value);
  const isAccepted = value => isValid(value) || (isNumber(value) && isValid(Number(value)));
  const fits = value => isAccepted(value) === isInside && (isInside || !schema['x-lenient'] || isNumber(value));
  const known = [...new Set(edges(schema).map(String))].filter(fits);
  const isChoice = schema.enum || schema.anyOf;
  const source = isInside && !isChoice ? random(schema).map(String) : text({ maxLength: 9 });
  const sources = known.length ? [fc.constantFrom(...known)] : [];
  // A source that fits too seldom would be asked for ever.
  if (fc.sample(source, { numRuns: 20, seed: 1 }).filter(fits).length > 5) sources.push(source.filter(fits));
  if (sources.length === 0) return;
  await fc.assert(fc.asyncProperty(fc.oneof(...sources), check),
    { examples: known.map(value => [value]), numRuns: known.length + 2, seed: 1, endOnFailure: true });
}
