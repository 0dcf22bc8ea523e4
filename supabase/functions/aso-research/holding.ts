// SPDX-License-Identifier: GPL-3.0-or-later
// Holds a question while its keyword is about to be fetched, so that a cold keyword costs one call.
import type { Known } from "./data_api.ts";

export type Queued = Extract<Known, { state: "pending" | "stale" }>;

export const isQueued = (known: Known): known is Queued =>
  known.state === "pending" || known.state === "stale";

/** How often the database is asked about a keyword that questions are held for. */
const pollMs = 400;

const sleep = (ms: number) => new Promise<void>((resolve) => setTimeout(resolve, ms));

export class Holding {
  /** One look at a time a keyword, however many questions are held for it. */
  #looks = new Map<string, Promise<Known>>();

  /** In milliseconds; a question whose estimate is longer is answered at once. */
  constructor(readonly longestMs: number) {}

  /** What is known when the keyword is done, or when the time is over. */
  async hold(
    key: string,
    known: Known,
    ask: () => Promise<Known>,
  ): Promise<Known> {
    const deadline = performance.now() + this.longestMs;
    if (!isQueued(known) || known.wait * 1000 > this.longestMs) return known;
    while (isQueued(known) && performance.now() + pollMs <= deadline) {
      try {
        known = await this.#look(key, ask);
      } catch {
        // What was known a moment ago is a better answer than none.
        return known;
      }
    }
    return known;
  }

  #look(key: string, ask: () => Promise<Known>): Promise<Known> {
    const shared = this.#looks.get(key);
    if (shared) return shared;
    const look = sleep(pollMs).then(ask).finally(() => this.#looks.delete(key));
    this.#looks.set(key, look);
    return look;
  }
}
