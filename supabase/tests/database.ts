// SPDX-License-Identifier: GPL-3.0-or-later
// A database of its own for each test, copied from one that the migrations made.
import type { Claim, FetchClaim, Known } from "../functions/aso-research/data_api.ts";
import { type Address, Connection, type Row, type Value } from "../local/postgres.ts";

const folder = Deno.env.get("SERVICE_TEST_CLUSTER");
if (!folder) throw new Error("These tests are run by scripts/service test.");

const template = "research_test";
const address = (database: string, user: string): Address => ({
  folder,
  port: 5432,
  database,
  user,
});

/** 2026-03-02 is a Monday; most tests begin at its noon. */
export const noon = "2026-03-02T12:00:00Z";
export const body = btoa("the body");

export class Database {
  #sessions: Connection[] = [];
  #now = new Date(noon);

  private constructor(
    readonly name: string,
    readonly admin: Connection,
    readonly service: Connection,
  ) {}

  static async make(): Promise<Database> {
    const name = `test_${crypto.randomUUID().replaceAll("-", "")}`;
    const maker = await Connection.open(address("postgres", "supabase_admin"));
    await maker.run(`create database ${name} template ${template} owner postgres`);
    maker.close();
    const admin = await Connection.open(address(name, "supabase_admin"));
    const service = await Database.open(name, "service_role");
    return new Database(name, admin, service);
  }

  static open(name: string, role: string): Promise<Connection> {
    return Connection.open({ ...address(name, "authenticator"), settings: { role } });
  }

  get cluster() {
    return { folder: folder!, port: 5432, database: this.name };
  }

  /** One more session in a role. */
  async session(role: string): Promise<Connection> {
    const session = await Database.open(this.name, role);
    this.#sessions.push(session);
    return session;
  }

  async close() {
    for (const session of [...this.#sessions, this.service, this.admin]) session.close();
    const maker = await Connection.open(address("postgres", "supabase_admin"));
    await maker.run(`drop database ${this.name} with (force)`);
    maker.close();
  }

  /** Sets the service's clock, which stands still until the next call. */
  async at(moment: string | Date) {
    this.#now = new Date(moment);
    await this.admin.run(
      `delete from testing.clock; insert into testing.clock values ('${this.#now.toISOString()}')`,
    );
  }

  async later(seconds: number) {
    await this.at(new Date(this.#now.getTime() + seconds * 1000));
  }

  /** Runs a statement as the superuser. */
  sql(statement: string, parameters: Value[] = []): Promise<Row[]> {
    return this.admin.query(statement, parameters);
  }

  async count(table: string, where = "true"): Promise<number> {
    const rows = await this.sql(`select count(*) as n from aso_research.${table} where ${where}`);
    return rows[0].n as number;
  }

  async ask(keyword: string, client = "anna", session = this.service): Promise<Known> {
    return await call(session, "ask($1, $2, $3)", ["US", keyword, client]) as Known;
  }

  async claim(worker = workers[0], session = this.service): Promise<Claim> {
    return await call(session, "claim($1)", [worker]) as Claim;
  }

  /** Claims when the pace allows, which must give a fetch. */
  async claimNext(worker = workers[0]): Promise<FetchClaim> {
    let claim = await this.claim(worker);
    // The pace first, then perhaps the delay of the keyword itself.
    for (let i = 0; claim.state === "wait" && i < 2; ++i) {
      await this.later(claim.wait);
      claim = await this.claim(worker);
    }
    if (claim.state !== "fetch") throw new Error(`The claim gave "${claim.state}".`);
    return claim;
  }

  async complete(claim: FetchClaim): Promise<boolean> {
    const input = [claim.country, claim.keyword, claim.token, 1, body, 700, 5000];
    return await call(this.service, "complete($1, $2, $3, $4, $5, $6, $7)", input) as boolean;
  }

  async fail(claim: FetchClaim, kind: string, wait: number | null = null): Promise<string> {
    const input = [claim.country, claim.keyword, claim.token, kind, wait, 700, 0];
    return await call(this.service, "fail($1, $2, $3, $4, $5, $6, $7)", input) as string;
  }

  async tidy(): Promise<boolean> {
    return await call(this.service, "tidy()", []) as boolean;
  }

  /** Asks for a keyword and fetches it. */
  async fetch(keyword: string, client = "anna") {
    await this.ask(keyword, client);
    const claim = await this.claimNext();
    if (claim.keyword !== keyword) throw new Error(`The claim gave "${claim.keyword}".`);
    await this.complete(claim);
  }
}

export const workers = [crypto.randomUUID(), crypto.randomUUID()];

async function call(session: Connection, text: string, input: Value[]): Promise<unknown> {
  const rows = await session.query(`select public.aso_research_${text} as answer`, input);
  return rows[0].answer;
}

/** A test with a database of its own, whose clock stands at noon. */
export function databaseTest(name: string, body: (database: Database) => Promise<void>) {
  Deno.test(name, async () => {
    const database = await Database.make();
    try {
      await database.at(noon);
      await body(database);
    } finally {
      await database.close();
    }
  });
}
