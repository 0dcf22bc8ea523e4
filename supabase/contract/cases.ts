// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the cases and compares answers with them, as README.md says.
import type { Given } from "./state.ts";

export interface Case {
  name: string;
  given: Given;
  request: {
    method?: string;
    path?: string;
    headers?: Record<string, string | null>;
    body?: unknown;
    text?: string;
    hex?: string;
    padTo?: number;
    about?: { keyword: string; country: string };
  };
  expect: {
    status: number;
    retryAfter?: number | { from: number; to: number };
    headers?: Record<string, string>;
    body: Record<string, unknown> | "$ERROR";
  };
}

export interface Contract {
  path: string;
  headers: Record<string, string>;
  fields: string[];
  cases: Case[];
}

export const contract: Contract = JSON.parse(
  await Deno.readTextFile(new URL("cases.json", import.meta.url)),
);

/** The keyword and the storefront that a case's state is about. */
export function subjectOf({ request }: Case): { keyword: string; country: string } {
  const body = (request.about ?? request.body ?? {}) as Record<string, unknown>;
  const text = (value: unknown) => typeof value === "string" ? value : "none";
  return { keyword: text(body.keyword), country: text(body.country) };
}

export function requestOf(origin: string, key: string, { request }: Case): Request {
  const headers = new Headers();
  for (const [name, value] of Object.entries({ ...contract.headers, ...request.headers })) {
    if (value !== null) headers.set(name, value.replace("$KEY", key));
  }
  const { text, hex, body, padTo = 0 } = request;
  let bytes: ArrayBuffer | undefined;
  if (hex !== undefined) {
    bytes = new ArrayBuffer(hex.length / 2);
    new Uint8Array(bytes).set(hex.match(/../g)!.map((byte) => parseInt(byte, 16)));
  } else if (text !== undefined || body !== undefined) {
    const written = new TextEncoder().encode(text ?? JSON.stringify(body));
    bytes = new ArrayBuffer(Math.max(padTo, written.length));
    new Uint8Array(bytes).fill(0x20);
    new Uint8Array(bytes).set(written);
  }
  const method = request.method ?? "POST";
  return new Request(origin + contract.path + (request.path ?? ""), {
    method,
    headers,
    body: bytes,
  });
}

type Members = Record<string, unknown>;

const isObject = (value: unknown): value is Members =>
  typeof value === "object" && value !== null && !Array.isArray(value);

function matchesResults(value: unknown): boolean {
  return Array.isArray(value) && value.length >= 1 && value.length <= 100 &&
    value.every((app) =>
      isObject(app) && "trackId" in app &&
      Object.keys(app).every((name) => contract.fields.includes(name))
    );
}

function matchesMember(value: unknown, wanted: unknown, retryAfter: string | null): boolean {
  switch (wanted) {
    case "$MOMENT":
      return typeof value === "string" && /^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$/.test(value);
    case "$RESULTS":
      return matchesResults(value);
    case "$RETRY_AFTER":
      return typeof value === "number" && String(value) === retryAfter;
    default:
      return value === wanted;
  }
}

function bodyFault(body: unknown, wanted: Members | "$ERROR", retryAfter: string | null): string {
  if (!isObject(body)) return "the body is no object";
  const members = Object.keys(body).sort().join(", ");
  if (wanted === "$ERROR") {
    if (members !== "code, message") return `the body has ${members}`;
    const isCode = ["string", "number"].includes(typeof body.code);
    return isCode && typeof body.message === "string" && body.message ? "" : "no code and message";
  }
  if (members !== Object.keys(wanted).sort().join(", ")) return `the body has ${members}`;
  const wrong = Object.keys(wanted).find((n) => !matchesMember(body[n], wanted[n], retryAfter));
  return wrong ? `"${wrong}" is ${JSON.stringify(body[wrong])}` : "";
}

/** What is wrong with an answer, or an empty text. */
export async function faultOf(response: Response, { expect }: Case): Promise<string> {
  const text = await response.text();
  if (response.status !== expect.status) return `the status is ${response.status}: ${text}`;
  const type = response.headers.get("content-type") ?? "";
  if (!/^application\/json(;\s*charset=utf-8)?$/i.test(type)) return `the type is "${type}"`;
  const header = response.headers.get("retry-after");
  const wanted = expect.retryAfter;
  if (wanted === undefined && header !== null) return `there is a Retry-After of ${header}`;
  if (wanted !== undefined) {
    const { from, to } = typeof wanted === "number" ? { from: wanted, to: wanted } : wanted;
    const isWhole = header !== null && /^\d+$/.test(header);
    if (!isWhole || Number(header) < from || Number(header) > to) return `Retry-After is ${header}`;
  }
  for (const [name, value] of Object.entries(expect.headers ?? {})) {
    if (response.headers.get(name) !== value) return `${name} is ${response.headers.get(name)}`;
  }
  let body: unknown;
  try {
    body = JSON.parse(text);
  } catch {
    return "the body is no JSON";
  }
  return bodyFault(body, expect.body, header);
}
