// A client as its author would write it, with the types that openapi-typescript makes from the description.
import createClient from 'openapi-fetch';
import type { paths } from './generated/schema.js';

// Renames the camera and returns its name as it is then.
export async function rename(baseUrl: string, name: string): Promise<string | undefined> {
  const client = createClient<paths, 'application/json'>({ baseUrl, headers: { accept: 'application/json' } });
  const { response } = await client.POST('/cgi-bin/camera_info.cgi', { body: { name } });
  if (!response.ok) throw Error(`${response.status}`);
  // @ts-expect-error A volume is a number.
  await client.GET('/cgi-bin/mic.cgi', { params: { query: { volume: 'loud' } } });
  const { data } = await client.GET('/cgi-bin/camera_info.cgi');
  return data?.name;
}
