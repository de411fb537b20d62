// Pages of another site, in a browser that is logged in to the camera, try to change it.
import assert from 'node:assert/strict';
import http from 'node:http';
import { networkInterfaces } from 'node:os';
import { after, before, test } from 'node:test';
import { setTimeout as sleep } from 'node:timers/promises';
import { Camera } from '../api/camera.js';
import { closeBrowser, newContext, openBrowser } from './console.js';

const kAttacks = [
  url => `<script>location = '${url}'</script>`,
  url => `<form method=post action='${url}'><input name=location value=there></form>
    <script>document.forms[0].submit()</script>`,
  url => `<meta http-equiv=refresh content='0;url=${url}'>`,
  url => `<img src='${url}'>`,
  url => `<iframe src='${url}'></iframe>`,
  url => `<script>fetch('${url}', { mode: 'no-cors', credentials: 'include' })</script>`,
];
const kReferrers = ['', '<meta name=referrer content=no-referrer>'];
const lan = Object.values(networkInterfaces()).flat().find(({ family, internal }) => family === 'IPv4' && !internal)?.address;

before(() => openBrowser('--host-resolver-rules=MAP *.example 127.0.0.1'));
after(closeBrowser);

// Returns the statuses that the camera answered to a page's requests.
async function visit(context, url) {
  const page = await context.newPage();
  const statuses = new Set();
  page.on('response', response => response.url().includes('name=stolen') && statuses.add(response.status()));
  await page.goto(url).catch(() => undefined);
  for (let i = 0; i < 50 && !statuses.size; ++i) await sleep(100);
  await page.close();
  return [...statuses];
}

test('no page of another site changes the camera', async t => {
  const camera = new Camera();
  await camera.start('full');
  t.after(() => camera.stop());
  let page = '';
  const site = http.createServer((_, reply) => reply.setHeader('Content-Type', 'text/html').end(page)).listen(0);
  t.after(() => site.close());
  const attack = async (host, options) => {
    const context = await newContext(options);
    const target = `http://${host}:${camera.port}`;
    const own = await context.newPage();
    assert.equal((await own.goto(`${target}/cgi-bin/camera_info.cgi`)).status(), 200);  // logs in
    for (const html of kAttacks)
      for (const referrer of kReferrers) {
        page = referrer + html(`${target}/cgi-bin/camera_info.cgi?name=stolen`);
        assert.deepEqual(await visit(context, `http://site.example:${site.address().port}/`), [403], `${host} ${page}`);
      }
    const rebound = `http://rebound.example:${camera.port}/cgi-bin/camera_info.cgi?name=stolen`;
    assert.deepEqual(await visit(context, rebound), [403]);
    await context.close();
  };
  await attack('127.0.0.1');
  await camera.get('/cgi-bin/user_mod.cgi', { name: 'admin', password: 'c2VjcmV0' });
  for (const host of ['127.0.0.1', ...lan ? [lan] : []])
    await attack(host, { httpCredentials: { username: 'admin', password: 'secret' } });
});
