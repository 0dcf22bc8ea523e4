// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of a keyword between the question and the answer, in the database itself.
import { body, type Database, databaseTest, noon, workers } from "./database.ts";
import { expect, expectBetween, expectEqual } from "./expect.ts";

const attemptsOf = async (db: Database, keyword: string) =>
  (await db.sql("select attempts from aso_research.fetch_job where keyword = $1", [keyword]))[0]
    ?.attempts;

databaseTest("a new keyword is queued and pending in the first place", async (db) => {
  expectEqual(await db.ask("fox"), { state: "pending", wait: 4.2, work: true });
  expectEqual(await db.count("fetch_job"), 1);
});

databaseTest("asking again queues nothing", async (db) => {
  await db.ask("fox");
  expectEqual(await db.ask("fox"), { state: "pending", wait: 4.2, work: true });
  expectEqual(await db.ask("fox", "bert"), { state: "pending", wait: 4.2, work: true });
  expectEqual(await db.count("fetch_job"), 1);
  expectEqual(await db.count("client_quota", "client = 'bert'"), 0);
});

databaseTest("one keyword in two countries is two jobs", async (db) => {
  await db.ask("fox");
  await db.service.query("select aso_research_ask('DE', 'fox', 'anna')");
  expectEqual(await db.count("fetch_job"), 2);
});

databaseTest("each place costs a pace", async (db) => {
  for (const [keyword, wait] of [["one", 4.2], ["two", 7.4], ["three", 10.6]] as const) {
    expectEqual(await db.ask(keyword, keyword), { state: "pending", wait, work: true });
  }
});

databaseTest("what is being fetched takes no place of those who wait", async (db) => {
  await db.ask("one", "a");
  await db.ask("two", "b");
  await db.claim();
  expectEqual(await db.ask("one"), { state: "pending", wait: 4.2, work: false });
  expectEqual(await db.ask("two"), { state: "pending", wait: 4.2, work: false });
});

databaseTest("a fetched keyword is ready, dated by its claim", async (db) => {
  await db.ask("fox");
  const claim = await db.claimNext();
  expectEqual([claim.country, claim.keyword, claim.fetched_at], [
    "US",
    "fox",
    "2026-03-02T12:00:00.000Z",
  ]);
  await db.later(1.5);
  expectEqual(await db.complete(claim), true);
  expectEqual(await db.ask("fox"), {
    state: "ready",
    fetched_at: "2026-03-02T12:00:00.000Z",
    body,
  });
  expectEqual(await db.count("fetch_job"), 0);
});

databaseTest("a second fetch waits for the pace", async (db) => {
  await db.ask("one", "a");
  await db.ask("two", "b");
  await db.complete(await db.claimNext());
  await db.later(3);
  expectEqual(await db.claim(), { state: "wait", wait: 0.2 });
  await db.later(0.2);
  expectEqual((await db.claim()).state, "fetch");
});

databaseTest("without work a claim gives nothing and leaves the seat", async (db) => {
  expectEqual(await db.claim(), { state: "nothing" });
  expectEqual(await db.claim(workers[1]), { state: "nothing" });
});

databaseTest(
  "a failed fetch is tried after 5 and 10 seconds, then given up for ten minutes",
  async (db) => {
    await db.ask("fox");
    expectEqual(await db.fail(await db.claimNext(), "retry"), "retry");
    expectEqual((await db.ask("fox")).state, "pending");
    await db.later(3.2);
    expectEqual(await db.claim(), { state: "wait", wait: 1.8 });
    await db.later(1.8);
    const second = await db.claimNext();
    expectEqual(await db.fail(second, "retry"), "retry");
    await db.later(9.9);
    expectEqual(await db.claim(), { state: "wait", wait: 0.1 });
    await db.later(0.1);
    expectEqual(await db.fail(await db.claimNext(), "retry"), "failed");
    expectEqual(await db.ask("fox"), { state: "failed", wait: 600 });
    await db.later(599.5);
    expectEqual(await db.ask("fox"), { state: "failed", wait: 0.5 });
    expectEqual(await db.claim(), { state: "nothing" });
  },
);

databaseTest("after ten minutes a given-up keyword starts anew", async (db) => {
  await db.ask("fox");
  for (let i = 0; i < 3; ++i) await db.fail(await db.claimNext(), "retry");
  await db.later(600);
  expectEqual(await db.ask("fox"), { state: "pending", wait: 4.2, work: true });
  expectEqual(await attemptsOf(db, "fox"), 0);
  expectEqual((await db.claimNext()).keyword, "fox");
});

databaseTest("the wait of a keyword that will be tried again includes its delay", async (db) => {
  await db.ask("fox");
  await db.fail(await db.claimNext(), "retry");
  expectEqual((await db.ask("fox") as { wait: number }).wait, 6);
});

databaseTest("what the upstream refuses fails at once and is no outage", async (db) => {
  for (const keyword of ["1", "2", "3", "4", "5", "6"]) {
    await db.ask(keyword);
    expectEqual(await db.fail(await db.claimNext(), "refused"), "refused");
    expectEqual(await db.ask(keyword), { state: "failed", wait: 600 });
  }
  expectEqual((await db.ask("7")).state, "pending");
});

databaseTest("a block keeps the attempts and doubles from a minute to an hour", async (db) => {
  await db.ask("fox");
  await db.fail(await db.claimNext(), "retry");
  for (const seconds of [60, 120, 240, 480, 960, 1920, 3600, 3600]) {
    expectEqual(await db.fail(await db.claimNext(), "blocked"), "blocked");
    expectEqual(await db.claim(), { state: "wait", wait: seconds });
  }
  expectEqual(await attemptsOf(db, "fox"), 1);
});

databaseTest("a block may be as long as the upstream asks, but for an hour at most", async (db) => {
  await db.ask("fox");
  await db.fail(await db.claimNext(), "blocked", 300);
  expectEqual(await db.claim(), { state: "wait", wait: 300 });
  await db.fail(await db.claimNext(), "blocked", 86400);
  expectEqual(await db.claim(), { state: "wait", wait: 3600 });
});

databaseTest("a success ends the doubling", async (db) => {
  await db.ask("fox");
  await db.fail(await db.claimNext(), "blocked");
  await db.fail(await db.claimNext(), "blocked");
  await db.complete(await db.claimNext());
  await db.ask("owl");
  await db.fail(await db.claimNext(), "blocked");
  expectEqual(await db.claim(), { state: "wait", wait: 60 });
});

databaseTest(
  "during a block the wait is its rest and the place, and what is ready is served",
  async (db) => {
    await db.fetch("owl");
    await db.ask("fox", "a");
    await db.fail(await db.claimNext(), "blocked");
    await db.later(20);
    expectEqual(await db.ask("fox"), { state: "blocked", wait: 44.2, work: true });
    expectEqual(await db.ask("bear", "b"), { state: "blocked", wait: 47.4, work: true });
    expectEqual((await db.ask("owl")).state, "ready");
  },
);

databaseTest("an outage is five first failures of different keywords in a row", async (db) => {
  for (let i = 1; i <= 5; ++i) {
    await db.ask(`keyword ${i}`, `client ${i}`);
    expectEqual(await db.fail(await db.claimNext(), "retry"), "retry");
    expectEqual((await db.ask("another", "other")).state, i < 5 ? "pending" : "blocked");
    await db.sql("delete from aso_research.fetch_job where keyword = 'another'");
    if (i < 5) await db.later(3.2);
    await db.sql("update aso_research.fetch_job set not_before = '2026-03-03' where true");
  }
});

databaseTest("a keyword that fails again and again is no outage", async (db) => {
  for (let round = 0; round < 3; ++round) {
    await db.ask("fox");
    for (let i = 0; i < 3; ++i) await db.fail(await db.claimNext(), "retry");
    await db.later(600);
  }
  expectEqual((await db.ask("owl", "bert")).state, "pending");
});

databaseTest("a success between failures begins the count anew", async (db) => {
  for (let i = 1; i <= 8; ++i) {
    await db.ask(`keyword ${i}`);
    const claim = await db.claimNext();
    if (i === 4) await db.complete(claim);
    else await db.fail(claim, "retry");
    await db.sql("update aso_research.fetch_job set not_before = '2026-03-03'");
  }
  expectEqual((await db.ask("another", "other")).state, "pending");
});

databaseTest(
  "when a lease ends another worker takes over and the late answer is ignored",
  async (db) => {
    await db.ask("fox");
    const lost = await db.claimNext(workers[0]);
    await db.later(14.9);
    expectEqual(await db.claim(workers[1]), { state: "occupied" });
    expectEqual((await db.ask("fox") as { work: boolean }).work, false);
    await db.later(0.1);
    expectEqual((await db.ask("fox") as { work: boolean }).work, true);
    const taken = await db.claim(workers[1]);
    expectEqual(taken.state, "fetch");
    expect((taken as { token: string }).token !== lost.token, "the lease is the same");
    expectEqual(await db.complete(lost), false);
    expectEqual(await db.fail(lost, "blocked"), "late");
    expectEqual(await db.count("ranked_result"), 0);
    expectEqual((await db.ask("fox")).state, "pending");
    expectEqual(await db.complete(taken as typeof lost), true);
    const counts = await db.sql("select outcome, fetches from aso_research.fetch_count order by 1");
    expectEqual(counts, [
      { outcome: "lapsed", fetches: 1 },
      { outcome: "late", fetches: 2 },
      { outcome: "ready", fetches: 1 },
    ]);
  },
);

databaseTest("a keyword that kills its worker three times is given up", async (db) => {
  await db.ask("fox");
  for (let i = 0; i < 3; ++i) {
    await db.claimNext(workers[i % 2]);
    await db.later(15);
  }
  expectEqual(await db.claim(workers[1]), { state: "nothing" });
  expectEqual(await db.ask("fox"), { state: "failed", wait: 600 });
});

databaseTest("a worker that shows itself keeps its seat, and a silent one loses it", async (db) => {
  await db.ask("fox");
  await db.fail(await db.claimNext(workers[0]), "blocked");
  for (let i = 0; i < 4; ++i) {
    await db.later(10);
    expectEqual((await db.claim(workers[0])).state, "wait");
    expectEqual((await db.claim(workers[1])).state, "occupied");
  }
  await db.later(15);
  expectEqual((await db.claim(workers[1])).state, "wait");
  expectEqual((await db.claim(workers[0])).state, "occupied");
});

databaseTest("fresh ends at UTC midnight, and an older result is stale", async (db) => {
  await db.at("2026-03-02T23:59:50Z");
  await db.fetch("fox");
  await db.at("2026-03-02T23:59:59.999Z");
  expectEqual((await db.ask("fox")).state, "ready");
  await db.at("2026-03-03T00:00:00Z");
  expectEqual(await db.ask("fox"), {
    state: "stale",
    fetched_at: "2026-03-02T23:59:50.000Z",
    wait: 4.2,
    work: false,
  });
});

databaseTest("midnight is UTC's, whatever the session's time zone", async (db) => {
  await db.sql("alter database " + db.name + " set timezone = 'Pacific/Auckland'");
  const session = await db.session("service_role");
  await db.at("2026-03-02T10:30:00Z");
  await db.fetch("fox");
  await db.at("2026-03-02T11:30:00Z"); // The next day in Auckland.
  expectEqual((await db.ask("fox", "anna", session)).state, "ready");
  await db.at("2026-03-03T00:30:00Z"); // The same day there.
  expectEqual(await db.ask("fox", "anna", session), {
    state: "stale",
    fetched_at: "2026-03-02T10:30:00.000Z",
    wait: 4.2,
    work: true,
  });
});

databaseTest("what is claimed before midnight and done after it is yesterday's", async (db) => {
  await db.at("2026-03-02T23:59:59.500Z");
  await db.ask("fox");
  const claim = await db.claimNext();
  await db.at("2026-03-03T00:00:01Z");
  expectEqual(await db.complete(claim), true);
  expectEqual((await db.ask("fox")).state, "stale");
  await db.complete(await db.claimNext());
  expectEqual((await db.ask("fox")).state, "ready");
});

databaseTest("a stale keyword that was given up is failed, not stale", async (db) => {
  await db.fetch("fox");
  await db.at("2026-03-03T12:00:00Z");
  await db.ask("fox");
  await db.fail(await db.claimNext(), "refused");
  expectEqual(await db.ask("fox"), { state: "failed", wait: 600 });
});

databaseTest("hours are counted by outcome, with time and bytes", async (db) => {
  for (const keyword of ["a", "b"]) await db.fetch(keyword);
  await db.at("2026-03-02T13:05:00Z");
  await db.fetch("c");
  const rows = await db.sql(
    "select aso_research.internet_time(hour) as hour, outcome, fetches, ms, bytes from aso_research.fetch_count order by 1",
  );
  expectEqual(rows, [
    { hour: "2026-03-02T12:00:00.000Z", outcome: "ready", fetches: 2, ms: 1400, bytes: 10000 },
    { hour: "2026-03-02T13:00:00.000Z", outcome: "ready", fetches: 1, ms: 700, bytes: 5000 },
  ]);
});

databaseTest("health tells counts, and neither keywords nor clients", async (db) => {
  await db.fetch("fox");
  await db.ask("owl", "somebody");
  await db.later(30);
  const rows = await db.service.query("select aso_research_health() as health");
  const health = rows[0].health as Record<string, Record<string, number>>;
  expectEqual(health.moment, "2026-03-02T12:00:30.000Z");
  expectEqual(health.queue, { waiting: 1, fetching: 0, failed: 0, clients: 1, oldestSeconds: 30 });
  expectEqual(health.results, { today: 1, kept: 1, bytes: 8 });
  expectEqual(health.clientsToday, 2);
  expectBetween(health.budget.paceSeconds, 3.2, 3.2);
  const text = JSON.stringify(health);
  for (const secret of ["fox", "owl", "somebody", "anna"]) expect(!text.includes(secret), secret);
});

databaseTest("an unknown kind of failure is an error and changes nothing", async (db) => {
  await db.ask("fox");
  const claim = await db.claimNext();
  let message = "";
  await db.fail(claim, "whim").catch((error) => message = error.message);
  expectEqual(message, "no such kind of failure");
  expectEqual(await db.complete(claim), true);
  expectEqual(noon.slice(0, 10), "2026-03-02");
});
