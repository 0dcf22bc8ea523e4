// SPDX-License-Identifier: GPL-3.0-or-later
// The page of the service's health makes words and rows of what the service really says.
import { expectEqual } from "./expect.ts";
import { keys, serviceTest } from "./service.ts";

type Rows = string[][];

async function pageFunctions(): Promise<{
  summary: (health: unknown) => Rows;
  hourRows: (hours: unknown) => Rows;
}> {
  const page = await Deno.readTextFile(new URL("../health.html", import.meta.url));
  const script = page.match(/<script>([\s\S]*)<\/script>/)![1];
  return new Function(`${script}; return { summary, hourRows };`)();
}

serviceTest("the page tells what the service says about itself", {}, async (scene) => {
  const { summary, hourRows } = await pageFunctions();
  for (const keyword of ["fox", "owl"]) await scene.ask(keyword);
  scene.upstream.behaviours.set("bear", () => new Response(null, { status: 400 }));
  await scene.ask("bear");
  await scene.settled();
  const response = await fetch(`${scene.project.url}/functions/v1/aso-research/health`, {
    headers: { apikey: keys.publishable },
  });
  const health = await response.json();
  const said = Object.fromEntries(summary(health));
  expectEqual(said["The store"], "answers");
  expectEqual(said["Worker"], "none needed");
  expectEqual(said["Waiting"], "0 keywords of 0 clients; the oldest for 0 s");
  expectEqual(said["Given up for now"], "1 keywords");
  expectEqual(said["Fetched today"], "2 of at most 4320000 keywords");
  const [hour] = hourRows(health.hours);
  expectEqual(hour.slice(1, 8), ["2", "0", "0", "1", "0", "0", "0"]);
});

Deno.test("a blocked service and its waiting keywords are said in words", async () => {
  const { summary } = await pageFunctions();
  const said = Object.fromEntries(summary({
    moment: "2026-03-02T12:00:00.000Z",
    queue: { waiting: 99, fetching: 0, failed: 0, clients: 7, oldestSeconds: 900 },
    budget: { paceSeconds: 3.2, blockedSeconds: 300, failingInARow: 0, fetches: 1, worker: false },
    results: { today: 5, kept: 5, bytes: 100_000 },
    clientsToday: 7,
    hours: [],
  }));
  expectEqual(said["The store"], "blocks us for 5 min more");
  expectEqual(said["Worker"], "none; the next question starts one");
  expectEqual(said["Waiting"], "99 keywords of 7 clients; the oldest for 15 min");
  expectEqual(said["Wait of a new keyword"], "up to 5 min");
  expectEqual(said["Fetched today"], "5 of at most 27000 keywords");
});
