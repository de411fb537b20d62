// Compares the description of the interface with running cameras, and with the description of the last version.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, readdirSync, readFileSync, writeFileSync } from 'node:fs';
import test from 'node:test';
import { createConfig, lintFromString } from '@redocly/openapi-core';
import Ajv from 'ajv/dist/2020.js';
import { apiCompare } from 'api-smart-diff';
import openapiTypes, { astToString } from 'openapi-typescript';
import { Camera, build, root } from './camera.js';
import { checkValues } from './values.js';

const kCommands = /(system_reboot|system_reset|sdcard_format).cgi$/;  // they end or empty the camera
const here = root + 'tests/api/';
const products = readdirSync(root + 'virtual-camera/products');

const describe = product => JSON.parse(execFileSync(build + '/bin/camera-api',
  [`${root}virtual-camera/products/${product}/product.conf`, root + 'virtual-camera/access']));

async function started(product, t) {
  const camera = new Camera();
  t.after(() => camera.stop());
  await camera.start(product);
  return camera;
}

// A value that is accepted on a new camera; undefined if the description does not lead to one.
const usual = ({ example, schema }) => example ?? schema.enum?.find(word => word !== '') ?? schema.minimum;

class Checker {
  constructor(camera) {
    this.camera = camera;
    this.ajv = new Ajv({ strict: false, validateFormats: false }).addSchema(camera.description, 'api');
  }

  sharedResponse(path, status) {
    return this.camera.description.paths[path].get.responses[status]?.$ref;
  }

  // Returns the reply, which must be as the description says.
  async ask(path, parameters) {
    const reply = await this.camera.get(path, parameters);
    const pointer = this.sharedResponse(path, reply.status) ?? `#/paths/${path.replaceAll('/', '~1')}/get/responses/${reply.status}`;
    const validate = this.ajv.getSchema(`api${pointer}/content/application~1json/schema`);
    assert(validate, `not described: ${reply.text}`);
    assert(validate(reply.json), `${this.ajv.errorsText(validate.errors)}: ${reply.text}`);
    return reply;
  }

  async checkUsual(path, required) {
    const { status, json, text } = await this.ask(path, required);
    const needsMore = status === 400 && (!json.parameter || Object.values(required).includes(undefined));
    assert(status === 200 || needsMore || !this.sharedResponse(path, status), text);
  }

  async checkUnknown(path, required) {
    const unknown = await this.ask(path, { ...required, nosuch: 1 });
    assert(unknown.status !== 200 || unknown.json.ignored?.includes('nosuch'), unknown.text);
  }

  async checkParameter(path, required, { name, schema }) {
    const send = value => this.ask(path, { ...required, [name]: value });
    const isValid = this.ajv.compile(schema);
    await checkValues(schema, isValid, false, async value => {
      const { status, json, text } = await send(value);
      assert(status === 400 && (json.parameter === name || schema['x-depends']), `not rejected: ${text}`);
    });
    if (schema['x-depends'] || kCommands.test(path)) return;
    await checkValues(schema, isValid, true, async value => {
      const { status, text } = await send(value);
      assert(status === 200, `not accepted: ${text}`);
    });
  }
}

test('the cameras answer as described', { concurrency: 3 }, async t => {
  const owners = new Map();  // what several products have is tested on one
  const keyOf = (path, parameter) => path + JSON.stringify(parameter);
  for (const product of ['full', ...products])
    for (const [path, { get: { parameters = [] } }] of Object.entries(describe(product).paths))
      for (const key of ['', ...parameters].map(p => keyOf(path, p))) owners.has(key) || owners.set(key, product);
  await Promise.all(products.map(product => t.test(product, async t => {
    const camera = await started(product, t);
    const checker = new Checker(camera);
    const failures = [];
    const keep = error => failures.push((error.cause ?? error).message);
    for (const [path, { get: { parameters = [] } }] of Object.entries(camera.description.paths)) {
      const required = Object.fromEntries(parameters.filter(p => p.required).map(p => [p.name, usual(p)]));
      const isOwn = parameter => owners.get(keyOf(path, parameter)) === product;
      if (!kCommands.test(path)) {
        await checker.checkUsual(path, required).catch(keep);
        if (isOwn('')) await checker.checkUnknown(path, required).catch(keep);
      }
      for (const parameter of parameters.filter(isOwn)) await checker.checkParameter(path, required, parameter).catch(keep);
    }
    assert.equal(failures.join('\n'), '');
  })));
});

// Returns what a client of "before" would not expect of "after".
function breaking(before, after) {
  // The tool passes over types of replies.
  const isBreaking = ({ type, action, path }) => type === 'breaking' || (action === 'replace' && path.at(-1) === 'type');
  return apiCompare(structuredClone(before), structuredClone(after)).diffs.filter(isBreaking).map(
    ({ action, path, before, after }) => `${action} ${path.join(' ')}: ${JSON.stringify({ before, after })}`);
}

test('the description', async t => {
  const camera = await started('full', t);
  const { description } = camera;

  await t.test('follows the recommended rules', async () => {
    const config = await createConfig({ extends: ['recommended'] });
    const problems = await lintFromString({ source: JSON.stringify(description), config });
    assert.deepEqual(problems.map(({ message, location }) => `${location[0]?.pointer}: ${message}`), []);
  });

  await t.test('makes a client that changes a setting', async () => {
    mkdirSync(here + 'generated', { recursive: true });
    writeFileSync(here + 'generated/schema.d.ts', astToString(await openapiTypes(description)));
    execFileSync(process.execPath, [here + 'node_modules/typescript/bin/tsc', '--strict', '--module', 'nodenext',
      '--target', 'es2022', '--skipLibCheck', '--outDir', here + 'generated', here + 'client.ts'], { stdio: 'inherit' });
    const { rename } = await import('./generated/client.js');
    assert.equal(await rename(`http://127.0.0.1:${camera.port}`, 'garage'), 'garage');
    await assert.rejects(rename(`http://127.0.0.1:${camera.port}`, 'a b'), /400/);
  });

  await t.test('breaks no client of the last version', () =>
    assert.deepEqual(breaking(JSON.parse(readFileSync(root + 'docs/openapi.json')), description), []));
});
