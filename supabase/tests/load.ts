// SPDX-License-Identifier: GPL-3.0-or-later
// Many clients, few keywords, two processes of the function; one may be killed in the middle of a fetch.
// The clients keep the protocol of Veltrix: they wait as long as they are told, and ask again.
import { DataApi } from "../local/data_api.ts";
import { type Arrival } from "../local/fake_upstream.ts";
import { Database } from "./database.ts";
import { Process } from "./process.ts";
import { keys } from "./service.ts";

export interface Load {
  paceMs: number;
  leaseMs: number;
  clients: number;
  keywords: number;
  /** The fetch during which its process is killed; none for 0. */
  killAt: number;
}

export interface Figures {
  seconds: number;
  served: number;
  fetches: number;
  /** Keywords that were fetched more than once. */
  twice: string[];
  smallestGapMs: number;
  requests: number;
  mostRequests: number;
  /** Clients that were served within one search of Veltrix: four requests, 45 seconds. */
  withinOneSearch: number;
  longestWaitMs: number;
  medianWaitMs: number;
  killed: boolean;
}

const sleep = (ms: number) => new Promise<void>((resolve) => setTimeout(resolve, ms));

interface Served {
  waitMs: number;
  requests: number;
  isOneSearch: boolean;
}

/** Asks until it is served; moves to the other process when the one it asks is gone. */
async function beClient(number: number, keyword: string, urls: string[]): Promise<Served> {
  const start = performance.now();
  let isOneSearch = true;
  for (let requests = 1, at = number % urls.length;; ++requests) {
    let wait = 1;
    try {
      const response = await fetch(`${urls[at]}/functions/v1/aso-research`, {
        method: "POST",
        headers: {
          apikey: keys.publishable,
          "Content-Type": "application/json",
          "X-Forwarded-For": `10.1.${number >> 8}.${number & 255}`,
        },
        body: JSON.stringify({ keyword, country: "US" }),
        signal: AbortSignal.timeout(15_000),
      });
      const body = await response.json();
      if (body.status === "ready" && body.results.length > 0) {
        return { waitMs: performance.now() - start, requests, isOneSearch };
      }
      wait = Number(response.headers.get("retry-after") ?? 10);
    } catch {
      at = (at + 1) % urls.length;
    }
    if (requests >= 4 || performance.now() - start + wait * 1000 >= 45_000) isOneSearch = false;
    await sleep(wait * 1000);
  }
}

/** The Data API, and a gateway that gives hand-overs to a process that lives. */
function serveGateway(database: Database, urls: string[]): Deno.HttpServer<Deno.NetAddr> {
  const dataApi = new DataApi(database.cluster, keys, 24);
  let turn = 0;
  return Deno.serve({ hostname: "127.0.0.1", port: 0, onListen: () => {} }, async (request) => {
    const { pathname } = new URL(request.url);
    if (pathname.startsWith("/rest/")) return await dataApi.answer(request);
    const body = await request.text();
    for (let attempt = 0; attempt < urls.length; ++attempt) {
      try {
        const { method, headers } = request;
        return await fetch(urls[turn++ % urls.length] + pathname, { method, headers, body });
      } catch {
        // That one is gone.
      }
    }
    return new Response(null, { status: 503 });
  });
}

export async function runLoad(load: Load, say: (line: string) => void): Promise<Figures> {
  const database = await Database.make();
  await database.sql(
    `update aso_research.setting set pace = make_interval(secs => $1), lease = make_interval(secs => $2)`,
    [load.paceMs / 1000, load.leaseMs / 1000],
  );
  const urls: string[] = [];
  const gateway = serveGateway(database, urls);
  const upstream = await Process.start("upstream_process.ts", { KILL_AT: String(load.killAt) });
  const upstreamUrl = upstream.url;
  const functions: Process[] = [];
  for (const prefix of ["a", "b"]) {
    functions.push(
      await Process.start("../local/function.ts", {
        SUPABASE_URL: `http://127.0.0.1:${gateway.addr.port}`,
        SUPABASE_PUBLISHABLE_KEY: keys.publishable,
        SUPABASE_SECRET_KEY: keys.secret,
        ASO_RESEARCH_UPSTREAM: `${upstreamUrl}/${prefix}`,
      }),
    );
  }
  urls.push(...functions.map(({ url }) => url));

  const arrivals = async (): Promise<Arrival[]> =>
    await (await fetch(`${upstreamUrl}/arrivals`)).json();
  let isOver = false;
  let killed = false;
  const killer = (async () => {
    while (load.killAt > 0 && !killed && !isOver) {
      const victim = (await arrivals())[load.killAt - 1];
      if (victim) {
        await functions[victim.prefix === "/a" ? 0 : 1].stop("SIGKILL");
        killed = true;
        say(`killed the process in the middle of fetch ${load.killAt}`);
      }
      await sleep(50);
    }
  })();

  const start = performance.now();
  const clients = Array.from(
    { length: load.clients },
    (_, i) => beClient(i, `keyword ${i % load.keywords}`, urls),
  );
  const served = await Promise.all(clients);
  const seconds = (performance.now() - start) / 1000;
  isOver = true;
  await killer;
  const all = await arrivals();

  for (const process of [...functions, upstream]) await process.stop();
  await gateway.shutdown();
  await database.close();
  const perKeyword = new Map<string, number>();
  for (const { term } of all) perKeyword.set(term, (perKeyword.get(term) ?? 0) + 1);
  const gaps = all.slice(1).map((arrival, i) => arrival.at - all[i].at);
  const waits = served.map(({ waitMs }) => waitMs).sort((a, b) => a - b);
  return {
    seconds,
    served: served.length,
    fetches: all.length,
    twice: [...perKeyword].filter(([, count]) => count > 1).map(([term]) => term),
    smallestGapMs: Math.min(...gaps),
    requests: served.reduce((sum, { requests }) => sum + requests, 0),
    mostRequests: Math.max(...served.map(({ requests }) => requests)),
    withinOneSearch: served.filter(({ isOneSearch }) => isOneSearch).length,
    longestWaitMs: waits[waits.length - 1],
    medianWaitMs: waits[Math.floor(waits.length / 2)],
    killed,
  };
}

export function describe(load: Load, figures: Figures): string {
  const rounded = (ms: number) => (ms / 1000).toFixed(2);
  return [
    `${load.clients} clients, ${load.keywords} keywords, pace ${load.paceMs} ms`,
    `${figures.served} served in ${figures.seconds.toFixed(1)} s`,
    `${figures.fetches} fetches, ${figures.twice.length} keywords twice`,
    `smallest gap ${rounded(figures.smallestGapMs)} s`,
    `${figures.requests} requests, at most ${figures.mostRequests} a client`,
    `${figures.withinOneSearch} served within one search`,
    `wait: median ${rounded(figures.medianWaitMs)} s, longest ${rounded(figures.longestWaitMs)} s`,
  ].join("\n");
}

if (import.meta.main) {
  const isReal = Deno.args.includes("--real-pace");
  const load: Load = isReal
    ? { paceMs: 3200, leaseMs: 15_000, clients: 1000, keywords: 200, killAt: 0 }
    : { paceMs: 200, leaseMs: 2000, clients: 1000, keywords: 200, killAt: 60 };
  const figures = await runLoad(load, console.log);
  console.log(describe(load, figures));
  Deno.exit(0);
}
