-- What the research service remembers: results, fetches to come, the budget of fetches, and what each
-- client has asked for today. Nothing here can be reached through the Data API: the schema is not
-- exposed, the tables belong to a role that nobody can log in as, and row-level security is on
-- without a single policy.

do $$
begin
  if not exists (select from pg_catalog.pg_roles where rolname = 'aso_research_owner') then
    create role aso_research_owner nologin;
  end if;
end
$$;
-- Whoever runs this keeps the right to look into the tables and to change the settings.
grant aso_research_owner to current_user;

create schema aso_research authorization aso_research_owner;
revoke all on schema aso_research from public;

set role aso_research_owner;

create table aso_research.setting (
  only_row boolean primary key default true check (only_row),
  -- One fetch in so much time, for the whole deployment.
  pace interval not null default '3.2 seconds' check (pace > interval '0'),
  -- How long a worker may be silent before another takes over its fetch and its seat.
  lease interval not null default '15 seconds' check (lease > interval '0'),
  attempts_most integer not null default 3 check (attempts_most > 0),
  -- The wait after the first failed attempt; it doubles.
  retry_delay interval not null default '5 seconds',
  failed_for interval not null default '10 minutes',
  block_least interval not null default '1 minute',
  block_most interval not null default '1 hour',
  -- So many first failures of different keywords in a row are an outage of the upstream.
  outage_after integer not null default 5 check (outage_after > 0),
  outstanding_most integer not null default 40,
  daily_most integer not null default 2000,
  queue_most integer not null default 1000,
  -- Every so many claims the job that has waited longest is taken, whatever its round.
  oldest_every integer not null default 4 check (oldest_every > 1),
  -- Keywords asked for in so many days, today included, are fetched again while nobody waits.
  idle_days integer not null default 3 check (idle_days >= 0),
  results_kept interval not null default '7 days',
  clients_kept interval not null default '2 days',
  counts_kept interval not null default '30 days'
);
insert into aso_research.setting default values;

-- The newest result of a keyword. The body is a whole answer, gzipped once and passed through as it is.
create table aso_research.ranked_result (
  country text collate "C" not null,
  keyword text collate "C" not null,
  fetched_at timestamptz not null,
  result_count integer not null,
  body bytea not null check (octet_length(body) <= 1048576),
  asked_on date not null,
  primary key (country, keyword)
);
alter table aso_research.ranked_result alter column body set storage external;
create index ranked_result_fetched_at on aso_research.ranked_result (fetched_at);

-- A fetch to come or under way. That there is one row a keyword is what makes many questions one fetch.
create table aso_research.fetch_job (
  country text collate "C" not null,
  keyword text collate "C" not null,
  -- Who asked for it; null for a refresh that nobody waits for.
  client text,
  -- 1 for a client's first job outstanding, 2 for its second: everybody's first before anybody's second.
  round integer not null,
  -- The order of arrival.
  place bigint generated always as identity,
  asked_at timestamptz not null,
  attempts integer not null default 0,
  -- Not to be fetched before; for a failed job, when its failure is over.
  not_before timestamptz,
  claimed_at timestamptz,
  lease_token uuid,
  leased_until timestamptz,
  failed boolean not null default false,
  primary key (country, keyword),
  check ((lease_token is null) = (leased_until is null)),
  check (not failed or (lease_token is null and not_before is not null))
);
create index fetch_job_order on aso_research.fetch_job (round, place) where not failed;
create index fetch_job_client on aso_research.fetch_job (client) where not failed;

-- One row for the whole deployment. Whoever changes the queue locks it first, so places are exact.
create table aso_research.fetch_budget (
  only_row boolean primary key default true check (only_row),
  -- The next fetch may start then.
  next_at timestamptz,
  blocked_until timestamptz,
  -- The length of the latest block; null after a success.
  block interval,
  -- The keywords that failed for the first time since the upstream last answered.
  failing text[] not null default '{}',
  claims bigint not null default 0,
  -- The one worker, and until when it is believed to be alive.
  worker uuid,
  worker_until timestamptz,
  tidied_at timestamptz
);
insert into aso_research.fetch_budget default values;

-- A client is a keyed hash of the day and the address, for fairness; it cannot be followed from day to day.
create table aso_research.client_quota (
  day date not null,
  client text not null,
  jobs integer not null,
  primary key (day, client)
);

create table aso_research.fetch_count (
  hour timestamptz not null,
  outcome text not null check (
    outcome in ('ready', 'blocked', 'retry', 'failed', 'refused', 'late', 'lapsed')
  ),
  fetches bigint not null,
  ms bigint not null,
  bytes bigint not null,
  primary key (hour, outcome)
);

alter table aso_research.setting enable row level security;
alter table aso_research.ranked_result enable row level security;
alter table aso_research.fetch_job enable row level security;
alter table aso_research.fetch_budget enable row level security;
alter table aso_research.client_quota enable row level security;
alter table aso_research.fetch_count enable row level security;

reset role;
