// SPDX-License-Identifier: GPL-3.0-or-later
// One line of JSON a fetch or a fault. A keyword, a key or an address never gets here: the types allow
// numbers, truth values, and names that the code itself gives.

export type LogFields = Record<string, number | boolean | string>;
export type Log = (event: string, fields?: LogFields) => void;

export const logLine: Log = (event, fields = {}) =>
  console.log(JSON.stringify({ event, ...fields }));

/** What kind of error it was; its message could hold what was asked for. */
export function errorName(error: unknown): string {
  return error instanceof Error ? error.name : "unknown";
}
