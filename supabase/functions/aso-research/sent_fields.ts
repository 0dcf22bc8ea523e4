// SPDX-License-Identifier: GPL-3.0-or-later
// What Veltrix keeps of an app, and nothing else, is stored and sent.

type Check = (value: unknown) => boolean;

const isText: Check = (value) => typeof value === "string";
const isInteger: Check = (value) => Number.isSafeInteger(value);
const isNumber: Check = (value) => typeof value === "number" && Number.isFinite(value);
const isTexts: Check = (value) => Array.isArray(value) && value.every(isText);

/** In the order in which they are sent. */
const fields: [string, Check][] = [
  ["trackId", isInteger],
  ["trackName", isText],
  ["subtitle", isText],
  ["userRatingCount", isInteger],
  ["averageUserRating", isNumber],
  ["releaseDate", isText],
  ["currentVersionReleaseDate", isText],
  ["artworkUrl60", isText],
  ["primaryGenreName", isText],
  ["kind", isText],
  ["description", isText],
  ["screenshotUrls", isTexts],
  ["ipadScreenshotUrls", isTexts],
  ["sellerName", isText],
  ["version", isText],
  ["formattedPrice", isText],
  ["minimumOsVersion", isText],
  ["trackViewUrl", isText],
  ["artworkUrl100", isText],
  ["artworkUrl512", isText],
];

export const sentFields = fields.map(([name]) => name);

export type SentApp = Record<string, unknown>;

/**
 * The fields of one app that are sent. A field of another type than it should have is left out: it would
 * spoil the whole answer for the client.
 */
export function sentApp(app: Record<string, unknown>): SentApp {
  const sent: SentApp = {};
  for (const [name, check] of fields) {
    if (check(app[name])) sent[name] = app[name];
  }
  return sent;
}
