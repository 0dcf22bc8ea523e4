// SPDX-License-Identifier: GPL-3.0-or-later
// Fetches what is queued, one keyword after another, at the pace that the database sets.
import type { Claim, DataApi, FetchClaim } from "./data_api.ts";
import { gzip, toBase64 } from "./gzip.ts";
import { errorName, type Log } from "./log.ts";
import type { SentApp } from "./sent_fields.ts";
import type { Fetched, Upstream } from "./upstream.ts";

export interface WorkerParts {
  dataApi: DataApi;
  upstream: Upstream;
  /** Lets a fresh call of the function go on with the work under the same name. */
  handOver: (worker: string) => Promise<void>;
  /** Keeps the isolate alive until the promise is done. */
  keepAlive: (work: Promise<void>) => void;
  log: Log;
  shiftMs: number;
}

/** A worker shows itself at least so often, well within the lease of its seat. */
const longestWaitMs = 3_000;
const faultsMost = 3;
const faultWaitMs = 1_000;

const sleep = (ms: number) => new Promise<void>((resolve) => setTimeout(resolve, ms));

/** The whole answer as it is stored: every client gets these bytes. */
export function readyBody(fetchedAt: string, apps: SentApp[]): Promise<ArrayBuffer> {
  return gzip(JSON.stringify({ status: "ready", fetchedAt, results: apps }));
}

export class Worker {
  #parts: WorkerParts;
  #shifts = 0;
  #earliestFetch = 0;

  constructor(parts: WorkerParts) {
    this.#parts = parts;
  }

  /** Begins to work unless it does already. */
  wake() {
    if (this.#shifts === 0) this.takeOver(crypto.randomUUID());
  }

  /** Begins a shift under a name that may hold the seat already. */
  takeOver(worker: string) {
    ++this.#shifts;
    const shift = this.#shift(worker)
      .catch((error) => this.#parts.log("worker-fault", { error: errorName(error) }))
      .finally(() => --this.#shifts);
    this.#parts.keepAlive(shift);
  }

  async #shift(worker: string) {
    const { dataApi, log, shiftMs } = this.#parts;
    const end = performance.now() + shiftMs;
    let faults = 0;
    await dataApi.tidy().catch((error) => log("tidy-fault", { error: errorName(error) }));
    while (performance.now() < end) {
      let claim: Claim;
      try {
        claim = await dataApi.claim(worker);
        faults = 0;
      } catch (error) {
        log("claim-fault", { error: errorName(error) });
        // The next question that misses starts a worker.
        if (++faults === faultsMost) return;
        await sleep(faultWaitMs);
        continue;
      }
      if (claim.state === "fetch") {
        await this.#fetch(claim);
      } else if (claim.state === "wait") {
        const rest = Math.max(0, end - performance.now());
        await sleep(Math.min(claim.wait * 1000, longestWaitMs, rest));
      } else {
        return;
      }
    }
    await this.#parts.handOver(worker)
      .catch((error) => log("hand-over-fault", { error: errorName(error) }));
  }

  async #fetch(claim: FetchClaim) {
    // The database spaces the claims; that an answer of it came late must not bring two fetches closer.
    await sleep(Math.max(0, this.#earliestFetch - performance.now()));
    this.#earliestFetch = performance.now() + claim.pace * 1000;
    const fetched = await this.#parts.upstream.search(claim);
    const outcome = await this.#report(claim, fetched);
    this.#parts.log("fetch", {
      outcome,
      status: fetched.status,
      ms: Math.round(fetched.ms),
      bytes: fetched.bytes,
      country: claim.country,
      ...(fetched.kind === "retry" ? { reason: fetched.reason } : {}),
      ...(fetched.kind === "results" ? { apps: fetched.apps.length } : {}),
    });
  }

  async #report(claim: FetchClaim, fetched: Fetched): Promise<string> {
    const { dataApi } = this.#parts;
    if (fetched.kind !== "results") {
      const wait = fetched.kind === "blocked" ? fetched.wait : null;
      return await this.#insist(() => dataApi.fail(claim, fetched.kind, wait, fetched));
    }
    const body = toBase64(await readyBody(claim.fetched_at, fetched.apps));
    const taken = () => dataApi.complete(claim, fetched.apps.length, body, fetched);
    return await this.#insist(async () => await taken() ? "ready" : "late");
  }

  /** A fetch is too dear to be lost to one failed call. */
  async #insist(report: () => Promise<string>): Promise<string> {
    for (let attempt = 1;; ++attempt) {
      try {
        return await report();
      } catch (error) {
        this.#parts.log("report-fault", { error: errorName(error), attempt });
        if (attempt === faultsMost) return "lost";
        await sleep(faultWaitMs);
      }
    }
  }
}
