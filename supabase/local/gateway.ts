// SPDX-License-Identifier: GPL-3.0-or-later
// One address for the Data API and the function, as a project has it.
import { type Handler, ResearchService } from "../functions/aso-research/service.ts";
import { type Configuration, configurationFrom } from "../functions/aso-research/configuration.ts";
import { type Log, logLine } from "../functions/aso-research/log.ts";
import { type Cluster, DataApi, type Keys } from "./data_api.ts";

export interface Project {
  /** Where the Data API and the function are found, on loopback. */
  url: string;
  handle: Handler;
  service: ResearchService;
  close(): Promise<void>;
}

/** Port 0 takes a free one. */
export function serveProject(
  cluster: Cluster,
  keys: Keys,
  options: Partial<Configuration> & { port?: number; log?: Log } = {},
): Project {
  const { port = 0, log = logLine, ...changes } = options;
  const dataApi = new DataApi(cluster, keys);
  // The function wants to know the address before it can answer at it.
  const parts: { service?: ResearchService } = {};
  const handle: Handler = (request, info) =>
    new URL(request.url).pathname.startsWith("/rest/")
      ? dataApi.answer(request)
      : parts.service!.handle(request, info);
  const server = Deno.serve({ hostname: "127.0.0.1", port, onListen: () => {} }, handle);
  const url = `http://127.0.0.1:${server.addr.port}`;
  const configuration = configurationFrom({
    ...Deno.env.toObject(),
    SUPABASE_URL: url,
    SUPABASE_PUBLISHABLE_KEYS: JSON.stringify({ default: keys.publishable }),
    SUPABASE_SECRET_KEYS: JSON.stringify({ default: keys.secret }),
  });
  const service = new ResearchService({ ...configuration, ...changes }, log);
  parts.service = service;
  return {
    url,
    handle,
    service,
    async close() {
      await server.shutdown();
      dataApi.close();
    },
  };
}
