// SPDX-License-Identifier: GPL-3.0-or-later
// Stands in for a project's Data API where there is none: POST /rest/v1/rpc/<function> with the
// arguments as a JSON object. The key decides the database role, as in a project.
import { Pool, PostgresError, type Value } from "./postgres.ts";

export interface Keys {
  publishable: string;
  secret: string;
}

export interface Cluster {
  folder: string;
  port: number;
  database: string;
}

function json(status: number, value: unknown): Response {
  return Response.json(value, { status });
}

function statusOf(error: unknown): number {
  if (!(error instanceof PostgresError)) return 503;
  if (error.code === "42501") return 403;
  if (error.code === "42883") return 404;
  return error.code.startsWith("08") || error.code.startsWith("57P") ? 503 : 400;
}

export class DataApi {
  #keys: Keys;
  #pools: Record<string, Pool>;

  constructor(cluster: Cluster, keys: Keys, connections = 8) {
    const poolOf = (role: string) =>
      new Pool({ ...cluster, user: "authenticator", settings: { role } }, connections);
    this.#keys = keys;
    this.#pools = { service_role: poolOf("service_role"), anon: poolOf("anon") };
  }

  close() {
    for (const pool of Object.values(this.#pools)) pool.close();
  }

  async answer(request: Request): Promise<Response> {
    const role = this.#roleOf(request.headers.get("apikey"));
    if (!role) return json(401, { message: "Invalid API key" });
    const name = new URL(request.url).pathname.match(/^\/rest\/v1\/rpc\/([a-z_]{1,63})$/)?.[1];
    if (!name || request.method !== "POST") return json(404, { message: "Not found" });
    let input: Record<string, Value>;
    try {
      input = await request.json();
    } catch {
      return json(400, { message: "The arguments are no JSON" });
    }
    const names = Object.keys(input);
    if (names.some((argument) => !/^[a-z_]{1,63}$/.test(argument))) {
      return json(400, { message: "No such argument" });
    }
    const list = names.map((argument, index) => `${argument} => $${index + 1}`).join(", ");
    try {
      const rows = await this.#pools[role].query(
        `select to_json(public.${name}(${list}))::text as answer`,
        Object.values(input),
      );
      return new Response(String(rows[0].answer), {
        headers: { "Content-Type": "application/json" },
      });
    } catch (error) {
      const code = error instanceof PostgresError ? error.code : "08001";
      return json(statusOf(error), { code, message: (error as Error).message });
    }
  }

  #roleOf(key: string | null): "service_role" | "anon" | undefined {
    if (key === this.#keys.secret) return "service_role";
    if (key === this.#keys.publishable) return "anon";
    return undefined;
  }
}
