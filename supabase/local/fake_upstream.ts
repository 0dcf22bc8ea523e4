// SPDX-License-Identifier: GPL-3.0-or-later
// Answers searches as the App Store's search service does, about apps that do not exist. What it does
// instead can be set by keyword, and it remembers when it was asked for what.

export interface Arrival {
  /** Milliseconds since 1970. */
  at: number;
  term: string;
  country: string;
  query: string;
  /** What stands in the path before "/search". */
  prefix: string;
}

export type Behaviour = (arrival: Arrival) => Response | undefined | Promise<Response | undefined>;

/** A made-up app, with fields that nobody keeps and numbers as long as the real ones. */
function madeUpApp(term: string, country: string, rank: number): string {
  const app = {
    trackId: 6_000_000_000 + rank,
    trackName: `${term} ${rank}`,
    artistId: 1,
    wrapperType: "software",
    kind: "software",
    userRatingCount: 5000 - rank * 10,
    averageUserRating: 4.5,
    releaseDate: "2019-05-01T07:00:00Z",
    currentVersionReleaseDate: "2026-01-15T09:30:00Z",
    artworkUrl60: `https://pictures.example/${rank}/60.png`,
    artworkUrl100: `https://pictures.example/${rank}/100.png`,
    artworkUrl512: `https://pictures.example/${rank}/512.png`,
    primaryGenreName: "Utilities",
    description: `The ${rank}th app that answers to “${term}” in ${country}.\n`.repeat(20),
    screenshotUrls: [1, 2, 3].map((n) => `https://pictures.example/${rank}/${n}.png`),
    ipadScreenshotUrls: [],
    sellerName: `Seller ${rank % 40}`,
    version: `1.${rank}`,
    formattedPrice: "Free",
    minimumOsVersion: "16.0",
    trackViewUrl: `https://apps.example/${country}/${rank}`,
    languageCodesISO2A: ["EN", "DE", "FR"],
    supportedDevices: Array(60).fill("iPhone5s-iPhone5s"),
  };
  return JSON.stringify(app).replace(
    ":4.5,",
    ":4.62802000000000024471091819577850401401519775390625,",
  );
}

export function searchAnswer(term: string, country: string, count: number): Response {
  const apps = Array.from({ length: count }, (_, rank) => madeUpApp(term, country, rank + 1));
  const text = `\n\n\n{\n "resultCount":${count},\n "results": [${apps.join(",\n")}]\n}\n\n\n`;
  return new Response(text, { headers: { "Content-Type": "text/javascript; charset=utf-8" } });
}

export class FakeUpstream {
  readonly arrivals: Arrival[] = [];
  readonly behaviours = new Map<string, Behaviour>();
  /** For terms without a behaviour of their own. */
  behaviour: Behaviour = () => undefined;
  #server: Deno.HttpServer<Deno.NetAddr>;

  /** Port 0 takes a free one. */
  constructor(port = 0, readonly appCount = 100) {
    this.#server = Deno.serve(
      { hostname: "127.0.0.1", port, onListen: () => {} },
      (request) => this.#answer(request),
    );
  }

  get url(): string {
    return `http://127.0.0.1:${this.#server.addr.port}`;
  }

  arrivalsOf(term: string): number {
    return this.arrivals.filter((arrival) => arrival.term === term).length;
  }

  async close() {
    await this.#server.shutdown();
  }

  async #answer(request: Request): Promise<Response> {
    const url = new URL(request.url);
    const term = url.searchParams.get("term") ?? "";
    const country = url.searchParams.get("country") ?? "";
    if (!url.pathname.endsWith("/search")) return new Response(null, { status: 404 });
    const arrival = {
      at: Date.now(),
      term,
      country,
      query: url.search,
      prefix: url.pathname.slice(0, -7),
    };
    this.arrivals.push(arrival);
    const special = await (this.behaviours.get(term) ?? this.behaviour)(arrival);
    return special ?? searchAnswer(term, country, this.appCount);
  }
}
