// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the HTTP answer of what is known.
import type { Known } from "./data_api.ts";
import { gunzip } from "./gzip.ts";
import type { Refusal } from "./question.ts";

const common = { "Content-Type": "application/json", "Cache-Control": "no-store" };

function takesGzip(headers: Headers): boolean {
  const accepted = headers.get("accept-encoding") ?? "";
  return /(^|[,\s])gzip\s*(;\s*q\s*=\s*(1(\.0*)?|0?\.\d*[1-9]\d*)\s*)?(,|$)/i.test(accepted);
}

/** The stored body as it is, or unpacked for the few that ask for that. */
export async function readyAnswer(request: Request, body: ArrayBuffer): Promise<Response> {
  const headers = { ...common, Vary: "Accept-Encoding" };
  if (!takesGzip(request.headers)) return new Response(await gunzip(body), { headers });
  return new Response(body, { headers: { ...headers, "Content-Encoding": "gzip" } });
}

/** An answer without results; `wait` in seconds is rounded up, and said twice. */
function waiting(httpStatus: number, status: string, wait: number, more = {}): Response {
  const retryAfter = Math.max(1, Math.ceil(wait));
  return new Response(JSON.stringify({ status, ...more, retryAfter }), {
    status: httpStatus,
    headers: { ...common, "Retry-After": String(retryAfter) },
  });
}

/** 429 and 503 make a client hold every keyword, so only what concerns every keyword is said so. */
export function waitingAnswer(known: Exclude<Known, { state: "ready" }>): Response {
  switch (known.state) {
    case "pending":
      return waiting(202, "pending", known.wait);
    case "stale":
      return waiting(200, "stale", known.wait, { fetchedAt: known.fetched_at });
    case "blocked":
      return waiting(200, "unavailable", known.wait);
    case "failed":
      return waiting(200, "failed", known.wait);
    case "queue full":
      return waiting(200, "unavailable", 600);
    case "share spent":
      return waiting(200, "unavailable", 3600);
    case "outstanding":
      return waiting(429, "unavailable", 60);
  }
}

export const unreachableAnswer = () => waiting(503, "unavailable", 10);

export function refusalAnswer(refusal: Refusal, headers: Record<string, string> = {}): Response {
  return new Response(JSON.stringify({ code: refusal.code, message: refusal.message }), {
    status: refusal.status,
    headers: { ...common, ...headers },
  });
}

export function jsonAnswer(
  status: number,
  value: unknown,
  headers: Record<string, string> = {},
): Response {
  return new Response(JSON.stringify(value), { status, headers: { ...common, ...headers } });
}
