// A person at the console of running cameras: settings, picture, head, events, card, accounts, system.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { after, before, suite, test } from 'node:test';
import { setTimeout as sleep } from 'node:timers/promises';
import { gzipSync } from 'node:zlib';
import { Camera, freePort, root } from '../api/camera.js';
import { change, describeFields, refuse, save } from './card.js';
import { Console, closeBrowser, eventually, openBrowser } from './console.js';

const kDark = { colorScheme: 'dark', viewport: { width: 360, height: 740 }, reducedMotion: 'reduce' };
// It lists files, and stores nothing.
const kFixed = ['sdcard_list.cgi'];

before(() => openBrowser());
after(closeBrowser);

async function started(product, t) {
  const camera = new Camera();
  await camera.start(product);
  t.after(() => camera.stop());
  return camera;
}

const curl = (camera, path, ...options) =>
  execFileSync('curl', ['-sS', '--max-time', '20', ...options, `http://127.0.0.1:${camera.port}${path}`]);

test('the console is small', () => {
  const files = readdirSync(root + 'console').map(name => [name, readFileSync(`${root}console/${name}`)]);
  const sum = numbers => numbers.reduce((a, b) => a + b);
  const lines = files.filter(([name]) => name.endsWith('.js')).map(([, text]) => String(text).split('\n').length - 1);
  assert(sum(lines) < 1800, `${sum(lines)} lines`);
  assert(sum(files.map(([, text]) => text.length)) < 120000);
  assert(sum(files.map(([, text]) => gzipSync(text).length)) < 35 * 1024);
});

suite('products', { concurrency: 3 }, () => {
  for (const product of readdirSync(root + 'virtual-camera/products')) {
    test(`every page of ${product}`, async t => {
      const camera = await started(product, t);
      const person = await Console.open(camera);
      const described = Object.keys(camera.description.paths).filter(path => path.startsWith('/cgi-bin/')).length;
      for (const hash of await person.pages()) {
        await person.go(hash);
        assert(await person.overflow() <= 0, hash);
      }
      await person.go('#/api');
      assert.equal(await person.page.locator('details.api').count(), described);
      await person.close();
    });
  }
});

suite('one camera', () => {
  const camera = new Camera();
  before(() => camera.start('full'));
  after(() => camera.stop());
  const person = async (hash, options) => Console.open(camera, hash, options);

  for (const [name, options] of [['wide and light', {}], ['narrow and dark', kDark]]) {
    test(`an accessibility checker finds nothing, ${name}`, async () => {
      const self = await person('', options);
      for (const hash of await self.pages()) {
        await self.go(hash);
        await self.unfold();
        assert.deepEqual(await self.violations(), [], hash);
        assert(await self.overflow() <= 0, hash);
      }
      await self.close();
    });
  }

  test('opening takes few requests, and so does watching; a hidden page makes none', async () => {
    const self = await person();
    assert(self.requests.length <= 12, self.requests.map(request => request.url()).join(' '));
    const count = async seconds => {
      const first = self.requests.length;
      await sleep(1000 * seconds);
      return self.requests.slice(first).map(request => request.url());
    };
    const watching = await count(5);
    assert(watching.length > 0 && watching.length <= 11, watching.join(' '));
    await self.page.evaluate(() => {
      Object.defineProperty(document, 'hidden', { value: true });
      document.dispatchEvent(new Event('visibilitychange'));
    });
    await sleep(1000);
    assert.deepEqual(await count(6), []);
    await self.close();
  });

  test('the head turns by keys, by the pad and by dragging, and the picture with it', async () => {
    const self = await person('#/live');
    const [stage, place] = [self.page.locator('.stage'), self.page.getByText(/^Position: pan/)];
    const picture = () => curl(camera, '/snapshot.jpg').toString('latin1');
    const at = async () => {
      const { json: { p, t } } = await camera.get('/cgi-bin/ptz_pos.cgi');
      return `pan ${p}, tilt ${t}`;
    };
    await place.waitFor();
    const start = [await at(), picture()];
    const turns = [() => stage.press('ArrowRight'), () => self.page.getByRole('button', { name: 'Up', exact: true }).click(),
      () => stage.dragTo(stage, { sourcePosition: { x: 300, y: 200 }, targetPosition: { x: 200, y: 200 } })];
    for (const turn of turns) {
      const before = [await at(), picture()];
      await turn();
      await eventually(async () => await at() !== before[0] && picture() !== before[1], true);
      await eventually(async () => (await place.textContent()).includes(await at()), true);
    }
    await self.page.getByRole('textbox', { name: 'New preset' }).fill('gate');
    await self.page.getByRole('button', { name: 'Save position' }).click();
    const preset = self.page.getByRole('button', { name: 'gate', exact: true });
    await preset.waitFor();
    const gate = await at();
    await stage.press('Home');
    await eventually(at, start[0]);
    await preset.click();
    await eventually(at, gate);
    await self.page.getByRole('button', { name: 'Rename gate' }).click();
    await self.page.getByRole('textbox', { name: 'New name' }).fill('door');
    await self.page.getByRole('button', { name: 'Rename', exact: true }).click();
    await self.page.getByRole('button', { name: 'door', exact: true }).waitFor();
    await self.page.getByRole('button', { name: 'Delete door' }).click();
    await self.page.getByRole('button', { name: 'Delete', exact: true }).click();
    await self.page.getByText('None yet.').waitFor();
    await self.close();
  });

  test('each card changes a value, and a refusal stands at its field', async t => {
    const self = await person();
    let cards = 0;
    await camera.get('/cgi-bin/ptz_preset.cgi', { act: 'add', name: 'a1' });  // which a route needs
    for (const hash of (await self.pages()).filter(page => page.startsWith('#/settings'))) {
      await self.go(hash);
      const names = await self.page.locator('section[data-endpoint]:has(fieldset)').evaluateAll(nodes => nodes.map(node => node.dataset.endpoint));
      for (const name of names) {
        const card = self.card(name);
        // The ports are moved below.
        const fields = (await describeFields(card)).filter(field => !/port$/.test(field.name));
        if (!fields.length) continue;
        await refuse(card, name, fields);
        if (!kFixed.includes(name)) await change(camera, card, name, fields);
        ++cards;
      }
    }
    t.diagnostic(`${cards} cards`);
    await self.close();
  });

  test('what happens reaches the time line', async () => {
    const self = await person('#/events');
    const events = self.page;
    await self.tab('#/system');
    const motion = self.page.locator('[data-command=motion]');
    await motion.getByRole('textbox').or(motion.getByRole('spinbutton')).first().fill('42');
    await motion.getByRole('button').click();
    await motion.getByText('Done.').waitFor();
    const sign = events.locator('li[data-sign=md]');
    await eventually(() => sign.textContent(), /^Motionstrength 42/, 3);
    await eventually(() => events.locator('ol li').first().textContent(), /Motion strength 42$/);
    const strip = events.locator('.strip canvas').first();
    assert(await strip.evaluate(node => node.getContext('2d').getImageData(0, 0, node.width, node.height).data.some(Boolean)));
    await self.close();
  });

  test('a folder of the card is deleted after a question', async () => {
    const self = await person('#/card/');
    const files = self.card('sdcard_list.cgi');
    const name = await files.locator('td.folder a').first().textContent();
    const found = execFileSync('find', [camera.state + '/sdcard', '-type', 'd', '-name', name]).toString().trim();
    assert(existsSync(found), name);
    await files.locator('tbody input').first().check();
    await files.getByRole('button', { name: 'Delete selected…' }).click();
    const question = self.page.getByRole('dialog');
    assert.match(await question.textContent(), /with all that is in it/);
    await question.getByRole('button', { name: 'Cancel' }).click();
    assert(existsSync(found));
    await files.getByRole('button', { name: 'Delete selected…' }).click();
    await question.getByRole('button', { name: 'Delete' }).click();
    await eventually(() => existsSync(found), false);
    await question.waitFor({ state: 'detached' });
    await self.close();
  });

  test('two tabs change one record', async () => {
    const self = await person('#/settings/Device');
    const first = self.card('camera_info.cgi');
    await self.tab('#/settings/Device');
    const second = self.card('camera_info.cgi');
    await first.locator('[name=name]').fill('gate');
    await second.locator('[name=location]').fill('at the gate');
    assert.equal(await save(first), '');
    assert.equal(await save(second), '');
    const { name, location } = (await camera.get('/cgi-bin/camera_info.cgi')).json;
    assert.deepEqual([name, location], ['gate', 'at the gate']);
    assert.equal(await second.locator('[name=name]').inputValue(), 'gate');
    assert.match(await second.locator('.followed').textContent(), /Changed along with it/);
    await self.close();
  });

  test('the page waits while the camera is off', async () => {
    const self = await person('#/settings/Device');
    const notice = self.page.getByRole('alert').filter({ hasText: 'does not answer' });
    await camera.switchOff();
    await notice.waitFor();
    await camera.start('full');
    await notice.waitFor({ state: 'hidden' });
    await self.card('camera_info.cgi').locator('[name=name]').fill('back');
    assert.equal(await save(self.card('camera_info.cgi')), '');
    await self.close();
  });

  test('the page waits for a restart, and follows the camera to another port', async () => {
    const self = await person('#/system');
    await self.page.getByRole('button', { name: 'Restart…' }).click();
    await self.page.getByRole('dialog').getByRole('button', { name: 'Restart' }).click();
    await self.page.getByText('The camera restarts.').waitFor();
    await self.page.getByText('The camera restarts.').waitFor({ state: 'detached', timeout: 60000 });
    await self.ready();
    camera.agent.destroy();
    const from = camera.port;
    for (const port of [await freePort(), from]) {
      await self.go('#/settings/Network');
      const card = self.card('httpport.cgi');
      await card.locator('[name=httpport]').fill(String(port));
      await card.getByRole('button', { name: 'Save', exact: true }).click();
      await self.page.waitForURL(`http://127.0.0.1:${port}/**`);
      await self.card('httpport.cgi').waitFor();
      await self.ready();
      camera.port = port;
      assert.equal((await camera.get('/cgi-bin/httpport.cgi')).json.httpport, port);
    }
    await self.close();
  });

  test('hostile names are shown as text', async () => {
    const kMarkup = '<img src=x onerror=hostile=1>';
    const kLong = 'é'.repeat(127);
    const card = execFileSync('find', [camera.state, '-path', '*sdcard*', '-name', '2*', '-type', 'd', '-printf', '%h\n']).toString().split('\n')[0];
    const raw = Buffer.concat([Buffer.from(card + '/'), Buffer.from([0x62, 0xff, 0xfe])]);
    for (const name of [kMarkup, `"'&amp;\u202e`, kLong]) writeFileSync(`${card}/${name}`, 'x');
    writeFileSync(raw, 'raw bytes');
    // More than the endpoints let in.
    execFileSync(root + 'run', ['--state', camera.state, 'settings', 'set', 'host', `name=${kMarkup}`, `location="'&\u202e`]);
    const self = await person();
    for (const hash of [...await self.pages(), '#/card/?p=2', '#/api']) {
      await self.go(hash);
      assert.equal(await self.page.locator('img[src=x]').count(), 0, hash);
    }
    assert.equal(await self.page.evaluate(() => globalThis.hostile), undefined);
    assert.equal(await self.page.locator('#camera').textContent(), kMarkup);
    await self.go('#/card/');
    const row = self.page.locator('tr', { hasText: 'b\ufffd\ufffd' });
    while (!await row.count()) await self.page.getByRole('link', { name: 'Next' }).click(), await sleep(300), await self.ready();
    const href = await row.getByRole('link').getAttribute('href');
    assert.equal(String(curl(camera, href)), 'raw bytes');
    await row.getByRole('checkbox').check();
    await self.page.getByRole('button', { name: 'Delete selected…' }).click();
    await self.page.getByRole('dialog').getByRole('button', { name: 'Delete' }).click();
    await eventually(() => existsSync(raw), false);
    await self.close();
  });

  // The last one: from here on the camera asks for a login.
  test('a password is set, asked for and changed', async () => {
    const self = await person('#/live', { httpCredentials: { username: 'admin', password: 'first' } });
    const notice = self.page.getByText('The administrator has no password.');
    await notice.waitFor();
    await self.page.locator('.password input[name=password]').fill('first');
    await self.page.getByRole('button', { name: 'Set password' }).click();
    await notice.waitFor({ state: 'detached' });
    await self.ready();
    assert.match(String(curl(camera, '/cgi-bin/info.cgi', '-o', '/dev/null', '-w', '%{http_code}')), /401/);
    assert.match(String(curl(camera, '/cgi-bin/info.cgi', '--digest', '-u', 'admin:first')), /^model=/m);
    await self.go('#/accounts');
    await self.page.getByRole('button', { name: /^New password…/ }).first().click();
    await self.page.getByRole('dialog').locator('input[name=password]').fill('second');
    await self.context.setHTTPCredentials({ username: 'admin', password: 'second' });
    await self.page.getByRole('dialog').getByRole('button', { name: 'New password' }).click();
    await eventually(() => String(curl(camera, '/cgi-bin/info.cgi', '--digest', '-u', 'admin:second')), /^model=/m);
    await self.close();
    const other = await Console.open(camera, '#/accounts', { httpCredentials: { username: 'admin', password: 'second' } });
    await other.card('user_list.cgi').getByText('admin').first().waitFor();
    await other.close();
  });
});
