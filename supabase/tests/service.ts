// SPDX-License-Identifier: GPL-3.0-or-later
// The whole service on loopback with a database of its own and an upstream that does as it is told.
import type { Configuration } from "../functions/aso-research/configuration.ts";
import type { LogFields } from "../functions/aso-research/log.ts";
import { FakeUpstream } from "../local/fake_upstream.ts";
import { type Project, serveProject } from "../local/gateway.ts";
import { Database } from "./database.ts";

export const keys = {
  publishable: "sb_publishable_of_the_tests",
  secret: "sb_secret_of_the_tests",
};

export interface Answer {
  httpStatus: number;
  headers: Headers;
  // deno-lint-ignore no-explicit-any
  body: any;
}

export interface LogEntry extends LogFields {
  event: string;
}

export class Scene {
  readonly log: LogEntry[] = [];

  constructor(
    readonly database: Database,
    readonly upstream: FakeUpstream,
    readonly project: Project,
  ) {}

  async ask(keyword: string, more: { country?: string; address?: string } = {}): Promise<Answer> {
    const response = await fetch(`${this.project.url}/functions/v1/aso-research`, {
      method: "POST",
      headers: {
        apikey: keys.publishable,
        "Content-Type": "application/json",
        "X-Forwarded-For": more.address ?? "192.0.2.1",
      },
      body: JSON.stringify({ keyword, country: more.country ?? "US" }),
    });
    return { httpStatus: response.status, headers: response.headers, body: await response.json() };
  }

  events(event: string): LogEntry[] {
    return this.log.filter((entry) => entry.event === event);
  }

  /** Waits, for a few seconds at most, until something has come about. */
  async until(what: string, condition: () => boolean | Promise<boolean>) {
    for (let i = 0; i < 400; ++i) {
      if (await condition()) return;
      await new Promise((resolve) => setTimeout(resolve, 20));
    }
    throw new Error(`It did not come about that ${what}.`);
  }

  /** Until the worker of this process has ended. */
  async settled() {
    await this.until("the worker ended", async () => {
      const rows = await this.database.sql(
        "select worker is null or worker_until < clock_timestamp() as idle from aso_research.fetch_budget",
      );
      return rows[0].idle as boolean;
    });
  }
}

type Options = Partial<Configuration> & {
  /** SQL for the row of settings. */
  settings?: string;
};

/** The pace and the delays are short, so that nothing is waited for. */
const quick = "pace = '20 milliseconds', retry_delay = '20 milliseconds', lease = '2 seconds'";

export function serviceTest(name: string, options: Options, body: (scene: Scene) => Promise<void>) {
  Deno.test({
    name,
    // A worker may sleep its last seconds when the test is over.
    sanitizeOps: false,
    sanitizeResources: false,
    fn: async () => {
      const { settings, ...changes } = options;
      const database = await Database.make();
      await database.sql(`update aso_research.setting set ${settings ?? quick}`);
      const upstream = new FakeUpstream(0, 3);
      const scenes: Scene[] = [];
      const log = (event: string, fields: LogFields = {}) =>
        void scenes[0]?.log.push({ event, ...fields });
      const project = serveProject(database.cluster, keys, {
        upstreamUrl: upstream.url,
        ...changes,
        log,
      });
      const scene = new Scene(database, upstream, project);
      scenes.push(scene);
      try {
        await body(scene);
      } finally {
        await project.close();
        await upstream.close();
        await database.close();
      }
    },
  });
}
