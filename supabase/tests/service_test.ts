// SPDX-License-Identifier: GPL-3.0-or-later
// Questions and answers through the whole service.
import { sentFields } from "../functions/aso-research/sent_fields.ts";
import { setState } from "../contract/state.ts";
import { expect, expectBetween, expectEqual } from "./expect.ts";
import { keys, type Scene, serviceTest } from "./service.ts";

const subject = { keyword: "fox", country: "US", client: "x" };

serviceTest(
  "a cold keyword costs one call, which is held until it is fetched",
  {},
  async (scene) => {
    const { httpStatus, body, headers } = await scene.ask("fox");
    expectEqual([httpStatus, body.status, body.results.length], [200, "ready", 3]);
    expectEqual(headers.get("cache-control"), "no-store");
    expectEqual(headers.get("retry-after"), null);
    expectBetween(Date.now() - Date.parse(body.fetchedAt), 0, 10_000, "the age");
    expectEqual(scene.upstream.arrivals.map((arrival) => arrival.query), [
      "?term=fox&entity=software&country=US&limit=100",
    ]);
  },
);

serviceTest(
  "only the fields that Veltrix keeps are sent, in the order of the store",
  {},
  async (scene) => {
    const { body } = await scene.ask("fox");
    for (const app of body.results) {
      for (const field of Object.keys(app)) expect(sentFields.includes(field), field);
    }
    expectEqual(body.results.map((app: { trackName: string }) => app.trackName), [
      "fox 1",
      "fox 2",
      "fox 3",
    ]);
    expectEqual(body.results[0].trackId, 6_000_000_001);
    expectEqual(body.results[0].averageUserRating, 4.62802);
  },
);

serviceTest("the term goes to the upstream percent-encoded", {}, async (scene) => {
  const keyword = "c++ & größe/50% 🦊";
  await scene.ask(keyword, { country: "DE" });
  expectEqual([scene.upstream.arrivals[0].term, scene.upstream.arrivals[0].country], [
    keyword,
    "DE",
  ]);
  expect(scene.upstream.arrivals[0].query.includes("c%2B%2B%20%26%20gr"), "the query");
});

serviceTest("many questions about a keyword are one fetch", {}, async (scene) => {
  scene.upstream.behaviour = async () => {
    await new Promise((resolve) => setTimeout(resolve, 300));
    return undefined;
  };
  const asked = Array.from({ length: 50 }, (_, i) => scene.ask("fox", { address: `192.0.2.${i}` }));
  const answers = await Promise.all(asked);
  expectEqual(new Set(answers.map((answer) => answer.body.status)), new Set(["ready"]));
  expectEqual(scene.upstream.arrivals.length, 1);
});

serviceTest(
  "a body is passed through gzipped, and unpacked for who takes no gzip",
  {},
  async (scene) => {
    await scene.ask("fox");
    const ask = async (accepted: string) => {
      const url = new URL(scene.project.url);
      const body = JSON.stringify(subject);
      const stream = await Deno.connect({ hostname: url.hostname, port: Number(url.port) });
      await stream.write(new TextEncoder().encode(
        `POST /functions/v1/aso-research HTTP/1.1\r\nHost: x\r\napikey: ${keys.publishable}\r\n` +
          `Content-Type: application/json\r\nContent-Length: ${body.length}\r\nConnection: close\r\n` +
          `${accepted}\r\n${body}`,
      ));
      return new TextDecoder("latin1").decode(await new Response(stream.readable).arrayBuffer());
    };
    for (
      const accepted of [
        "Accept-Encoding: gzip, deflate\r\n",
        "Accept-Encoding: br, gzip;q=0.5\r\n",
      ]
    ) {
      const answer = await ask(accepted);
      expect(/content-encoding: gzip/i.test(answer), accepted);
      expect(/vary: accept-encoding/i.test(answer), "Vary");
    }
    for (const accepted of ["", "Accept-Encoding: identity\r\n", "Accept-Encoding: gzip;q=0\r\n"]) {
      const answer = await ask(accepted);
      expect(!/content-encoding/i.test(answer), accepted);
      expect(answer.includes('"status":"ready"'), "the text");
    }
  },
);

serviceTest("a question whose hold is over is pending, and ready when it comes again", {
  holdMs: 500,
}, async (scene) => {
  let open = () => {};
  const gate = new Promise<undefined>((resolve) => open = () => resolve(undefined));
  scene.upstream.behaviour = () => gate;
  const first = await scene.ask("fox");
  expectEqual([first.httpStatus, first.body], [202, { status: "pending", retryAfter: 2 }]);
  expectEqual(first.headers.get("retry-after"), "2");
  open();
  await scene.until("it was ready", async () => (await scene.ask("fox")).body.status === "ready");
  expectEqual(scene.upstream.arrivals.length, 1);
});

serviceTest(
  "a question whose estimate is too long is not held",
  { settings: "pace = '9 seconds'" },
  async (scene) => {
    const start = performance.now();
    const { httpStatus, headers } = await scene.ask("fox");
    expectEqual([httpStatus, headers.get("retry-after")], [202, "10"]);
    expectBetween(performance.now() - start, 0, 2000, "the time");
  },
);

for (const status of [403, 429, 503]) {
  serviceTest(`an upstream that answers ${status} is left alone, and clients are told how long`, {
    holdMs: 1500,
  }, async (scene) => {
    scene.upstream.behaviours.set(
      "fox",
      () => new Response(null, { status, headers: status === 429 ? { "Retry-After": "300" } : {} }),
    );
    const { httpStatus, body, headers } = await scene.ask("fox");
    expectEqual([httpStatus, body.status], [200, "unavailable"]);
    const rest = status === 429 ? 300 : 60;
    expectBetween(Number(headers.get("retry-after")), rest, rest + 2);
    expectEqual((await scene.ask("owl")).body.status, "unavailable");
    expectEqual(scene.upstream.arrivals.length, 1);
    expectEqual(scene.events("fetch").map((entry) => [entry.outcome, entry.status]), [[
      "blocked",
      status,
    ]]);
  });
}

const rubbish: [string, () => Response][] = [
  ["a 500", () => new Response("oops", { status: 500 })],
  ["a page of html", () => new Response("<html>", { headers: { "Content-Type": "text/html" } })],
  ["nothing", () => new Response("")],
  ["a list", () => new Response("[]")],
  ["no results", () => new Response('{"resultCount":1}')],
  ["results of another kind", () => new Response('{"resultCount":1,"results":[1]}')],
  ["half an answer", () => new Response('{"resultCount":1,"results":[{"trackId":1}')],
  [
    "a redirection",
    () => new Response(null, { status: 302, headers: { Location: "/search?term=x" } }),
  ],
  ["a 404", () => new Response(null, { status: 404 })],
  [
    "nine million bytes",
    () => new Response(`{"resultCount":0,"results":[],"x":"${"x".repeat(9e6)}"}`),
  ],
];

serviceTest("what is no answer is tried three times, then failed for ten minutes", {
  settings: "pace = '20 milliseconds', retry_delay = '20 milliseconds', outage_after = 1000",
}, async (scene) => {
  for (const [name, make] of rubbish) {
    scene.upstream.behaviours.set(name, make);
    const { httpStatus, body } = await scene.ask(name);
    expectEqual([httpStatus, body.status], [200, "failed"], name);
    expectBetween(body.retryAfter, 595, 600, name);
    expectEqual(scene.upstream.arrivalsOf(name), 3, name);
  }
});

serviceTest("what fails once is fetched the second time", {}, async (scene) => {
  scene.upstream.behaviours.set(
    "fox",
    () => scene.upstream.arrivalsOf("fox") === 1 ? new Response(null, { status: 500 }) : undefined,
  );
  expectEqual((await scene.ask("fox")).body.status, "ready");
  expectEqual(scene.upstream.arrivalsOf("fox"), 2);
});

serviceTest("what the upstream refuses is failed at once", {}, async (scene) => {
  scene.upstream.behaviours.set("fox", () => new Response(null, { status: 400 }));
  expectEqual((await scene.ask("fox")).body.status, "failed");
  expectEqual(scene.upstream.arrivalsOf("fox"), 1);
});

serviceTest("an answer without apps is an answer", {}, async (scene) => {
  scene.upstream.behaviours.set("fox", () => new Response('\n\n{"resultCount":0,"results":[]}\n'));
  const { body } = await scene.ask("fox");
  expectEqual([body.status, body.results], ["ready", []]);
});

serviceTest(
  "fields of another type are left out, and no more than a hundred apps are taken",
  {},
  async (scene) => {
    const odd = {
      trackId: "1",
      trackName: 7,
      userRatingCount: 1.5,
      screenshotUrls: ["a", 1],
      kind: null,
    };
    const results = [odd, ...Array.from({ length: 150 }, (_, i) => ({ trackId: i, secret: "x" }))];
    scene.upstream.behaviours.set("fox", () => Response.json({ resultCount: 151, results }));
    const { body } = await scene.ask("fox");
    expectEqual(body.results.length, 100);
    expectEqual(body.results.slice(0, 2), [{}, { trackId: 0 }]);
  },
);

serviceTest(
  "an older result is stale, and refreshed within the hold",
  { holdMs: 1500 },
  async (scene) => {
    await setState(scene.database.admin, { state: "stale", place: 1 }, subject);
    const stale = await scene.ask("fox");
    // Nobody fetched, because the seat was taken.
    expectEqual([stale.httpStatus, stale.body.status], [200, "stale"]);
    await scene.database.sql("update aso_research.fetch_budget set worker_until = 'epoch'");
    expectEqual((await scene.ask("fox")).body.status, "ready");
  },
);

serviceTest("a ready answer is served from memory when the database is gone", {}, async (scene) => {
  await scene.ask("fox");
  await scene.settled();
  await setState(scene.database.admin, { state: "database out of reach" }, subject);
  expectEqual((await scene.ask("fox")).body.status, "ready");
  const { httpStatus, body, headers } = await scene.ask("owl");
  expectEqual([httpStatus, body.status, headers.get("retry-after")], [503, "unavailable", "10"]);
  expectEqual(scene.events("database-fault").map((entry) => entry.reason), ["status 503"]);
  await setState(scene.database.admin, { state: "never asked" }, subject);
  expectEqual((await scene.ask("owl")).body.status, "ready");
});

serviceTest("a worker hands over by a call, and the queue is worked off", {
  shiftMs: 150,
  holdMs: 0,
}, async (scene) => {
  const keywords = Array.from({ length: 30 }, (_, i) => `keyword ${i}`);
  for (const keyword of keywords) await scene.ask(keyword);
  await scene.until("all were fetched", () => scene.upstream.arrivals.length >= keywords.length);
  await scene.settled();
  expectEqual(new Set(scene.upstream.arrivals.map((arrival) => arrival.term)).size, 30);
  expectEqual(scene.upstream.arrivals.length, 30);
  expectEqual(scene.events("hand-over-fault").length, 0);
});

serviceTest("a worker that is gone is made good by the next question", {
  shiftMs: 100,
  holdMs: 0,
}, async (scene) => {
  // A worker of another process died and left its seat and its fetch.
  await setState(scene.database.admin, { state: "queued", place: 3 }, subject);
  await scene.ask("fox");
  expectEqual(scene.upstream.arrivals.length, 0);
  await scene.database.sql("update aso_research.fetch_budget set worker_until = clock_timestamp()");
  await scene.ask("fox");
  await scene.until("all three were fetched", () => scene.upstream.arrivals.length === 3);
});

serviceTest(
  "keywords of yesterday are fetched again when one of them is asked for",
  {},
  async (scene) => {
    for (const keyword of ["fox", "owl", "bear"]) await scene.ask(keyword);
    await scene.settled();
    await scene.database.sql(`update aso_research.ranked_result
    set fetched_at = fetched_at - interval '1 day', asked_on = asked_on - 1`);
    // The cache of this process still has today's date for them; another keyword wakes the worker.
    await scene.ask("new");
    await scene.until("all were fetched again", () => scene.upstream.arrivals.length === 7);
  },
);

async function shift(scene: Scene, key: string, body: string): Promise<number> {
  const response = await fetch(`${scene.project.url}/functions/v1/aso-research/shift`, {
    method: "POST",
    headers: { apikey: key },
    body,
  });
  await response.body?.cancel();
  return response.status;
}

serviceTest(
  "a shift is begun with the secret key only, and with a worker's name",
  {},
  async (scene) => {
    const name = crypto.randomUUID();
    expectEqual(await shift(scene, keys.publishable, name), 401);
    expectEqual(await shift(scene, keys.secret + "x", name), 401);
    expectEqual(await shift(scene, keys.secret, "name"), 400);
    expectEqual(await shift(scene, keys.secret, name), 202);
  },
);

serviceTest("health is read with the key, from any page", {}, async (scene) => {
  await scene.ask("fox");
  const url = `${scene.project.url}/functions/v1/aso-research/health`;
  const refused = await fetch(url);
  expectEqual([refused.status, (await refused.json()).code], [401, "INVALID_KEY"]);
  const response = await fetch(url, { headers: { apikey: keys.publishable } });
  expectEqual(response.headers.get("access-control-allow-origin"), "*");
  const health = await response.json();
  expectEqual([health.results.today, health.hours.length, health.hours[0].outcome], [
    1,
    1,
    "ready",
  ]);
  const preflight = await fetch(url, { method: "OPTIONS" });
  expectEqual([preflight.status, preflight.headers.get("access-control-allow-headers")], [
    204,
    "apikey",
  ]);
});

serviceTest("the data api gives nothing to the publishable key", {}, async (scene) => {
  for (const name of ["health", "tidy"]) {
    const response = await fetch(`${scene.project.url}/rest/v1/rpc/aso_research_${name}`, {
      method: "POST",
      headers: { apikey: keys.publishable, "Content-Type": "application/json" },
      body: "{}",
    });
    expectEqual([response.status, (await response.json()).code], [403, "42501"]);
  }
});

serviceTest("no line of the log tells what was asked for, or by whom", {}, async (scene) => {
  await scene.ask("secret fox", { address: "203.0.113.77" });
  scene.upstream.behaviours.set("secret owl", () => new Response("secret owl", { status: 500 }));
  await scene.ask("secret owl", { address: "203.0.113.77" });
  const text = JSON.stringify(scene.log);
  expect(scene.log.length >= 4, "there are too few lines");
  for (const word of ["secret", "fox", "owl", "203.0", keys.publishable]) {
    expect(!text.includes(word), word);
  }
});
