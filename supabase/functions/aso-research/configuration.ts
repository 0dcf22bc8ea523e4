// SPDX-License-Identifier: GPL-3.0-or-later
// Where the service stands and which keys it knows, from the variables that a project sets by itself.

export interface Configuration {
  /** Without a slash at the end; the Data API and the function itself are found under it. */
  projectUrl: string;
  /** Any of them opens the service to a client. */
  publishableKeys: string[];
  secretKey: string;
  /** Without a slash at the end. */
  upstreamUrl: string;
  /** Whether the address of a client is in X-Forwarded-For, as behind a project's gateway. */
  trustsForwarded: boolean;
  /** How long a question may be held, in milliseconds. */
  holdMs: number;
  /** How long a worker works before it hands over, in milliseconds. */
  shiftMs: number;
  /** Bytes of today's answers kept in memory. */
  cacheBytes: number;
}

type Environment = Record<string, string | undefined>;

/** The values of a JSON object of named keys; nothing when there is no such object. */
function namedKeys(text: string | undefined): Record<string, string> {
  if (!text) return {};
  const value: unknown = JSON.parse(text);
  if (typeof value !== "object" || value === null) return {};
  return Object.fromEntries(
    Object.entries(value).filter((entry): entry is [string, string] =>
      typeof entry[1] === "string"
    ),
  );
}

function required(value: string | undefined, what: string): string {
  if (!value) throw new Error(`The environment has no ${what}.`);
  return value;
}

function numberOr(text: string | undefined, fallback: number): number {
  const value = Number(text);
  return text !== undefined && text !== "" && Number.isFinite(value) && value >= 0
    ? value
    : fallback;
}

const withoutSlash = (url: string) => url.replace(/\/+$/, "");

/** Throws when the project's address or a key is missing. */
export function configurationFrom(environment: Environment): Configuration {
  const secrets = namedKeys(environment.SUPABASE_SECRET_KEYS);
  const publishableKeys = [
    ...Object.values(namedKeys(environment.SUPABASE_PUBLISHABLE_KEYS)),
    environment.SUPABASE_PUBLISHABLE_KEY,
    environment.ASO_RESEARCH_PUBLISHABLE_KEY,
  ].filter((key): key is string => !!key);
  required(publishableKeys[0], "publishable key (ASO_RESEARCH_PUBLISHABLE_KEY)");
  return {
    projectUrl: withoutSlash(required(environment.SUPABASE_URL, "project address (SUPABASE_URL)")),
    publishableKeys,
    secretKey: required(
      secrets.default ?? Object.values(secrets)[0] ?? environment.SUPABASE_SECRET_KEY ??
        environment.SUPABASE_SERVICE_ROLE_KEY,
      "secret key (SUPABASE_SECRET_KEYS)",
    ),
    upstreamUrl: withoutSlash(environment.ASO_RESEARCH_UPSTREAM ?? "https://itunes.apple.com"),
    trustsForwarded: environment.ASO_RESEARCH_CLIENT_ADDRESS !== "peer",
    holdMs: numberOr(environment.ASO_RESEARCH_HOLD_MS, 8_000),
    shiftMs: numberOr(environment.ASO_RESEARCH_SHIFT_MS, 60_000),
    cacheBytes: numberOr(environment.ASO_RESEARCH_CACHE_BYTES, 16 * 1024 * 1024),
  };
}
