// SPDX-License-Identifier: GPL-3.0-or-later
// The fake upstream as a process, so that its notes of time owe nothing to the clients' bustle.
import { type Arrival, searchAnswer } from "../local/fake_upstream.ts";

const arrivals: Arrival[] = [];
/** This fetch takes long, so that its process can be killed in the middle of it. */
const slow = Number(Deno.env.get("KILL_AT") ?? 0);

Deno.serve({
  hostname: "127.0.0.1",
  port: 0,
  onListen: ({ port }) => console.log(JSON.stringify({ port })),
}, async (request) => {
  const at = performance.timeOrigin + performance.now();
  const url = new URL(request.url);
  if (url.pathname === "/arrivals") return Response.json(arrivals);
  const term = url.searchParams.get("term") ?? "";
  const country = url.searchParams.get("country") ?? "";
  const prefix = url.pathname.slice(0, -"/search".length);
  arrivals.push({ at, term, country, query: url.search, prefix });
  const wait = arrivals.length === slow ? 1500 : 60;
  await new Promise((resolve) => setTimeout(resolve, wait));
  return searchAnswer(term, country, 100);
});
