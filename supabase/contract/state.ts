// SPDX-License-Identifier: GPL-3.0-or-later
// Puts the service's database into a state of the contract, for the function's own runner and for
// whoever wants to see a client meet it.
import type { Connection } from "../local/postgres.ts";
import { toBase64 } from "../functions/aso-research/gzip.ts";
import { readyBody } from "../functions/aso-research/worker.ts";

export interface Given {
  state: string;
  place?: number;
  seconds?: number;
  blocked?: number;
}

export interface Subject {
  keyword: string;
  country: string;
  /** The client's name as the service makes it. */
  client: string;
}

const others = `insert into aso_research.fetch_job (country, keyword, client, round, asked_at)
  select 'US', 'other keyword ' || n, coalesce($2, 'other client ' || n), case when $2 is null then 1 else n end,
    clock_timestamp() from generate_series(1, $1::integer) n`;
const own = `insert into aso_research.fetch_job (country, keyword, client, round, asked_at)
  values ($1, $2, $3, 1, clock_timestamp())`;

async function putResult(database: Connection, subject: Subject, at: Date) {
  const apps = [1, 2].map((rank) => ({
    trackId: 6_000_000_000 + rank,
    trackName: `${subject.keyword} ${rank}`,
    userRatingCount: 1000 * rank,
    averageUserRating: 4.5,
    sellerName: "Nobody",
    kind: "software",
  }));
  const body = toBase64(await readyBody(at.toISOString(), apps));
  await database.query(
    `insert into aso_research.ranked_result (country, keyword, fetched_at, result_count, body, asked_on)
     values ($1, $2, $3, 2, decode($4, 'base64'), aso_research.utc_day($3))`,
    [subject.country, subject.keyword, at.toISOString(), body],
  );
}

/** Other jobs, then the subject's own, so that it stands in the given place. */
async function queueUp(database: Connection, subject: Subject, place: number) {
  await database.query(others, [place - 1, null]);
  await database.query(own, [subject.country, subject.keyword, subject.client]);
}

/**
 * Forgets everything and puts the database into the state. `database` is a superuser's session. Nobody
 * fetches afterwards, because the seat of the worker is taken, except in "never asked".
 */
export async function setState(database: Connection, given: Given, subject: Subject) {
  const name = (await database.query("select current_database() as name"))[0].name;
  await database.query(`alter database ${name} connection limit -1`);
  await database.run(`
    truncate aso_research.fetch_job, aso_research.ranked_result, aso_research.client_quota;
    delete from aso_research.fetch_budget;
    insert into aso_research.fetch_budget (worker, worker_until)
      values (gen_random_uuid(), clock_timestamp() + interval '1 day')`);
  const block = (seconds: number) =>
    database.query(
      `update aso_research.fetch_budget set block = '1 minute',
         blocked_until = clock_timestamp() + make_interval(secs => $1)`,
      [seconds],
    );
  const yesterday = new Date(Date.now() - 86_400_000);
  switch (given.state) {
    case "never asked":
      await database.run("update aso_research.fetch_budget set worker = null, worker_until = null");
      break;
    case "fetched today":
      await putResult(database, subject, new Date());
      if (given.blocked) await block(given.blocked);
      break;
    case "queued":
      await queueUp(database, subject, given.place!);
      break;
    case "stale":
      await putResult(database, subject, yesterday);
      await queueUp(database, subject, given.place!);
      break;
    case "blocked":
      await queueUp(database, subject, given.place!);
      await block(given.seconds!);
      break;
    case "failed":
      await database.query(own, [subject.country, subject.keyword, subject.client]);
      await database.run(`update aso_research.fetch_job set failed = true, attempts = 3,
        not_before = clock_timestamp() + interval '10 minutes'`);
      break;
    case "queue full":
      await database.query(others, [1000, null]);
      break;
    case "share spent":
      await database.query(
        `insert into aso_research.client_quota values
           (aso_research.utc_day(clock_timestamp()), $1, 2000)`,
        [subject.client],
      );
      break;
    case "40 outstanding":
      await database.query(others, [40, subject.client]);
      break;
    case "database out of reach":
      await database.query(`alter database ${name} connection limit 0`);
      await database.query(
        `select pg_terminate_backend(pid) from pg_stat_activity
         where datname = current_database() and usename = 'authenticator'`,
      );
      break;
    default:
      throw new Error(`The contract has no state "${given.state}".`);
  }
}
