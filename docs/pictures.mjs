// Makes the pictures of docs/console.md, in this folder, with the browser of the console's tests: node docs/pictures.mjs
import { execFileSync } from 'node:child_process';
import { writeFileSync } from 'node:fs';
import { setTimeout as sleep } from 'node:timers/promises';
import { Camera, root } from '../tests/api/camera.js';
import { Console, closeBrowser, openBrowser } from '../tests/console/console.js';

const kLogin = { httpCredentials: { username: 'admin', password: 'first' } };
const kShown = [
  ['live', '#/live'],
  ['settings', '#/settings/Picture%20and%20sound'],
  ['events', '#/events'],
  ['card', '#/card/'],
  ['narrow', '#/live', { viewport: { width: 360, height: 740 } }],
  ['dark', '#/system', { colorScheme: 'dark' }],
];

async function shoot(camera) {
  await camera.get('/cgi-bin/user_mod.cgi', { name: 'admin', password: btoa('first') });
  for (const event of [['motion', '42'], ['sound', '120'], ['input', '1', 'on']])
    execFileSync(root + 'run', ['--state', camera.state, 'sim', ...event]);
  for (const [name, hash, options] of kShown) {
    const person = await Console.open(camera, hash, { ...options, ...kLogin });
    await sleep(2500);  // until the picture and the time line show something
    await person.page.evaluate(() => scrollTo(0, 0));
    writeFileSync(`${root}docs/console-${name}.jpg`, await person.page.screenshot({ type: 'jpeg', quality: 75 }));
    await person.close();
  }
}

const camera = new Camera();
await openBrowser();
try {
  await camera.start('full');
  await shoot(camera);
} finally {
  await closeBrowser();
  await camera.stop();
}
