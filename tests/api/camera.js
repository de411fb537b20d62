// A virtual camera for a test, asked over one connection.
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { mkdtempSync, rmSync } from 'node:fs';
import http from 'node:http';
import net from 'node:net';
import { tmpdir } from 'node:os';
import { fileURLToPath } from 'node:url';

export const root = fileURLToPath(new URL('../..', import.meta.url));
export const build = process.env.CAMERA_BUILD_DIR ?? root + 'build';

export async function freePort() {
  const server = net.createServer().listen(0, '127.0.0.1');
  await once(server, 'listening');
  const { port } = server.address();
  await once(server.close(), 'close');
  return port;
}

export class Camera {
  agent = new http.Agent({ keepAlive: true, maxSockets: 1 });
  state = mkdtempSync(tmpdir() + '/camera-api-');

  async start(product) {
    this.port ??= await freePort();
    const command = [root + 'run', '--port', this.port, '--state', this.state, '--product', product];
    this.process = spawn('setpriv', ['--pdeathsig', 'TERM', ...command],
      { env: { ...process.env, CAMERA_BUILD_DIR: build }, stdio: ['ignore', 'pipe', 'inherit'] });
    this.ended = once(this.process, 'exit');
    let said = '';
    await new Promise(answers => this.process.stdout.on('data', line => /answers on/.test(said += line) && answers()));
    this.description = (await this.get('/openapi.json')).json;
  }

  get(path, parameters = {}) {
    const url = `${path}?${new URLSearchParams(parameters)}`;
    const options = { port: this.port, agent: this.agent, path: url, headers: { accept: 'application/json' } };
    return new Promise((done, fail) => {
      const request = http.get(options, async response => {
        let body = '';
        for await (const part of response) body += part;
        const status = response.statusCode;
        done({ status, json: JSON.parse(body), text: `${url} answered ${status} ${body.slice(0, 300)}` });
      });
      // The web server may close an idle connection just then.
      request.on('error', error => request.reusedSocket ? done(this.get(path, parameters)) : fail(error));
    });
  }

  async switchOff() {
    this.agent.destroy();
    this.process.kill();
    await this.ended;
  }

  async stop() {
    await this.switchOff();
    rmSync(this.state, { recursive: true });
  }
}
