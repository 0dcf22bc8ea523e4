// SPDX-License-Identifier: GPL-3.0-or-later
// The few comparisons that the tests need.

function show(value: unknown): string {
  return JSON.stringify(value, (_key, inner) => inner === undefined ? "(undefined)" : inner) ??
    "undefined";
}

/** Members in any order. */
function isEqual(one: unknown, other: unknown): boolean {
  if (Object.is(one, other)) return true;
  if (typeof one !== "object" || typeof other !== "object" || !one || !other) return false;
  if (Array.isArray(one) !== Array.isArray(other)) return false;
  const keys = Object.keys(one);
  return keys.length === Object.keys(other).length &&
    keys.every((key) =>
      key in other &&
      isEqual((one as Record<string, unknown>)[key], (other as Record<string, unknown>)[key])
    );
}

export function expectEqual(actual: unknown, expected: unknown, what = "") {
  if (!isEqual(actual, expected)) {
    throw new Error(`${what && `${what}: `}expected ${show(expected)}, got ${show(actual)}`);
  }
}

export function expect(condition: boolean, what: string) {
  if (!condition) throw new Error(what);
}

/** Both ends included. */
export function expectBetween(actual: number, least: number, most: number, what = "the number") {
  expect(
    actual >= least && actual <= most,
    `${what} is ${actual}, which is not in ${least}…${most}`,
  );
}

export async function expectFailure(code: string, what: string, action: () => Promise<unknown>) {
  try {
    await action();
  } catch (error) {
    expectEqual((error as { code?: string }).code, code, what);
    return;
  }
  throw new Error(`${what}: nothing was refused`);
}
