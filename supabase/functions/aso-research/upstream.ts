// SPDX-License-Identifier: GPL-3.0-or-later
// One search at the App Store's search service.
import type { Spent } from "./data_api.ts";
import type { Question } from "./question.ts";
import { type SentApp, sentApp } from "./sent_fields.ts";

export type Outcome =
  | { kind: "results"; apps: SentApp[] }
  /** It limits us; `wait` is what it asked for in seconds, if anything. */
  | { kind: "blocked"; wait: number | null }
  /** It may work later. */
  | { kind: "retry"; reason: string }
  /** It will never answer this question. */
  | { kind: "refused" };

export type Fetched = Outcome & Spent & { status: number };

/** Less than a lease, so that a fetch is over before another worker may begin it again. */
const timeoutMs = 10_000;
const mostBytes = 8 * 1024 * 1024;
const mostApps = 100;

export interface Upstream {
  search(question: Question): Promise<Fetched>;
}

async function readAll(response: Response): Promise<{ text: string; bytes: number } | undefined> {
  const decoder = new TextDecoder();
  let text = "";
  let bytes = 0;
  for await (const part of response.body ?? []) {
    bytes += part.length;
    if (bytes > mostBytes) return undefined;
    text += decoder.decode(part, { stream: true });
  }
  return { text: text + decoder.decode(), bytes };
}

function isObject(value: unknown): value is Record<string, unknown> {
  return typeof value === "object" && value !== null && !Array.isArray(value);
}

/** Nothing when the text is no answer of the search service. */
export function parseApps(text: string): SentApp[] | undefined {
  let value: unknown;
  try {
    value = JSON.parse(text);
  } catch {
    return undefined;
  }
  if (!isObject(value) || !Number.isInteger(value.resultCount) || !Array.isArray(value.results)) {
    return undefined;
  }
  const apps = value.results.slice(0, mostApps);
  return apps.every(isObject) ? apps.map(sentApp) : undefined;
}

function retryAfter(response: Response): number | null {
  const text = response.headers.get("retry-after")?.trim() ?? "";
  return /^\d{1,6}$/.test(text) ? Number(text) : null;
}

async function outcomeOf(response: Response): Promise<{ outcome: Outcome; bytes: number }> {
  if (response.status !== 200) {
    await response.body?.cancel();
    const isBlock = [403, 429, 503].includes(response.status);
    if (isBlock) return { outcome: { kind: "blocked", wait: retryAfter(response) }, bytes: 0 };
    if (response.status === 400) return { outcome: { kind: "refused" }, bytes: 0 };
    return { outcome: { kind: "retry", reason: "status" }, bytes: 0 };
  }
  const read = await readAll(response);
  const apps = read && parseApps(read.text);
  const bytes = read?.bytes ?? mostBytes;
  return apps
    ? { outcome: { kind: "results", apps }, bytes }
    : { outcome: { kind: "retry", reason: "rubbish" }, bytes };
}

export function searchService(baseUrl: string): Upstream {
  return {
    async search(question: Question): Promise<Fetched> {
      const start = performance.now();
      const query = [
        `term=${encodeURIComponent(question.keyword)}`,
        "entity=software",
        `country=${question.country}`,
        `limit=${mostApps}`,
      ].join("&");
      let status = 0;
      const spent = (bytes: number) => ({ ms: performance.now() - start, bytes, status });
      try {
        const response = await fetch(`${baseUrl}/search?${query}`, {
          headers: { "User-Agent": "Veltrix-research/1" },
          redirect: "error",
          signal: AbortSignal.timeout(timeoutMs),
        });
        status = response.status;
        const { outcome, bytes } = await outcomeOf(response);
        return { ...outcome, ...spent(bytes) };
      } catch (error) {
        const reason = error instanceof Error && error.name === "TimeoutError"
          ? "time-out"
          : "network";
        return { kind: "retry", reason, ...spent(0) };
      }
    },
  };
}
