// SPDX-License-Identifier: GPL-3.0-or-later
// The database's functions, called through the project's Data API.
import type { Question } from "./question.ts";

/** What the database knows about a keyword. Waits are in seconds. */
export type Known =
  | { state: "ready"; fetched_at: string; body: string }
  | { state: "pending"; wait: number; work: boolean }
  | { state: "stale"; fetched_at: string; wait: number; work: boolean }
  | { state: "blocked"; wait: number; work: boolean }
  | { state: "failed"; wait: number }
  | { state: "outstanding" | "share spent" | "queue full" };

/** What a worker is to do next. */
export type Claim =
  | {
    state: "fetch";
    country: string;
    keyword: string;
    token: string;
    fetched_at: string;
    /** Seconds between the starts of two fetches. */
    pace: number;
  }
  | { state: "wait"; wait: number }
  | { state: "nothing" | "occupied" };

export type FetchClaim = Extract<Claim, { state: "fetch" }>;

export interface Spent {
  /** Milliseconds of the fetch. */
  ms: number;
  /** Bytes that the upstream sent. */
  bytes: number;
}

/** The database cannot be asked; `reason` is a word for the log. */
export class Unreachable extends Error {
  constructor(readonly reason: string) {
    super("The database is out of reach");
  }
}

/** Bounds a call so that a held question is answered before its client gives up. */
const timeoutMs = 4_000;

export class DataApi {
  #url: string;
  #headers: Record<string, string>;

  constructor(projectUrl: string, secretKey: string) {
    this.#url = `${projectUrl}/rest/v1/rpc/aso_research_`;
    this.#headers = { "Content-Type": "application/json", apikey: secretKey };
    // The older kind of key is a token, which is presented a second time.
    if (!secretKey.startsWith("sb_")) this.#headers.Authorization = `Bearer ${secretKey}`;
  }

  ask(question: Question, client: string): Promise<Known> {
    return this.#call("ask", {
      p_country: question.country,
      p_keyword: question.keyword,
      p_client: client,
    });
  }

  claim(worker: string): Promise<Claim> {
    return this.#call("claim", { p_worker: worker });
  }

  /** Whether the result was taken; not when the lease was lost. */
  complete(claim: FetchClaim, count: number, body: string, spent: Spent): Promise<boolean> {
    return this.#call("complete", {
      ...leaseOf(claim, spent),
      p_result_count: count,
      p_body: body,
    });
  }

  /** What became of the job. */
  fail(claim: FetchClaim, kind: string, wait: number | null, spent: Spent): Promise<string> {
    return this.#call("fail", { ...leaseOf(claim, spent), p_kind: kind, p_wait: wait });
  }

  tidy(): Promise<boolean> {
    return this.#call("tidy", {});
  }

  health(): Promise<unknown> {
    return this.#call("health", {});
  }

  async #call<Answer>(name: string, input: Record<string, unknown>): Promise<Answer> {
    let response: Response;
    try {
      response = await fetch(this.#url + name, {
        method: "POST",
        headers: this.#headers,
        body: JSON.stringify(input),
        signal: AbortSignal.timeout(timeoutMs),
      });
      if (response.ok) return await response.json();
      await response.body?.cancel();
    } catch (error) {
      throw new Unreachable(error instanceof Error ? error.name : "unknown");
    }
    throw new Unreachable(`status ${response.status}`);
  }
}

function leaseOf(claim: FetchClaim, spent: Spent) {
  return {
    p_country: claim.country,
    p_keyword: claim.keyword,
    p_token: claim.token,
    p_ms: Math.round(spent.ms),
    p_bytes: spent.bytes,
  };
}
