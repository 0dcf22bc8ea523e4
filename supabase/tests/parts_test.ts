// SPDX-License-Identifier: GPL-3.0-or-later
// The small parts, each by itself.
import { AnswerCache } from "../functions/aso-research/answer_cache.ts";
import { clientAddress, clientName } from "../functions/aso-research/client_name.ts";
import { configurationFrom } from "../functions/aso-research/configuration.ts";
import { fromBase64, gunzip, gzip, toBase64 } from "../functions/aso-research/gzip.ts";
import { Holding } from "../functions/aso-research/holding.ts";
import { readQuestion, Refusal } from "../functions/aso-research/question.ts";
import { expect, expectBetween, expectEqual } from "./expect.ts";

const bytes = (count: number) => new ArrayBuffer(count);
const name = (forwarded: string | null, peer = "198.51.100.9", trusts = true) =>
  clientAddress(
    new Headers(forwarded === null ? {} : { "X-Forwarded-For": forwarded }),
    { hostname: peer },
    trusts,
  );

Deno.test("what is packed comes out again", async () => {
  const text = "größe 🦊 ".repeat(20_000);
  const packed = await gzip(text);
  expect(packed.byteLength < 2000, "it is not packed");
  const unpacked = await gunzip(fromBase64(toBase64(packed).replaceAll(/(.{76})/g, "$1\n")));
  expectEqual(new TextDecoder().decode(unpacked), text);
});

Deno.test("the cache keeps what was used last within its bytes", () => {
  const cache = new AnswerCache(100);
  for (const key of ["a", "b", "c"]) cache.put(key, "2026-03-02", bytes(30));
  cache.get("a", "2026-03-02");
  cache.put("d", "2026-03-02", bytes(30));
  const has = (key: string) => cache.get(key, "2026-03-02") !== undefined;
  expectEqual(["a", "b", "c", "d"].map(has), [true, false, true, true]);
  cache.put("d", "2026-03-02", bytes(40));
  expectEqual(["a", "c", "d"].map(has), [true, true, true]);
  cache.put("e", "2026-03-02", bytes(101));
  expectEqual(has("e"), false);
});

Deno.test("the cache forgets everything at UTC midnight", () => {
  const cache = new AnswerCache(100);
  cache.put("a", "2026-03-02", bytes(10));
  expectEqual(cache.get("a", "2026-03-03"), undefined);
  cache.put("b", "2026-03-03", bytes(10));
  cache.put("late", "2026-03-02", bytes(10));
  expectEqual(cache.get("a", "2026-03-02"), undefined);
  expectEqual(cache.get("late", "2026-03-03"), undefined);
  expectEqual(cache.get("b", "2026-03-03")?.byteLength, 10);
});

Deno.test("a cache of no bytes keeps nothing", () => {
  const cache = new AnswerCache(0);
  cache.put("a", "2026-03-02", bytes(1));
  expectEqual(cache.get("a", "2026-03-02"), undefined);
});

Deno.test("a client is known by the first forwarded address, or by its peer", () => {
  expectEqual(name("192.0.2.1, 10.0.0.1"), "192.0.2.1");
  expectEqual(name(" 192.0.2.1 "), "192.0.2.1");
  expectEqual(name(null), "198.51.100.9");
  expectEqual(name("somebody"), "198.51.100.9");
  expectEqual(name("x".repeat(1000)), "198.51.100.9");
  expectEqual(name("192.0.2.1", "198.51.100.9", false), "198.51.100.9");
  expectEqual(clientAddress(new Headers(), undefined, true), "unknown");
});

Deno.test("machines of one IPv6 network are one client", () => {
  expectEqual(name("2001:DB8:0:1::7"), "2001:db8:0:1");
  expectEqual(name("2001:db8:0:1:ffff:0:0:9"), "2001:db8:0:1");
  expectEqual(name("2001:0db8:0000:0001:1:2:3:4"), "2001:db8:0:1");
  expectEqual(name("2001:db8::9"), "2001:db8:0:0");
  expectEqual(name("::1"), "0:0:0:0");
  expectEqual(name("::ffff:192.0.2.1"), "192.0.2.1");
});

Deno.test("a client's name changes with the day, the address and the key", async () => {
  const names = await Promise.all([
    clientName("key", "2026-03-02", "192.0.2.1"),
    clientName("key", "2026-03-03", "192.0.2.1"),
    clientName("key", "2026-03-02", "192.0.2.2"),
    clientName("another", "2026-03-02", "192.0.2.1"),
    clientName("key", "2026-03-02", "192.0.2.1"),
  ]);
  expectEqual(new Set(names).size, 4);
  expectEqual(names[0], names[4]);
  for (const one of names) expectEqual(one.length, 22);
});

const read = (body: BodyInit, headers = {}) =>
  readQuestion(
    new Request("http://x/", {
      method: "POST",
      body,
      headers: { "Content-Type": "application/json", ...headers },
    }),
  );

Deno.test("a keyword is trimmed, made lower-case and composed", async () => {
  const ask = async (keyword: string) =>
    (await read(JSON.stringify({ keyword, country: "de" }))).keyword;
  expectEqual(await ask("\u00a0 Photo  EDITOR\r\n"), "photo  editor");
  expectEqual(await ask("Cafe\u0301"), "café");
  expectEqual(await ask("GRÖẞE"), "größe");
  expectEqual(await ask("👩‍👩‍👧 ไทย"), "👩‍👩‍👧 ไทย");
});

Deno.test("a body in pieces is read whole and stopped when it is too large", async () => {
  const text = JSON.stringify({ keyword: "größe", country: "DE" });
  const pieces = (count: number) =>
    new ReadableStream({
      start(controller) {
        for (const byte of new TextEncoder().encode(text)) {
          controller.enqueue(new Uint8Array([byte]));
        }
        for (let i = 0; i < count; ++i) {
          controller.enqueue(new TextEncoder().encode(" ".repeat(1000)));
        }
        controller.close();
      },
    });
  expectEqual((await read(pieces(4))).keyword, "größe");
  const refusal = await read(pieces(5)).catch((error) => error);
  expect(refusal instanceof Refusal, "it was read");
  expectEqual(refusal.status, 413);
});

Deno.test("a body that never ends is given up after some seconds, and one that breaks off at once", async () => {
  const start = performance.now();
  const endless = await read(new ReadableStream({ pull: () => new Promise(() => {}) }))
    .catch((error) => error);
  expectEqual([endless.status, endless.message], [400, "The body is cut short"]);
  expectBetween(performance.now() - start, 4900, 8000, "the time in ms");
  const broken = await read(
    new ReadableStream({ start: (controller) => controller.error(new Error()) }),
  ).catch((error) => error);
  expectEqual(broken.status, 400);
});

Deno.test("however many questions are held for a keyword, the database is asked once at a time", async () => {
  const holding = new Holding(8_000);
  let asked = 0;
  const ask = () => {
    const isDone = ++asked === 3;
    return Promise.resolve(
      isDone
        ? { state: "failed" as const, wait: 600 }
        : { state: "pending" as const, wait: 4, work: false },
    );
  };
  const pending = { state: "pending" as const, wait: 4, work: false };
  const answers = await Promise.all(
    Array.from({ length: 100 }, () => holding.hold("US:fox", pending, ask)),
  );
  expectEqual(new Set(answers.map((answer) => answer.state)), new Set(["failed"]));
  expectEqual(asked, 3);
});

Deno.test("a look that fails ends the hold with what was known before", async () => {
  const pending = { state: "pending" as const, wait: 4, work: false };
  const known = await new Holding(8_000).hold("US:fox", pending, () => Promise.reject(new Error()));
  expectEqual(known, pending);
});

const environment = {
  SUPABASE_URL: "https://project.example/",
  SUPABASE_PUBLISHABLE_KEYS: '{"default":"sb_publishable_a","other":"sb_publishable_b"}',
  SUPABASE_SECRET_KEYS: '{"web":"sb_secret_w","default":"sb_secret_d"}',
};

Deno.test("the configuration comes from what a project sets by itself", () => {
  const configuration = configurationFrom(environment);
  expectEqual(configuration.projectUrl, "https://project.example");
  expectEqual(configuration.publishableKeys, ["sb_publishable_a", "sb_publishable_b"]);
  expectEqual(configuration.secretKey, "sb_secret_d");
  expectEqual(configuration.upstreamUrl, "https://itunes.apple.com");
  expectEqual([configuration.holdMs, configuration.shiftMs], [8000, 60000]);
});

Deno.test("single keys of an older or self-hosted project are taken too", () => {
  const configuration = configurationFrom({
    SUPABASE_URL: "http://gateway:8000",
    ASO_RESEARCH_PUBLISHABLE_KEY: "sb_publishable_mine",
    SUPABASE_SERVICE_ROLE_KEY: "a.token.of-old",
  });
  expectEqual(configuration.publishableKeys, ["sb_publishable_mine"]);
  expectEqual(configuration.secretKey, "a.token.of-old");
});

Deno.test("without an address or a key there is no service", () => {
  for (const missing of Object.keys(environment)) {
    let message = "";
    try {
      configurationFrom({ ...environment, [missing]: undefined });
    } catch (error) {
      message = (error as Error).message;
    }
    expect(message.startsWith("The environment has no "), missing);
  }
});
