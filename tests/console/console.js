// A browser with the console of a camera open, and what a person does there.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { setTimeout as sleep } from 'node:timers/promises';
import { chromium } from 'playwright-core';

const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');
// The browser reports each refused request; the console shows it to the person.
const kRefused = /^Failed to load resource: .*\b(400|401|403|404|500|503|ERR_CONNECTION_REFUSED|ERR_EMPTY_RESPONSE|ERR_CONNECTION_RESET|ERR_INCOMPLETE_CHUNKED_ENCODING)\b/;

let browser;
export const openBrowser = async (...options) =>
  (browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox', ...options] }));
export const newContext = options => browser.newContext(options);
export const closeBrowser = () => browser.close();

// Waits until `look` returns `expected`; fails with what it returned last.
export async function eventually(look, expected, seconds = 10) {
  let seen;
  for (const end = Date.now() + 1000 * seconds; Date.now() < end; await sleep(100)) {
    seen = await look();
    if (expected instanceof RegExp ? expected.test(seen) : seen === expected) return;
  }
  assert.equal(seen, expected);
}

export class Console {
  problems = [];
  requests = [];

  static async open(camera, hash = '', options = {}) {
    const self = new Console();
    self.camera = camera;
    self.context = await browser.newContext({ viewport: { width: 1280, height: 800 },
      timezoneId: 'Europe/Berlin', ...options });
    await self.tab(hash);
    return self;
  }

  get url() {
    return `http://127.0.0.1:${this.camera.port}/`;
  }

  // Opens one more page of the same person; the methods work on the newest.
  async tab(hash = '') {
    this.page = await this.context.newPage();
    this.page.setDefaultTimeout(20000);
    this.page.on('console', message =>
      message.type() === 'error' && !kRefused.test(message.text()) && this.problems.push(message.text()));
    this.page.on('pageerror', error => this.problems.push(String(error.stack)));
    this.page.on('request', request => {
      this.requests.push(request);
      const { protocol, hostname } = new URL(request.url());
      if (!['data:', 'blob:'].includes(protocol) && hostname !== '127.0.0.1') this.problems.push(request.url());
    });
    await this.page.goto(this.url + hash);
    await this.page.locator('nav a').first().waitFor({ state: 'attached' });
    await this.ready();
    return this.page;
  }

  async go(hash) {
    await this.page.evaluate(to => new Promise(done => {
      if (location.hash === to) return done();
      addEventListener('hashchange', done, { once: true });
      location.hash = to;
    }), hash);
    await this.page.locator('#page > :nth-child(2)').first().waitFor();
    await this.ready();
  }

  pages() {
    return this.page.locator('nav a').evaluateAll(links => links.map(link => link.getAttribute('href')));
  }

  card(name) {
    return this.page.locator(`section[data-endpoint="${name}"]`);
  }

  // Brings every card into view, so that it loads, and requires that it does.
  async ready() {
    await this.page.waitForFunction(() => {
      const card = document.querySelector('section[data-state=loading]');
      card?.scrollIntoView({ block: 'center' });
      return !card;
    }, undefined, { polling: 50 });
    const failed = await this.page.locator('section[data-state=failed]').evaluateAll(nodes =>
      nodes.map(node => `${node.dataset.endpoint}: ${node.querySelector('.status').textContent}`));
    assert.deepEqual(failed, []);
  }

  // Opens what is folded, and loads what is in it.
  async unfold() {
    await this.page.evaluate(() => {
      for (const details of document.querySelectorAll('#page details:not(.api)')) details.open = true;
    });
    await sleep(100);
    await this.ready();
  }

  // What an accessibility checker finds on the page as it is.
  async violations() {
    await this.page.evaluate(axe);  // the policy does not hold for the debugger
    const { violations } = await this.page.evaluate(() => globalThis.axe.run());
    return violations.map(({ id, nodes }) => `${id}: ${nodes.map(node => node.html).join(' ')}`.slice(0, 400));
  }

  // The page is as wide as the window, not wider.
  overflow() {
    return this.page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
  }

  async close() {
    await this.context.close();
    assert.deepEqual(this.problems, []);
  }
}
