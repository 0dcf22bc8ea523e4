// SPDX-License-Identifier: GPL-3.0-or-later
// How fast cached answers are: from the function's memory and from the database, beside a bare server
// that returns the same bytes in the same run. The answers are compared before anything is timed.
import { setState } from "../contract/state.ts";
import { DataApi } from "../local/data_api.ts";
import { searchAnswer } from "../local/fake_upstream.ts";
import { parseApps } from "../functions/aso-research/upstream.ts";
import { readyBody } from "../functions/aso-research/worker.ts";
import { toBase64 } from "../functions/aso-research/gzip.ts";
import { Database } from "./database.ts";
import { Process } from "./process.ts";
import { keys } from "./service.ts";

const connectionCounts = [1, 16, 64];
const roundMs = 600;
const rounds = 9;
const body = JSON.stringify({ keyword: "photo editor", country: "US" });
const request = new TextEncoder().encode(
  `POST /functions/v1/aso-research HTTP/1.1\r\nHost: 127.0.0.1\r\napikey: ${keys.publishable}\r\n` +
    `Content-Type: application/json\r\nAccept-Encoding: gzip, deflate\r\n` +
    `Content-Length: ${body.length}\r\n\r\n${body}`,
);

/** Reads one answer from a connection that stays open, and gives its body's length. */
async function readAnswer(connection: Deno.Conn, buffer: Uint8Array): Promise<number> {
  let have = 0;
  let end = -1;
  let wanted = Infinity;
  while (have < wanted) {
    const count = await connection.read(buffer.subarray(have));
    if (count === null) throw new Error("The connection was closed.");
    have += count;
    if (end < 0) {
      const head = new TextDecoder("latin1").decode(buffer.subarray(0, Math.min(have, 1000)));
      end = head.indexOf("\r\n\r\n");
      if (end < 0) continue;
      const length = head.match(/content-length: (\d+)/i);
      if (!head.startsWith("HTTP/1.1 200") || !length) throw new Error(head.slice(0, 200));
      wanted = end + 4 + Number(length[1]);
    }
  }
  return wanted - end - 4;
}

interface Timing {
  perSecond: number;
  p50: number;
  p99: number;
}

/** Every connection asks again as soon as it is answered. */
async function time(url: string, connections: number, expectedBytes: number): Promise<Timing> {
  const end = performance.now() + roundMs;
  const times: number[] = [];
  const { port } = new URL(url);
  await Promise.all(Array.from({ length: connections }, async () => {
    const connection = await Deno.connect({ hostname: "127.0.0.1", port: Number(port) });
    const buffer = new Uint8Array(65536);
    while (performance.now() < end) {
      const start = performance.now();
      await connection.write(request);
      const bytes = await readAnswer(connection, buffer);
      if (bytes !== expectedBytes) throw new Error(`An answer has ${bytes} bytes.`);
      times.push(performance.now() - start);
    }
    connection.close();
  }));
  times.sort((a, b) => a - b);
  const at = (part: number) => times[Math.min(times.length - 1, Math.floor(times.length * part))];
  return { perSecond: times.length / (roundMs / 1000), p50: at(0.5), p99: at(0.99) };
}

const median = (values: number[]) => values.sort((a, b) => a - b)[Math.floor(values.length / 2)];

const database = await Database.make();
const subject = { keyword: "photo editor", country: "US", client: "x" };
await setState(database.admin, { state: "fetched today" }, subject);
const apps = parseApps(await searchAnswer("photo editor", "US", 100).text())!;
// Descriptions of real apps repeat less than made-up ones: noise brings the size near the real one.
for (const app of apps) {
  const noise = crypto.getRandomValues(new Uint8Array(100));
  app.description = String(app.description) + toBase64(noise.buffer);
}
const ready = await readyBody(new Date().toISOString(), apps);
await database.sql("update aso_research.ranked_result set body = decode($1, 'base64')", [
  toBase64(ready),
]);
const file = await Deno.makeTempFile();
await Deno.writeFile(file, new Uint8Array(ready));

const dataApi = new DataApi(database.cluster, keys, 24);
const gateway = Deno.serve(
  { hostname: "127.0.0.1", port: 0, onListen: () => {} },
  (request) => dataApi.answer(request),
);
const environment = {
  SUPABASE_URL: `http://127.0.0.1:${gateway.addr.port}`,
  SUPABASE_PUBLISHABLE_KEY: keys.publishable,
  SUPABASE_SECRET_KEY: keys.secret,
};
const servers = [
  { name: "bare Deno.serve", process: await Process.start("bare_server.ts", {}, [file]) },
  {
    name: "from memory",
    process: await Process.start("../local/function.ts", environment),
  },
  {
    name: "from the database",
    process: await Process.start("../local/function.ts", {
      ...environment,
      ASO_RESEARCH_CACHE_BYTES: "0",
    }),
  },
];
const expected = new Uint8Array(ready);
for (const { name, process } of servers) {
  const response = await fetch(`${process.url}/functions/v1/aso-research`, {
    method: "POST",
    headers: { apikey: keys.publishable, "Content-Type": "application/json" },
    body,
  });
  const text = await response.text();
  const { results } = JSON.parse(text);
  if (response.status !== 200 || results.length !== 100) throw new Error(`${name}: ${text}`);
}
console.log(
  `body: ${expected.length} bytes gzipped; ${rounds} rounds of ${roundMs / 1000} s each, median`,
);
console.log("connections  server               requests/s   p50 ms   p99 ms   of bare");
for (const connections of connectionCounts) {
  const timings = servers.map(() => [] as Timing[]);
  for (let round = 0; round < rounds; ++round) {
    for (const [i, { process }] of servers.entries()) {
      timings[i].push(await time(process.url, connections, expected.length));
    }
  }
  const rate = (i: number) => median(timings[i].map(({ perSecond }) => perSecond));
  for (const [i, { name }] of servers.entries()) {
    console.log([
      String(connections).padStart(11),
      ` ${name.padEnd(20)}`,
      rate(i).toFixed(0).padStart(10),
      median(timings[i].map(({ p50 }) => p50)).toFixed(2).padStart(8),
      median(timings[i].map(({ p99 }) => p99)).toFixed(2).padStart(8),
      `${(100 * rate(i) / rate(0)).toFixed(0)} %`.padStart(9),
    ].join(" "));
  }
}
for (const { process } of servers) await process.stop();
await Deno.remove(file);
await gateway.shutdown();
dataApi.close();
await database.close();
Deno.exit(0);
