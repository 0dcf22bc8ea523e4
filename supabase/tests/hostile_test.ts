// SPDX-License-Identifier: GPL-3.0-or-later
// A thousand kinds of bad requests: each gets a 4xx, leaves one line in the log without anything of its
// content, and no row. They are sent as raw bytes, because a well-behaved client would mend them.
import { expect, expectBetween, expectEqual } from "./expect.ts";
import { keys, type Scene, serviceTest } from "./service.ts";

/** Stands in every keyword, body and header, so that it can be looked for in the log. */
const mark = "zqxmark";
const encoder = new TextEncoder();

interface Attack {
  what: string;
  method?: string;
  path?: string;
  headers?: [string, string | undefined][];
  body?: Uint8Array;
  /** The bytes of the whole request, for what is no HTTP at all. */
  raw?: Uint8Array;
}

const json = (value: unknown) => encoder.encode(JSON.stringify(value));
const question = (keyword: unknown, country: unknown = "US") => json({ keyword, country });
const good = question(mark);

function concat(...parts: Uint8Array[]): Uint8Array {
  return new Uint8Array(parts.flatMap((part) => [...part]));
}

function keywords(): Attack[] {
  const attacks: Attack[] = [];
  const add = (what: string, keyword: unknown) => attacks.push({ what, body: question(keyword) });
  // All 65 control characters, alone and in company.
  for (let code = 0; code <= 0x9f; ++code) {
    if (code >= 0x20 && code < 0x7f) continue;
    const control = String.fromCharCode(code);
    add(`control character ${code}`, `${mark}${control}x`);
    add(`control characters ${code}`, `x${control}${control}${mark}`);
  }
  // Half surrogate pairs, in several places.
  for (let code = 0xd800; code < 0xe000; code += 16) {
    const half = `\\u${code.toString(16)}`;
    for (const text of [`${mark}${half}`, `${half}${mark}`]) {
      attacks.push({
        what: `surrogate ${half}`,
        body: encoder.encode(`{"keyword":"${text}","country":"US"}`),
      });
    }
  }
  for (const length of [101, 102, 128, 200, 255, 256, 500, 999, 1000, 2000, 3900]) {
    add(`${length} characters`, mark.padEnd(length, "y"));
  }
  for (const length of [101, 150, 400, 900]) add(`${length} foxes`, "🦊".repeat(length));
  for (
    const space of ["", " ", "\t", "\n", "\r\n", "\u00a0", "\u2003", "\u3000", "\ufeff", "\u2028"]
  ) {
    for (const count of [0, 1, 3, 50]) add(`white space ${count}`, space.repeat(count));
  }
  const others = [null, true, false, 0, 1, -1, 1e308, 0.1, [], [mark], [[mark]], {}, {
    keyword: mark,
  }];
  for (const other of others) add(`a keyword that is ${typeof other}`, other);
  return attacks;
}

function countries(): Attack[] {
  const attacks: Attack[] = [];
  const bad: unknown[] = [
    null,
    1,
    true,
    [],
    ["US"],
    {},
    "",
    "U",
    "USA",
    "U S",
    " US",
    "US ",
    "ＵＳ",
    "us\u0000",
  ];
  bad.push(
    "EN",
    "UK",
    "EU",
    "AQ",
    "XX",
    "ZZ",
    "KP",
    "CU",
    "IR",
    "SY",
    "us-en",
    "143441",
    mark,
    "../",
    "%00",
    "U\u0308S",
  );
  for (const first of "ABCXYZ") for (const second of "XQJ0?") bad.push(`${first}${second}`);
  for (const country of bad) {
    // AX, BJ and the like: some pairs are countries; only those that have no App Store belong here.
    if (country === "BJ" || country === "CX") continue;
    attacks.push({ what: `country ${JSON.stringify(country)}`, body: question(mark, country) });
  }
  return attacks;
}

function bodies(): Attack[] {
  const attacks: Attack[] = [];
  const add = (what: string, body: Uint8Array) => attacks.push({ what, body });
  for (let length = 0; length < good.length; ++length) {
    add(`cut at ${length}`, good.slice(0, length));
  }
  for (let at = 0; at < good.length; ++at) {
    for (const byte of [0x00, 0x01, 0x07, 0x1f, 0x80, 0xa0, 0xbf, 0xc0, 0xe2, 0xf5, 0xfe, 0xff]) {
      const body = good.slice();
      body[at] = byte;
      add(`byte ${byte} at ${at}`, body);
    }
  }
  for (const byte of [0x21, 0x2c, 0x7b, 0x7d, 0x22, 0xfe]) {
    add(`byte ${byte} after the end`, concat(good, new Uint8Array([byte])));
    add(`byte ${byte} before the start`, concat(new Uint8Array([byte]), good));
  }
  const texts = [
    "null",
    "true",
    "1",
    "-0",
    '"x"',
    "[]",
    "[[]]",
    "{}",
    "{{}}",
    "[".repeat(2000),
    "{".repeat(2000),
    `{"keyword":"${mark}"}`,
    '{"country":"US"}',
    `{"Keyword":"${mark}","Country":"US"}`,
    `keyword=${mark}&country=US`,
    `{'keyword':'${mark}','country':'US'}`,
    `{keyword:"${mark}",country:"US"}`,
    `{"keyword":"${mark}","country":"US",}`,
    `{"keyword":"${mark}" "country":"US"}`,
    `{"__proto__":{"keyword":"${mark}","country":"US"}}`,
    `{"constructor":{"keyword":"${mark}"},"country":"US"}`,
    `<keyword>${mark}</keyword>`,
    `NaN`,
    `Infinity`,
    `/*${mark}*/`,
    `{"keyword":"${mark}\n","country":"US"}`,
    `{"keyword":"\\x41${mark}","country":"US"}`,
    `{"keyword":"\\u00${mark}","country":"US"}`,
    `--${mark}\r\nContent-Disposition: form-data\r\n\r\nx\r\n--${mark}--`,
  ];
  for (const text of texts) add(`the text ${text.slice(0, 20)}`, encoder.encode(text));
  for (const size of [4097, 4098, 5000, 8192, 65536, 300_000]) {
    add(`${size} bytes of spaces`, concat(good, encoder.encode(" ".repeat(size - good.length))));
    add(`${size} bytes of a keyword`, question(mark.padEnd(size, "z")));
    add(`${size} bytes of rubbish`, encoder.encode(mark.padEnd(size, "[")));
  }
  for (const coding of ["utf-16le", "utf-16be", "utf-32"]) {
    const width = coding === "utf-32" ? 4 : 2;
    const wide = new Uint8Array(good.length * width);
    good.forEach((byte, i) => wide[i * width + (coding === "utf-16be" ? 1 : 0)] = byte);
    add(coding, wide);
  }
  return attacks;
}

function headers(): Attack[] {
  const attacks: Attack[] = [];
  const add = (what: string, ...lines: [string, string | undefined][]) =>
    attacks.push({ what, headers: lines, body: good });
  const key = keys.publishable;
  const wrongKeys = [
    undefined,
    "",
    mark,
    key.slice(1),
    key.slice(0, -1),
    `${key}${mark}`,
    key.toUpperCase(),
    `Bearer ${key}`,
  ];
  wrongKeys.push(
    keys.secret,
    `"${key}"`,
    `${key},${key}`,
    `${key} ${key}`,
    "null",
    "sb_publishable_",
    mark.repeat(500),
  );
  for (const wrong of wrongKeys) add(`the key ${String(wrong).slice(0, 12)}`, ["apikey", wrong]);
  for (let i = 0; i < key.length; ++i) {
    add(`the key, wrong at ${i}`, ["apikey", `${key.slice(0, i)}~${key.slice(i + 1)}`]);
  }
  const types = [
    undefined,
    "",
    "text/plain",
    "application/jsonx",
    "application/x-www-form-urlencoded",
    "multipart/form-data",
  ];
  types.push(
    "application/json; charset=utf-16",
    "application/json; charset=latin1",
    `application/${mark}`,
    "json",
    "*/*",
  );
  types.push(
    "application/json, text/plain",
    "application/json;",
    "application/json; boundary=x",
    mark.repeat(300),
  );
  for (const type of types) {
    if (type === "application/json;") continue;
    add(`the type ${String(type).slice(0, 30)}`, ["Content-Type", type]);
  }
  for (const coding of ["gzip", "deflate", "br", "zstd", "identity, gzip", mark, "GZIP"]) {
    add(`the coding ${coding}`, ["Content-Encoding", coding]);
  }
  for (
    const address of [
      mark,
      `${mark}, 192.0.2.1`,
      "<script>",
      "1".repeat(5000),
      "%00",
      "::::::::",
      "999.999.999.999",
    ]
  ) {
    // A strange address is no reason to refuse, so the question itself is bad as well.
    attacks.push({
      what: `the address ${address.slice(0, 15)}`,
      headers: [["X-Forwarded-For", address]],
      body: question(""),
    });
  }
  return attacks;
}

function places(): Attack[] {
  const attacks: Attack[] = [];
  for (
    const method of ["GET", "PUT", "PATCH", "DELETE", "OPTIONS", "PROPFIND", mark.toUpperCase()]
  ) {
    attacks.push({ what: `the method ${method}`, method, body: good });
    attacks.push({
      what: `the method ${method} at health`,
      method: method === "GET" || method === "OPTIONS" ? "POST" : method,
      path: "/health",
      body: good,
    });
    attacks.push({ what: `the method ${method} at shift`, method, path: "/shift", body: good });
  }
  const paths = [
    "/",
    "//",
    `/${mark}`,
    "/health/",
    "/HEALTH",
    "/shift/x",
    "/../rest",
    "/%2e%2e",
    "/health%00",
    "/.env",
    "x",
    `/${"a".repeat(3000)}`,
  ];
  for (const path of paths) {
    attacks.push({ what: `the path ${path.slice(0, 20)}`, path, body: good });
  }
  for (
    const name of [
      mark,
      "",
      "00000000-0000-0000-0000-00000000000",
      "g0000000-0000-0000-0000-000000000000",
      mark.repeat(900),
    ]
  ) {
    attacks.push({ what: "a shift", path: "/shift", body: encoder.encode(name) });
    attacks.push({
      what: "a shift with the secret",
      path: "/shift",
      headers: [["apikey", keys.secret]],
      body: encoder.encode(name),
    });
  }
  return attacks;
}

function written(attack: Attack): Uint8Array {
  const body = attack.body ?? new Uint8Array();
  const lines = new Map<string, string | undefined>([
    ["Host", "127.0.0.1"],
    ["Connection", "close"],
    ["apikey", keys.publishable],
    ["Content-Type", "application/json"],
    ["Content-Length", String(body.length)],
    ...(attack.headers ?? []),
  ]);
  const head = [...lines].filter(([, value]) => value !== undefined)
    .map(([name, value]) => `${name}: ${value}\r\n`).join("");
  const start = `${attack.method ?? "POST"} /functions/v1/aso-research${
    attack.path ?? ""
  } HTTP/1.1\r\n`;
  return concat(encoder.encode(`${start}${head}\r\n`), body);
}

/** The status of the answer; 0 when the connection was closed without one. */
async function send(scene: Scene, bytes: Uint8Array, mostMs = 10_000): Promise<number> {
  const url = new URL(scene.project.url);
  const stream = await Deno.connect({ hostname: url.hostname, port: Number(url.port) });
  const close = () => {
    try {
      stream.close();
    } catch {
      // It is closed.
    }
  };
  const timer = setTimeout(close, mostMs);
  try {
    for (let sent = 0; sent < bytes.length;) sent += await stream.write(bytes.subarray(sent));
  } catch {
    // The server has answered before it read everything, which is its right.
  }
  let text = "";
  const part = new Uint8Array(4096);
  try {
    for (let n = await stream.read(part); n !== null; n = await stream.read(part)) {
      text += new TextDecoder("latin1").decode(part.subarray(0, n));
    }
  } catch {
    // What was read until then counts.
  }
  clearTimeout(timer);
  close();
  return Number(text.match(/^HTTP\/1\.[01] (\d{3})/)?.[1] ?? 0);
}

async function rows(scene: Scene): Promise<number> {
  let sum = 0;
  for (const table of ["fetch_job", "ranked_result", "client_quota", "fetch_count"]) {
    sum += await scene.database.count(table);
  }
  return sum;
}

serviceTest(
  "a thousand kinds of bad requests get a 4xx, a line without content, and no row",
  {},
  async (scene) => {
    const attacks = [...keywords(), ...countries(), ...bodies(), ...headers(), ...places()];
    const kinds = new Map(
      attacks.map((attack) => [new TextDecoder("latin1").decode(written(attack)), attack]),
    );
    expectBetween(kinds.size, 1000, 3000, "the number of kinds");
    const queue = [...kinds.values()];
    const wrong: string[] = [];
    const work = async () => {
      for (let attack = queue.pop(); attack; attack = queue.pop()) {
        const status = await send(scene, written(attack));
        if (status < 400 || status > 499) wrong.push(`${attack.what}: ${status}`);
      }
    };
    await Promise.all(Array.from({ length: 8 }, work));
    expectEqual(wrong, []);
    expectEqual(await rows(scene), 0);
    expectEqual(scene.upstream.arrivals.length, 0);
    expectEqual(scene.log.length, kinds.size, "lines of the log");
    expectEqual(new Set(scene.log.map((entry) => entry.event)), new Set(["refused"]));
    const log = JSON.stringify(scene.log);
    for (const word of [mark, mark.toUpperCase(), "fox", keys.publishable, keys.secret, "192.0"]) {
      expect(!log.includes(word), `the log has "${word}"`);
    }
    console.log(`${kinds.size} kinds of bad requests`);
  },
);

serviceTest("what is no HTTP never reaches the service and harms nobody", {}, async (scene) => {
  const line = "POST /functions/v1/aso-research HTTP/1.1\r\nHost: x\r\n";
  const texts = [
    mark,
    "\r\n\r\n",
    "\0".repeat(200),
    `GET\r\n\r\n`,
    `POST / HTTP/9.9\r\n\r\n`,
    `${line}Bad Header: x\r\n\r\n`,
    `${line}apikey: \x01\r\n\r\n`,
    `${line}: x\r\n\r\n`,
    `${line}Content-Length: -1\r\n\r\n`,
    `${line}Content-Length: 9e9\r\n\r\n`,
    `${line}Content-Length: 1\r\nContent-Length: 2\r\n\r\nxx`,
    `${line}Transfer-Encoding: rubbish\r\n\r\n`,
    `${line}Transfer-Encoding: chunked\r\n\r\nzz\r\n`,
    `${line}X: ${"y".repeat(2_000_000)}\r\n\r\n`,
    `${line}${"X: y\r\n".repeat(10_000)}\r\n`,
    "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\nrubbish-------------",
  ];
  for (const text of texts) {
    const status = await send(scene, encoder.encode(text), 500);
    expect(status === 0 || (status >= 400 && status < 500), `${text.slice(0, 60)}: ${status}`);
  }
  expectEqual(await rows(scene), 0);
  expect(!JSON.stringify(scene.log).includes(mark), "the log");
  expectEqual((await scene.ask("fox")).body.status, "ready");
});
