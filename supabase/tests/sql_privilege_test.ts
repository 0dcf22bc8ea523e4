// SPDX-License-Identifier: GPL-3.0-or-later
// Who may do what, under the privileges that a new project grants by default.
import { type Database, databaseTest } from "./database.ts";
import { expect, expectEqual, expectFailure } from "./expect.ts";

const denied = "42501";
const tables = [
  "setting",
  "ranked_result",
  "fetch_job",
  "fetch_budget",
  "client_quota",
  "fetch_count",
];
const calls = [
  "aso_research_ask('US', 'fox', 'anna')",
  "aso_research_claim(gen_random_uuid())",
  "aso_research_complete('US', 'fox', gen_random_uuid(), 1, 'YQ==', 1, 1)",
  "aso_research_fail('US', 'fox', gen_random_uuid(), 'retry', null, 1, 1)",
  "aso_research_tidy()",
  "aso_research_health()",
];

async function innerFunctions(db: Database): Promise<string[]> {
  const rows = await db.sql(
    "select p.oid::regprocedure::text as name from pg_proc p where pronamespace = 'aso_research'::regnamespace",
  );
  return rows.map((row) => String(row.name));
}

databaseTest("a new project's defaults would let everybody call a new function", async (db) => {
  await db.sql("set role postgres");
  await db.sql("create function public.any_function() returns int language sql as 'select 1'");
  await db.sql("reset role");
  const anon = await db.session("anon");
  expectEqual((await anon.query("select any_function() as n"))[0].n, 1);
});

for (const role of ["anon", "authenticated"]) {
  databaseTest(`${role} can call no function of the service`, async (db) => {
    const session = await db.session(role);
    for (const call of calls) {
      await expectFailure(denied, call, () => session.query(`select public.${call}`));
    }
    expectEqual(await db.count("fetch_job"), 0);
  });
}

databaseTest("service_role can call the six functions", async (db) => {
  for (const call of calls) await db.service.query(`select public.${call}`);
});

for (const role of ["anon", "authenticated", "service_role"]) {
  databaseTest(`${role} reads and writes no table`, async (db) => {
    const session = await db.session(role);
    for (const table of tables) {
      for (
        const statement of [
          `select from aso_research.${table}`,
          `insert into aso_research.${table} default values`,
          `delete from aso_research.${table}`,
          `truncate aso_research.${table}`,
        ]
      ) {
        await expectFailure(denied, statement, () => session.query(statement));
      }
    }
  });

  databaseTest(`${role} has no right to any inner function, nor to the schema`, async (db) => {
    const names = await innerFunctions(db);
    expect(names.length >= 10, `only ${names.length} inner functions were found`);
    for (const name of names) {
      const rows = await db.sql("select has_function_privilege($1, $2, 'execute') as may", [
        role,
        name,
      ]);
      expectEqual(rows[0].may, false, name);
    }
    const rows = await db.sql("select has_schema_privilege($1, 'aso_research', 'usage') as may", [
      role,
    ]);
    expectEqual(rows[0].may, false);
  });
}

databaseTest(
  "every table has row-level security, no policy, and the owner that cannot log in",
  async (db) => {
    const rows = await db.sql(`
    select relname, relrowsecurity, pg_get_userbyid(relowner) as owner
    from pg_class where relnamespace = 'aso_research'::regnamespace and relkind in ('r', 'p', 'v', 'm')
    order by relname`);
    expectEqual(rows.map((row) => row.relname), [...tables].sort());
    for (const row of rows) {
      expectEqual([row.relrowsecurity, row.owner], [
        true,
        "aso_research_owner",
      ]);
    }
    expectEqual((await db.sql("select count(*) as n from pg_policies"))[0].n, 0);
    const roles = await db.sql(
      "select rolcanlogin, rolsuper, rolbypassrls, rolcreaterole from pg_roles where rolname = 'aso_research_owner'",
    );
    expectEqual(roles, [{
      rolcanlogin: false,
      rolsuper: false,
      rolbypassrls: false,
      rolcreaterole: false,
    }]);
  },
);

databaseTest(
  "the functions run as their owner, with a search path that cannot be changed",
  async (db) => {
    const rows = await db.sql(`
    select proname, prosecdef, proconfig::text as config, pg_get_userbyid(proowner) as owner
    from pg_proc where pronamespace = 'public'::regnamespace and proname like 'aso_research%'`);
    expectEqual(rows.length, calls.length);
    for (const row of rows) {
      expectEqual([row.prosecdef, row.config, row.owner], [
        true,
        '{"search_path=\\"\\""}',
        "aso_research_owner",
      ]);
    }
  },
);

databaseTest(
  "a function that somebody plants in public is not called by the service",
  async (db) => {
    await db.sql(
      "create function public.clock_timestamp() returns timestamptz language sql as $$ select 'epoch'::timestamptz $$",
    );
    await db.sql(
      "create function public.encode(bytea, text) returns text language sql as $$ select 'planted' $$",
    );
    await db.fetch("fox");
    expect(
      (await db.ask("fox") as { body: string }).body !== "planted",
      "the planted function ran",
    );
  },
);

databaseTest("the owner can put nothing more into public", async (db) => {
  const rows = await db.sql(
    "select has_schema_privilege('aso_research_owner', 'public', 'create') as may",
  );
  expectEqual(rows[0].may, false);
});

databaseTest("the operator sees the tables and changes the settings", async (db) => {
  await db.ask("fox");
  await db.sql("set role postgres");
  await db.sql("update aso_research.setting set pace = '5 seconds'");
  expectEqual((await db.sql("select keyword from aso_research.fetch_job"))[0].keyword, "fox");
  await db.sql("reset role");
});

databaseTest("keywords are data, whatever they look like", async (db) => {
  for (const keyword of ["'; drop table x; --", "%", "\\", "${a}", "🦊", "a\u2028b", '"', "null"]) {
    await db.ask(keyword, "x".repeat(10));
    const rows = await db.sql("select keyword from aso_research.fetch_job where keyword = $1", [
      keyword,
    ]);
    expectEqual(rows, [{ keyword }]);
  }
});

databaseTest("what the README says about removing the service leaves nothing of it", async (db) => {
  const readme = await Deno.readTextFile(new URL("../README.md", import.meta.url));
  const removal = readme.match(/```sql\n(drop function[\s\S]*?)```/)![1];
  // The role is one for the whole cluster, and other databases of the tests need it.
  const statements = removal.split(";").filter((one) => one.trim() && !one.includes("drop role"));
  expectEqual(statements.length, 3);
  await db.sql("drop schema testing cascade");
  await db.sql("set role postgres");
  for (const statement of statements) await db.sql(statement);
  await db.sql("reset role");
  const left = await db.sql(`
    select count(*) as n from pg_shdepend
    where refobjid = 'aso_research_owner'::regrole
      and dbid = (select oid from pg_database where datname = current_database())`);
  expectEqual(left[0].n, 0);
  expectEqual(
    (await db.sql("select count(*) as n from supabase_migrations.schema_migrations"))[0].n,
    0,
  );
});
