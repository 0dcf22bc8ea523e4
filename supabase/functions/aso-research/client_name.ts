// SPDX-License-Identifier: GPL-3.0-or-later
// Tells clients apart for fairness without knowing who they are. An address can be made up: this shares
// the service out among honest clients, and keeps nobody out.

export interface Peer {
  hostname?: string;
}

/** The first half of an IPv6 address is the network; a machine chooses the rest as it likes. */
function networkOf(address: string): string {
  if (!address.includes(":")) return address;
  const mapped = address.match(/^::ffff:(\d+\.\d+\.\d+\.\d+)$/i);
  if (mapped) return mapped[1];
  const [head, tail] = address.split("::");
  const groups = head === "" ? [] : head.split(":");
  const rest = tail ? tail.split(":") : [];
  if (tail !== undefined) {
    groups.push(...Array(Math.max(0, 8 - groups.length - rest.length)).fill("0"));
  }
  return [...groups, ...rest].slice(0, 4).map((group) => group.replace(/^0+(?=.)/, "")).join(":");
}

/** The address that a client is known by, or nothing usable: then all such clients are one. */
export function clientAddress(
  headers: Headers,
  peer: Peer | undefined,
  trustsForwarded: boolean,
): string {
  const forwarded = trustsForwarded
    ? headers.get("x-forwarded-for")?.split(",")[0].trim()
    : undefined;
  const address = forwarded && /^[0-9a-fA-F:.]{3,45}$/.test(forwarded) ? forwarded : peer?.hostname;
  return networkOf((address ?? "unknown").toLowerCase());
}

/** A keyed hash of the UTC day and the address: 22 characters that mean nothing tomorrow. */
export async function clientName(secret: string, day: string, address: string): Promise<string> {
  const encoder = new TextEncoder();
  const algorithm = { name: "HMAC", hash: "SHA-256" };
  const key = await crypto.subtle.importKey("raw", encoder.encode(secret), algorithm, false, [
    "sign",
  ]);
  const hash = await crypto.subtle.sign("HMAC", key, encoder.encode(`${day}\n${address}`));
  return btoa(String.fromCharCode(...new Uint8Array(hash, 0, 16))).replaceAll("=", "");
}
