// SPDX-License-Identifier: GPL-3.0-or-later
// Two sessions and more at the same time.
import { databaseTest, workers } from "./database.ts";
import { expect, expectEqual } from "./expect.ts";
import type { Connection } from "../local/postgres.ts";

/** Whether a promise is still open after other work had its chance. */
async function isWaiting(promise: Promise<unknown>): Promise<boolean> {
  const open = Symbol();
  const timer = new Promise((resolve) => setTimeout(() => resolve(open), 60));
  return await Promise.race([promise, timer]) === open;
}

databaseTest("two sessions that claim at once get one fetch between them", async (db) => {
  await db.ask("one", "a");
  await db.ask("two", "b");
  const [first, second] = [await db.session("service_role"), await db.session("service_role")];
  await first.run("begin");
  expectEqual((await db.claim(workers[0], first)).state, "fetch");
  const racing = db.claim(workers[1], second);
  expect(await isWaiting(racing), "the second claim did not wait for the first");
  await first.run("commit");
  expectEqual(await racing, { state: "occupied" });
});

databaseTest("one worker that claims twice at once still keeps the pace", async (db) => {
  await db.ask("one", "a");
  await db.ask("two", "b");
  const [first, second] = [await db.session("service_role"), await db.session("service_role")];
  const claims = await Promise.all([db.claim(workers[0], first), db.claim(workers[0], second)]);
  expectEqual(claims.map((claim) => claim.state).sort(), ["fetch", "wait"]);
});

databaseTest("a claim that is rolled back costs nothing", async (db) => {
  await db.ask("one");
  const first = await db.session("service_role");
  await first.run("begin");
  expectEqual((await db.claim(workers[0], first)).state, "fetch");
  const racing = db.claim(workers[1]);
  await first.run("rollback");
  expectEqual((await racing).state, "fetch");
});

databaseTest("two sessions that ask for the same new keyword make one job", async (db) => {
  const [first, second] = [await db.session("service_role"), await db.session("service_role")];
  await first.run("begin");
  await db.ask("fox", "anna", first);
  const racing = db.ask("fox", "bert", second);
  expect(await isWaiting(racing), "the second question did not wait for the first");
  await first.run("commit");
  expectEqual(await racing, { state: "pending", wait: 4.2, work: true });
  expectEqual(await db.count("fetch_job"), 1);
  expectEqual(await db.count("client_quota"), 1);
});

databaseTest("simultaneous first questions have estimates that count each other", async (db) => {
  const sessions: Connection[] = [];
  for (let i = 0; i < 20; ++i) sessions.push(await db.session("service_role"));
  const answers = await Promise.all(
    sessions.map((session, i) => db.ask(`keyword ${i}`, `client ${i}`, session)),
  );
  const waits = answers.map((answer) => (answer as { wait: number }).wait).sort((a, b) => a - b);
  expectEqual(waits, sessions.map((_, i) => Math.round((1 + 3.2 * (i + 1)) * 10) / 10));
});

databaseTest("a question that races the answer sees it ready and queues nothing", async (db) => {
  await db.ask("fox");
  const claim = await db.claimNext();
  const [first, second] = [await db.session("service_role"), await db.session("service_role")];
  await db.sql("update aso_research.fetch_job set round = 5");
  await first.run("begin");
  await first.query("select aso_research_complete('US', 'fox', $1, 1, 'YQ==', 1, 1)", [
    claim.token,
  ]);
  // The job is in a later round, so the question wants to take it over and waits for the lock.
  await db.sql("select 1");
  const racing = db.ask("fox", "bert", second);
  await isWaiting(racing);
  await first.run("commit");
  expectEqual(await db.count("fetch_job"), 0);
  expect(["ready", "pending"].includes((await racing).state), "the question has no answer");
  expectEqual((await db.ask("fox", "bert")).state, "ready");
});

databaseTest("a full queue is full for two who race for its last place", async (db) => {
  await db.sql("update aso_research.setting set queue_most = 5");
  const sessions: Connection[] = [];
  for (let i = 0; i < 12; ++i) sessions.push(await db.session("service_role"));
  const answers = await Promise.all(
    sessions.map((session, i) => db.ask(`keyword ${i}`, `client ${i}`, session)),
  );
  expectEqual(answers.filter((answer) => answer.state === "pending").length, 5);
  expectEqual(answers.filter((answer) => answer.state === "queue full").length, 7);
});

databaseTest(
  "questions, claims and answers at once come to no deadlock and fetch nothing twice",
  async (db) => {
    await db.sql("update aso_research.setting set pace = '1 microsecond'; ");
    await db.sql("delete from testing.clock");
    const fetched: string[] = [];
    let asking = true;
    const askers = Array.from({ length: 6 }, async (_, client) => {
      const session = await db.session("service_role");
      for (let i = 0; i < 40; ++i) {
        await db.ask(`keyword ${(i * 7 + client * 5) % 60}`, `client ${client}`, session);
      }
    });
    const worker = (async () => {
      for (;;) {
        const claim = await db.claim();
        if (claim.state === "fetch") {
          fetched.push(claim.keyword);
          await db.complete(claim);
        } else if (claim.state === "nothing" && !asking) return;
      }
    })();
    await Promise.all(askers);
    asking = false;
    await worker;
    expectEqual(new Set(fetched).size, fetched.length, "distinct fetches");
    expectEqual(fetched.length, await db.count("ranked_result"));
  },
);
