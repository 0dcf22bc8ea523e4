// SPDX-License-Identifier: GPL-3.0-or-later
import { expect, expectBetween, expectEqual } from "./expect.ts";
import { describe, type Load, runLoad } from "./load.ts";

Deno.test({
  name:
    "hundreds of clients and two processes, one killed: each keyword is fetched once and all are served",
  sanitizeOps: false,
  sanitizeResources: false,
  fn: async () => {
    const load: Load = { paceMs: 200, leaseMs: 2000, clients: 500, keywords: 100, killAt: 30 };
    const figures = await runLoad(load, () => {});
    console.log(describe(load, figures));
    expectEqual(figures.served, 500);
    expect(figures.killed, "no process was killed");
    // Only the keyword whose process was killed may be fetched again.
    expectBetween(figures.fetches, 100, 101, "the number of fetches");
    expectEqual(figures.twice.length, figures.fetches - 100);
    expect(figures.smallestGapMs >= 180, `the smallest gap is ${figures.smallestGapMs} ms`);
    // All keywords at the pace, the lease, and a poll: nobody waits longer than the work takes.
    expectBetween(figures.longestWaitMs, 0, 100 * 200 * 1.5 + 10_000, "the longest wait in ms");
  },
});
