// SPDX-License-Identifier: GPL-3.0-or-later
// The function alone, as one process of several that share a Data API. Its configuration comes from the
// environment, as in a project; it prints the port that it took.
import { configurationFrom } from "../functions/aso-research/configuration.ts";
import { ResearchService } from "../functions/aso-research/service.ts";

const service = new ResearchService(configurationFrom(Deno.env.toObject()));
Deno.serve({
  hostname: "127.0.0.1",
  port: Number(Deno.env.get("PORT") ?? 0),
  onListen: ({ port }) => console.log(JSON.stringify({ event: "listening", port })),
}, service.handle);
