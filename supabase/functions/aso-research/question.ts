// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a question, and refuses what is none.
import { storefronts } from "./storefronts.ts";

export interface Question {
  /** Trimmed, lower-case, composed; 1 to 100 code points without control characters. */
  keyword: string;
  /** Upper-case. */
  country: string;
}

/** What is answered with a status of 4xx. Its text says what is wrong and repeats nothing of the request. */
export class Refusal extends Error {
  constructor(readonly status: number, readonly code: string, message: string) {
    super(message);
  }
}

export const mostBodyBytes = 4096;
export const longestKeyword = 100;

const badRequest = (message: string) => new Refusal(400, "BAD_REQUEST", message);
const tooLarge = () => new Refusal(413, "BODY_TOO_LARGE", "The body is larger than 4096 bytes");

/** What is read of a body at all; a client that sends more loses the connection. */
const mostDrainedBytes = 64 * 1024;
/** A body that takes longer is no question of Veltrix. */
const bodyTimeoutMs = 5_000;

/** Reads a body to its end and keeps its beginning. Throws when it is cut short or takes too long. */
async function readParts(body: ReadableStream, keptBytes: number) {
  const reader = body.getReader();
  const parts: ArrayBufferView[] = [];
  let size = 0;
  let timer: ReturnType<typeof setTimeout> | undefined;
  const late = new Promise<never>((_, reject) => {
    timer = setTimeout(() => reject(new Error("late")), bodyTimeoutMs);
  });
  try {
    while (size <= mostDrainedBytes) {
      const { done, value } = await Promise.race([reader.read(), late]);
      if (done) break;
      size += value.length;
      if (size <= keptBytes) parts.push(value);
    }
    return { parts, size };
  } finally {
    clearTimeout(timer);
    // Nothing more is wanted; after the end this does nothing.
    reader.cancel().catch(() => undefined);
  }
}

/**
 * Reads on to the end of a body that nobody wants. Over HTTP/2 an answer that comes before the end of the
 * question may be lost to the client.
 */
export async function drain(request: Request) {
  if (request.bodyUsed || !request.body) return;
  // Whether it came whole does not matter any more.
  await readParts(request.body, 0).catch(() => undefined);
}

async function readBody(request: Request): Promise<string> {
  if (!request.body) return "";
  const { parts, size } = await readParts(request.body, mostBodyBytes).catch(() => {
    throw badRequest("The body is cut short");
  });
  if (size > mostBodyBytes) throw tooLarge();
  try {
    const decoder = new TextDecoder("utf-8", { fatal: true });
    const texts = parts.map((part) => decoder.decode(part, { stream: true }));
    return texts.join("") + decoder.decode();
  } catch {
    throw badRequest("The body is not UTF-8");
  }
}

function readKeyword(value: unknown): string {
  if (typeof value !== "string") throw badRequest("The keyword is no text");
  const keyword = value.trim().toLowerCase().normalize("NFC");
  const length = [...keyword].length;
  if (length < 1 || length > longestKeyword) {
    throw badRequest("The keyword has not 1 to 100 characters");
  }
  if (/[\p{Cc}\p{Cs}]/u.test(keyword)) throw badRequest("The keyword has control characters");
  return keyword;
}

function readCountry(value: unknown): string {
  const country = typeof value === "string" ? value.toUpperCase() : "";
  if (!storefronts.has(country)) throw badRequest("The country has no App Store");
  return country;
}

/** Throws a Refusal for anything but an object with a keyword and a country. */
export async function readQuestion(request: Request): Promise<Question> {
  const type = request.headers.get("content-type") ?? "";
  const coding = request.headers.get("content-encoding") ?? "identity";
  if (!/^application\/json\s*(;\s*charset\s*=\s*"?utf-8"?\s*)?$/i.test(type)) {
    throw badRequest("The body is not application/json");
  }
  if (coding.toLowerCase() !== "identity") throw badRequest("The body is compressed");
  const text = await readBody(request);
  let value: unknown;
  try {
    value = JSON.parse(text);
  } catch {
    throw badRequest("The body is not JSON");
  }
  if (typeof value !== "object" || value === null || Array.isArray(value)) {
    throw badRequest("The body is no object");
  }
  const { keyword, country } = value as Record<string, unknown>;
  return { keyword: readKeyword(keyword), country: readCountry(country) };
}
