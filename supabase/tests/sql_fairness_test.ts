// SPDX-License-Identifier: GPL-3.0-or-later
// Who comes first, how much anybody may ask for, and what is done while nobody waits.
import { type Database, databaseTest, workers } from "./database.ts";
import { expect, expectEqual } from "./expect.ts";

/** Takes everything off the queue and gives the keywords in their order. */
async function workOff(db: Database, most = 1000): Promise<string[]> {
  const order = [];
  while (order.length < most) {
    let claim = await db.claim();
    if (claim.state === "wait") {
      await db.later(claim.wait);
      claim = await db.claim();
    }
    if (claim.state !== "fetch") break;
    order.push(claim.keyword);
    await db.complete(claim);
  }
  return order;
}

databaseTest("everybody's first job comes before anybody's second", async (db) => {
  await db.sql("update aso_research.setting set oldest_every = 1000");
  for (const keyword of ["a1", "a2", "a3"]) await db.ask(keyword, "anna");
  for (const keyword of ["b1", "b2"]) await db.ask(keyword, "bert");
  await db.ask("c1", "carl");
  expectEqual(await workOff(db), ["a1", "b1", "c1", "a2", "b2", "a3"]);
});

databaseTest("the estimate of a first job passes over the later jobs of others", async (db) => {
  for (let i = 1; i <= 10; ++i) await db.ask(`a${i}`, "anna");
  expectEqual(await db.ask("b1", "bert"), { state: "pending", wait: 7.4, work: true });
});

databaseTest("every fourth fetch is for the job that has waited longest", async (db) => {
  for (const keyword of ["a1", "a2"]) await db.ask(keyword, "anna");
  await workOff(db, 1);
  for (let i = 1; i <= 4; ++i) await db.ask(`b${i}`, `client ${i}`);
  // The old second round of anna has the first place by age once the fourth claim comes.
  expectEqual(await workOff(db, 3), ["b1", "b2", "a2"]);
});

databaseTest("a stream of newcomers starves nobody", async (db) => {
  for (let i = 1; i <= 10; ++i) await db.ask(`a${i}`, "anna");
  const served = [];
  for (let i = 0; served.filter((keyword) => keyword.startsWith("a")).length < 10; ++i) {
    expect(i < 60, `after ${i} fetches anna still waits`);
    await db.ask(`new ${i}`, `newcomer ${i}`);
    served.push(...await workOff(db, 1));
  }
});

databaseTest(
  "a keyword among somebody's many comes sooner when another asks for it first",
  async (db) => {
    await db.sql("update aso_research.setting set oldest_every = 1000");
    for (let i = 1; i <= 20; ++i) await db.ask(`a${i}`, "anna");
    expectEqual(await db.ask("a20", "bert"), { state: "pending", wait: 7.4, work: true });
    expectEqual((await workOff(db)).slice(0, 3), ["a1", "a20", "a2"]);
  },
);

databaseTest("who has many jobs cannot put off the job of another by asking for it", async (db) => {
  for (let i = 1; i <= 5; ++i) await db.ask(`a${i}`, "anna");
  await db.ask("b1", "bert");
  await db.ask("b1", "anna");
  const rows = await db.sql(
    "select client, round from aso_research.fetch_job where keyword = 'b1'",
  );
  expectEqual(rows, [{ client: "bert", round: 1 }]);
});

databaseTest(
  "forty jobs may be outstanding, and asking for them again is no forty-first",
  async (db) => {
    for (let i = 1; i <= 40; ++i) expectEqual((await db.ask(`k${i}`)).state, "pending");
    expectEqual(await db.ask("k41"), { state: "outstanding" });
    expectEqual((await db.ask("k40")).state, "pending");
    expectEqual((await db.ask("k41", "bert")).state, "pending");
    await workOff(db, 1);
    expectEqual((await db.ask("k42")).state, "pending");
  },
);

databaseTest("what is ready is served to a client with forty jobs outstanding", async (db) => {
  await db.fetch("fox");
  for (let i = 1; i <= 40; ++i) await db.ask(`k${i}`);
  expectEqual((await db.ask("fox")).state, "ready");
});

databaseTest("a client may queue 2,000 keywords a UTC day", async (db) => {
  await db.ask("first");
  await db.sql("update aso_research.client_quota set jobs = 1999");
  expectEqual((await db.ask("last")).state, "pending");
  expectEqual(await db.ask("one more"), { state: "share spent" });
  expectEqual((await db.ask("one more", "bert")).state, "pending");
  await db.at("2026-03-03T00:00:00Z");
  expectEqual((await db.ask("another")).state, "pending");
});

databaseTest("a thousand may wait in all, failures not counted", async (db) => {
  await db.sql(
    `insert into aso_research.fetch_job (country, keyword, client, round, asked_at, failed, not_before)
    select 'US', 'k' || i, 'c' || i, 1, '2026-03-02 12:00Z', i > 999, case when i > 999 then timestamptz '2026-03-02 13:00Z' end
    from generate_series(1, 1200) i`,
  );
  expectEqual(await db.ask("thousandth"), { state: "pending", wait: 3201, work: true });
  expectEqual(await db.ask("one too many"), { state: "queue full" });
  expectEqual(await db.ask("one too many", "bert"), { state: "queue full" });
  expectEqual((await db.ask("k5")).state, "pending");
});

databaseTest("keywords of the last three days are fetched again while nobody waits", async (db) => {
  for (const keyword of ["kept", "dropped"]) await db.fetch(keyword);
  await db.at("2026-03-04T08:00:00Z");
  await db.ask("kept");
  expectEqual(await workOff(db), ["kept", "dropped"]);
  // Two days later only "kept" was asked for within three days.
  await db.at("2026-03-06T00:00:01Z");
  expectEqual(await workOff(db), ["kept"]);
  expectEqual((await db.ask("kept")).state, "ready");
  await db.at("2026-03-10T00:00:01Z");
  expectEqual(await workOff(db), []);
});

databaseTest(
  "an idle refresh waits until nobody does, and the freshest interest comes first",
  async (db) => {
    for (const keyword of ["x", "y"]) await db.fetch(keyword);
    await db.at("2026-03-03T09:00:00Z");
    await db.ask("y");
    await db.sql(
      "update aso_research.ranked_result set fetched_at = '2026-03-02' where keyword = 'y'",
    );
    await db.sql("delete from aso_research.fetch_job");
    await db.ask("asked for", "bert");
    expectEqual(await workOff(db), ["asked for", "y", "x"]);
  },
);

databaseTest("a question during its idle refresh joins it", async (db) => {
  await db.fetch("fox");
  await db.at("2026-03-03T09:00:00Z");
  const claim = await db.claimNext();
  expectEqual(claim.keyword, "fox");
  expectEqual(await db.ask("fox"), {
    state: "stale",
    fetched_at: "2026-03-02T12:00:00.000Z",
    wait: 4.2,
    work: false,
  });
  await db.complete(claim);
  expectEqual((await db.ask("fox")).state, "ready");
});

databaseTest("an idle refresh does not count as interest", async (db) => {
  await db.fetch("fox");
  for (const day of ["03", "04"]) {
    await db.at(`2026-03-${day}T09:00:00Z`);
    expectEqual(await workOff(db), ["fox"]);
  }
  await db.at("2026-03-05T09:00:00Z");
  expectEqual(await workOff(db), []);
});

databaseTest("an idle refresh that fails is not begun again within ten minutes", async (db) => {
  await db.fetch("fox");
  await db.at("2026-03-03T09:00:00Z");
  await db.fail(await db.claimNext(), "refused");
  await db.later(10);
  expectEqual(await db.claim(), { state: "nothing" });
});

databaseTest(
  "results go after seven days, client names after two, counts after thirty",
  async (db) => {
    await db.fetch("old");
    expectEqual(await db.tidy(), true);
    await db.at("2026-03-04T00:00:01Z");
    expectEqual([await db.tidy(), await db.count("client_quota")], [true, 0]);
    await db.at("2026-03-09T11:59:59Z");
    expectEqual([await db.tidy(), await db.count("ranked_result")], [true, 1]);
    await db.at("2026-03-09T13:00:00Z");
    expectEqual([await db.tidy(), await db.count("ranked_result")], [true, 0]);
    expectEqual(await db.count("fetch_count"), 1);
    await db.at("2026-04-02T00:00:00Z");
    expectEqual([await db.tidy(), await db.count("fetch_count")], [true, 0]);
  },
);

databaseTest("the names of yesterday's clients stay until they are two days old", async (db) => {
  await db.fetch("fox");
  await db.at("2026-03-03T23:59:59Z");
  expectEqual([await db.tidy(), await db.count("client_quota")], [true, 1]);
});

databaseTest("failures that are over and jobs of two days ago are tidied away", async (db) => {
  await db.ask("failing");
  await db.fail(await db.claimNext(), "refused");
  await db.ask("forgotten");
  expectEqual([await db.tidy(), await db.count("fetch_job")], [true, 2]);
  await db.later(3600);
  expectEqual([await db.tidy(), await db.count("fetch_job")], [true, 1]);
  await db.later(2 * 86400);
  expectEqual([await db.tidy(), await db.count("fetch_job")], [true, 0]);
});

databaseTest("tidying is done once an hour", async (db) => {
  expectEqual(await db.tidy(), true);
  await db.later(3599);
  expectEqual(await db.tidy(), false);
  await db.later(1);
  expectEqual(await db.tidy(), true);
});

databaseTest("the settings hold: another pace and other limits", async (db) => {
  await db.sql("update aso_research.setting set pace = '10 seconds', outstanding_most = 1");
  expectEqual(await db.ask("fox"), { state: "pending", wait: 11, work: true });
  expectEqual(await db.ask("owl"), { state: "outstanding" });
  await db.ask("bear", "bert");
  await db.claimNext(workers[0]);
  expectEqual(await db.claim(workers[0]), { state: "wait", wait: 10 });
});
