-- Every change of state of the research service. The edge function calls these six and touches no table.
-- They run as the tables' owner; only service_role may call them.

grant create on schema public to aso_research_owner;
set role aso_research_owner;

-- The one source of time, so that a test can be at any moment.
create function aso_research.moment() returns timestamptz
language sql volatile set search_path = ''
as $$ select clock_timestamp() $$;

create function aso_research.utc_day(p_moment timestamptz) returns date
language sql immutable set search_path = ''
as $$ select (p_moment at time zone 'UTC')::date $$;

-- Decimal, because a wait is rounded up to whole seconds later: 17 must not be a little more than 17.
create function aso_research.seconds(p_duration interval) returns numeric
language sql immutable set search_path = ''
as $$ select round(extract(epoch from p_duration), 3) $$;

-- Three digits of fraction and a Z, as clients expect it.
create function aso_research.internet_time(p_moment timestamptz) returns text
language sql immutable set search_path = ''
as $$ select to_char(p_moment at time zone 'UTC', 'YYYY-MM-DD"T"HH24:MI:SS.MS"Z"') $$;

create function aso_research.count_fetch(
  p_outcome text, p_moment timestamptz, p_ms integer, p_bytes integer
) returns void
language sql volatile set search_path = ''
as $$
  insert into aso_research.fetch_count as c (hour, outcome, fetches, ms, bytes)
  values (date_trunc('hour', p_moment, 'UTC'), p_outcome, 1,
    greatest(coalesce(p_ms, 0), 0), greatest(coalesce(p_bytes, 0), 0))
  on conflict (hour, outcome) do update
    set fetches = c.fetches + 1, ms = c.ms + excluded.ms, bytes = c.bytes + excluded.bytes
$$;

-- How many seconds until a job should be done: its place among the waiting times the pace, and one.
-- What is being fetched is in the first place; it uses no slot of the others any more.
create function aso_research.wait_of(
  p_job aso_research.fetch_job, p_setting aso_research.setting, p_moment timestamptz
) returns numeric
language sql stable set search_path = ''
as $$
  select greatest(
    1 + aso_research.seconds(p_setting.pace) * (1 + (
      select count(*) from aso_research.fetch_job other
      where not other.failed and other.lease_token is null and p_job.lease_token is null
        and (other.round, other.place) < (p_job.round, p_job.place))),
    1 + coalesce(aso_research.seconds(p_job.not_before - p_moment), 0))
$$;

-- What can be said about a keyword without changing anything, or null when it must be queued.
create function aso_research.known_answer(p_country text, p_keyword text, p_moment timestamptz)
returns jsonb
language plpgsql stable set search_path = ''
as $$
declare
  result aso_research.ranked_result;
  job aso_research.fetch_job;
  budget aso_research.fetch_budget;
  settings aso_research.setting;
  has_result boolean;
  wait numeric;
begin
  select * into result from aso_research.ranked_result
    where country = p_country and keyword = p_keyword;
  has_result := found;
  if has_result and aso_research.utc_day(result.fetched_at) >= aso_research.utc_day(p_moment) then
    return jsonb_build_object('state', 'ready',
      'fetched_at', aso_research.internet_time(result.fetched_at),
      'body', encode(result.body, 'base64'));
  end if;

  select * into job from aso_research.fetch_job where country = p_country and keyword = p_keyword;
  if not found or (job.failed and job.not_before <= p_moment) then
    return null;
  end if;
  if job.failed then
    return jsonb_build_object('state', 'failed',
      'wait', aso_research.seconds(job.not_before - p_moment));
  end if;

  select * into settings from aso_research.setting;
  select * into budget from aso_research.fetch_budget;
  wait := aso_research.wait_of(job, settings, p_moment);
  return jsonb_build_object(
      'wait', wait, 'work', coalesce(budget.worker_until <= p_moment, true))
    || case
      when budget.blocked_until > p_moment then jsonb_build_object('state', 'blocked',
        'wait', wait + aso_research.seconds(budget.blocked_until - p_moment))
      when has_result then jsonb_build_object('state', 'stale',
        'fetched_at', aso_research.internet_time(result.fetched_at))
      else jsonb_build_object('state', 'pending')
    end;
end
$$;

-- Puts a keyword at the end of the queue, in the client's next round. Gives the reason when it may not
-- be queued, else null. The caller has locked the budget.
create function aso_research.enqueue(
  p_country text, p_keyword text, p_client text, p_moment timestamptz
) returns text
language plpgsql volatile set search_path = ''
as $$
declare
  settings aso_research.setting;
  today date := aso_research.utc_day(p_moment);
  outstanding integer;
begin
  select * into settings from aso_research.setting;
  select count(*) into outstanding from aso_research.fetch_job
    where client = p_client and not failed;
  if outstanding >= settings.outstanding_most then
    return 'outstanding';
  end if;
  if (select jobs from aso_research.client_quota where day = today and client = p_client)
      >= settings.daily_most then
    return 'share spent';
  end if;
  if (select count(*) from aso_research.fetch_job where not failed) >= settings.queue_most then
    return 'queue full';
  end if;

  -- A failure that is over makes room for a new start.
  delete from aso_research.fetch_job
    where country = p_country and keyword = p_keyword and failed and not_before <= p_moment;
  insert into aso_research.fetch_job (country, keyword, client, round, asked_at)
    values (p_country, p_keyword, p_client, outstanding + 1, p_moment);
  insert into aso_research.client_quota as q (day, client, jobs) values (today, p_client, 1)
    on conflict (day, client) do update set jobs = q.jobs + 1;
  return null;
end
$$;

-- A job that waits in somebody's later round goes to a client for whom it comes sooner: nobody is
-- held up because another asked for the same keyword among many. The caller has locked the budget.
create function aso_research.adopt(p_country text, p_keyword text, p_client text) returns void
language sql volatile set search_path = ''
as $$
  with own as (
    select count(*)::integer + 1 as round from aso_research.fetch_job
    where client = p_client and not failed
  )
  update aso_research.fetch_job job set client = p_client, round = own.round
  from own
  where job.country = p_country and job.keyword = p_keyword and not job.failed
    and job.client is distinct from p_client and job.lease_token is null and own.round < job.round
$$;

create function public.aso_research_ask(p_country text, p_keyword text, p_client text) returns jsonb
language plpgsql volatile security definer set search_path = ''
as $$
declare
  moment timestamptz := aso_research.moment();
  answer jsonb;
  refusal text;
begin
  update aso_research.ranked_result set asked_on = aso_research.utc_day(moment)
    where country = p_country and keyword = p_keyword and asked_on < aso_research.utc_day(moment);

  answer := aso_research.known_answer(p_country, p_keyword, moment);
  if answer ->> 'state' = 'ready' then
    return answer;
  end if;
  if answer is not null and not exists (
    select from aso_research.fetch_job
    where country = p_country and keyword = p_keyword and not failed and lease_token is null
      and round > 1 and client is distinct from p_client
  ) then
    return answer;
  end if;

  -- Behind the lock a second look: another question may have queued it, a worker may have fetched it.
  perform from aso_research.fetch_budget for update;
  moment := aso_research.moment();
  perform aso_research.adopt(p_country, p_keyword, p_client);
  answer := aso_research.known_answer(p_country, p_keyword, moment);
  if answer is null then
    refusal := aso_research.enqueue(p_country, p_keyword, p_client, moment);
    if refusal is not null then
      return jsonb_build_object('state', refusal);
    end if;
    answer := aso_research.known_answer(p_country, p_keyword, moment);
  end if;
  return answer;
end
$$;

-- A fetch whose worker has been silent for the lease is free again. It counts as an attempt, so a
-- keyword that kills its workers is given up like any other.
create function aso_research.end_leases(p_moment timestamptz) returns void
language plpgsql volatile set search_path = ''
as $$
declare
  settings aso_research.setting;
  job aso_research.fetch_job;
  is_last boolean;
begin
  select * into settings from aso_research.setting;
  for job in select * from aso_research.fetch_job where leased_until <= p_moment for update loop
    is_last := job.attempts + 1 >= settings.attempts_most;
    update aso_research.fetch_job
      set attempts = job.attempts + 1, lease_token = null, leased_until = null, failed = is_last,
        not_before = case when is_last then p_moment + settings.failed_for end
      where country = job.country and keyword = job.keyword;
    perform aso_research.count_fetch('lapsed', p_moment, 0, 0);
  end loop;
end
$$;

-- While nobody waits: a keyword that was asked for lately and has no result of today becomes a job.
create function aso_research.enqueue_idle(p_moment timestamptz) returns void
language sql volatile set search_path = ''
as $$
  insert into aso_research.fetch_job (country, keyword, round, asked_at)
  select r.country, r.keyword, 1, p_moment
  from aso_research.ranked_result r, aso_research.setting s
  where aso_research.utc_day(r.fetched_at) < aso_research.utc_day(p_moment)
    and r.asked_on > aso_research.utc_day(p_moment) - s.idle_days
    and not exists (
      select from aso_research.fetch_job j where j.country = r.country and j.keyword = r.keyword
    )
  order by r.asked_on desc, r.fetched_at
  limit 1
$$;

create function public.aso_research_claim(p_worker uuid) returns jsonb
language plpgsql volatile security definer set search_path = ''
as $$
declare
  moment timestamptz;
  settings aso_research.setting;
  budget aso_research.fetch_budget;
  job aso_research.fetch_job;
  takes_oldest boolean;
  next_moment timestamptz;
begin
  select * into settings from aso_research.setting;
  select * into budget from aso_research.fetch_budget for update;
  moment := date_trunc('milliseconds', aso_research.moment());
  if budget.worker is distinct from p_worker and budget.worker_until > moment then
    return jsonb_build_object('state', 'occupied');
  end if;
  update aso_research.fetch_budget set worker = p_worker, worker_until = moment + settings.lease;
  perform aso_research.end_leases(moment);

  if budget.blocked_until > moment then
    if exists (select from aso_research.fetch_job where not failed) then
      return jsonb_build_object('state', 'wait',
        'wait', aso_research.seconds(budget.blocked_until - moment));
    end if;
    update aso_research.fetch_budget set worker = null, worker_until = null;
    return jsonb_build_object('state', 'nothing');
  end if;
  if budget.next_at > moment then
    return jsonb_build_object('state', 'wait', 'wait', aso_research.seconds(budget.next_at - moment));
  end if;

  if not exists (select from aso_research.fetch_job where not failed) then
    perform aso_research.enqueue_idle(moment);
  end if;
  takes_oldest := (budget.claims + 1) % settings.oldest_every = 0;
  select * into job from aso_research.fetch_job
    where not failed and lease_token is null and (not_before is null or not_before <= moment)
    order by case when takes_oldest then 0 else round end, place
    limit 1 for update skip locked;
  if not found then
    select min(coalesce(leased_until, not_before)) into next_moment from aso_research.fetch_job
      where not failed;
    if next_moment is not null then
      return jsonb_build_object('state', 'wait',
        'wait', greatest(aso_research.seconds(next_moment - moment), 0.001));
    end if;
    update aso_research.fetch_budget set worker = null, worker_until = null;
    return jsonb_build_object('state', 'nothing');
  end if;

  update aso_research.fetch_job
    set claimed_at = moment, lease_token = gen_random_uuid(), leased_until = moment + settings.lease
    where country = job.country and keyword = job.keyword
    returning * into job;
  update aso_research.fetch_budget set next_at = moment + settings.pace, claims = claims + 1;
  return jsonb_build_object('state', 'fetch', 'country', job.country, 'keyword', job.keyword,
    'token', job.lease_token, 'fetched_at', aso_research.internet_time(moment),
    'pace', aso_research.seconds(settings.pace));
end
$$;

-- Takes a result in. Its date is the moment of the claim: what was asked for yesterday is yesterday's,
-- even if it arrives today. False when the lease was lost; the result is then ignored.
create function public.aso_research_complete(
  p_country text, p_keyword text, p_token uuid, p_result_count integer, p_body text,
  p_ms integer, p_bytes integer
) returns boolean
language plpgsql volatile security definer set search_path = ''
as $$
declare
  moment timestamptz;
  job aso_research.fetch_job;
begin
  perform from aso_research.fetch_budget for update;
  moment := aso_research.moment();
  delete from aso_research.fetch_job
    where country = p_country and keyword = p_keyword and lease_token = p_token
    returning * into job;
  if not found then
    perform aso_research.count_fetch('late', moment, p_ms, p_bytes);
    return false;
  end if;
  insert into aso_research.ranked_result (country, keyword, fetched_at, result_count, body, asked_on)
    values (p_country, p_keyword, job.claimed_at, p_result_count, decode(p_body, 'base64'),
      aso_research.utc_day(job.asked_at))
    on conflict (country, keyword) do update
      set fetched_at = excluded.fetched_at, result_count = excluded.result_count,
        body = excluded.body;
  update aso_research.fetch_budget
    set blocked_until = null, block = null, failing = '{}', worker_until = case
      when worker is null then null
      else moment + (select lease from aso_research.setting) end;
  perform aso_research.count_fetch('ready', moment, p_ms, p_bytes);
  return true;
end
$$;

-- The upstream wants to be left alone: for a minute, then twice as long each time, at most an hour.
create function aso_research.back_off(p_moment timestamptz, p_wait double precision) returns void
language sql volatile set search_path = ''
as $$
  with next as (
    select least(coalesce(b.block * 2, s.block_least), s.block_most) as block,
      least(make_interval(secs => greatest(coalesce(p_wait, 0), 0)), s.block_most) as wish
    from aso_research.fetch_budget b, aso_research.setting s
  )
  update aso_research.fetch_budget
    set block = next.block, blocked_until = p_moment + greatest(next.block, next.wish),
      failing = '{}'
  from next
$$;

-- Takes a fetch back that brought no result. p_kind is "blocked" (the upstream limits us; p_wait is what
-- it asked for in seconds, if anything), "retry" (it may work later) or "refused" (it never will).
-- Gives what became of the job: blocked, retry, failed, refused, or late when the lease was lost.
create function public.aso_research_fail(
  p_country text, p_keyword text, p_token uuid, p_kind text, p_wait double precision,
  p_ms integer, p_bytes integer
) returns text
language plpgsql volatile security definer set search_path = ''
as $$
declare
  moment timestamptz;
  settings aso_research.setting;
  budget aso_research.fetch_budget;
  job aso_research.fetch_job;
  outcome text := p_kind;
  subject text := p_country || ':' || p_keyword;
begin
  if p_kind not in ('blocked', 'retry', 'refused') then
    raise exception 'no such kind of failure' using errcode = 'invalid_parameter_value';
  end if;
  select * into settings from aso_research.setting;
  select * into budget from aso_research.fetch_budget for update;
  moment := aso_research.moment();
  select * into job from aso_research.fetch_job
    where country = p_country and keyword = p_keyword and lease_token = p_token for update;
  if not found then
    perform aso_research.count_fetch('late', moment, p_ms, p_bytes);
    return 'late';
  end if;

  if p_kind = 'blocked' then
    perform aso_research.back_off(moment, p_wait);
  elsif p_kind = 'refused' then
    -- An upstream that judges a keyword is an upstream that works.
    update aso_research.fetch_budget set blocked_until = null, block = null, failing = '{}';
  elsif job.attempts = 0 and not subject = any (budget.failing) then
    update aso_research.fetch_budget set failing = failing || subject returning * into budget;
    if cardinality(budget.failing) >= settings.outage_after then
      perform aso_research.back_off(moment, null);
    end if;
  end if;

  if p_kind = 'retry' and job.attempts + 1 >= settings.attempts_most then
    outcome := 'failed';
  end if;
  update aso_research.fetch_job
    set lease_token = null, leased_until = null,
      attempts = case when p_kind = 'blocked' then attempts else attempts + 1 end,
      failed = outcome in ('failed', 'refused'),
      not_before = case outcome
        when 'blocked' then null
        when 'retry' then moment + settings.retry_delay * power(2, job.attempts)
        else moment + settings.failed_for end
    where country = p_country and keyword = p_keyword;
  perform aso_research.count_fetch(outcome, moment, p_ms, p_bytes);
  return outcome;
end
$$;

-- Removes what has served its time, at most once an hour; says whether it did.
create function public.aso_research_tidy() returns boolean
language plpgsql volatile security definer set search_path = ''
as $$
declare
  moment timestamptz := aso_research.moment();
  settings aso_research.setting;
begin
  update aso_research.fetch_budget set tidied_at = moment
    where tidied_at is null or tidied_at <= moment - interval '1 hour';
  if not found then
    return false;
  end if;
  select * into settings from aso_research.setting;
  delete from aso_research.ranked_result where fetched_at < moment - settings.results_kept;
  delete from aso_research.client_quota
    where day <= aso_research.utc_day(moment - settings.clients_kept);
  delete from aso_research.fetch_count where hour < moment - settings.counts_kept;
  -- Failures that are over, and jobs for which nobody can be waiting any more.
  delete from aso_research.fetch_job
    where (failed and not_before <= moment)
      or (lease_token is null and asked_at < moment - settings.clients_kept);
  return true;
end
$$;

-- Counts only: nothing in it tells what was asked for, or by whom.
create function public.aso_research_health() returns jsonb
language plpgsql stable security definer set search_path = ''
as $$
declare
  moment timestamptz := aso_research.moment();
begin
  return jsonb_build_object(
    'moment', aso_research.internet_time(moment),
    'queue', (select jsonb_build_object(
        'waiting', count(*) filter (where not failed and lease_token is null),
        'fetching', count(*) filter (where lease_token is not null),
        'failed', count(*) filter (where failed),
        'clients', count(distinct client) filter (where not failed),
        'oldestSeconds', coalesce(round(aso_research.seconds(
          moment - min(asked_at) filter (where not failed))), 0))
      from aso_research.fetch_job),
    'results', (select jsonb_build_object(
        'today', count(*) filter (
          where aso_research.utc_day(fetched_at) >= aso_research.utc_day(moment)),
        'kept', count(*),
        'bytes', coalesce(sum(octet_length(body)), 0))
      from aso_research.ranked_result),
    'budget', (select jsonb_build_object(
        'paceSeconds', aso_research.seconds(s.pace),
        'blockedSeconds', coalesce(greatest(ceil(
          aso_research.seconds(b.blocked_until - moment)), 0), 0),
        'failingInARow', cardinality(b.failing),
        'fetches', b.claims,
        'worker', coalesce(b.worker_until > moment, false))
      from aso_research.fetch_budget b, aso_research.setting s),
    'clientsToday', (select count(*) from aso_research.client_quota
      where day = aso_research.utc_day(moment)),
    'hours', coalesce((select jsonb_agg(jsonb_build_object(
        'hour', aso_research.internet_time(hour), 'outcome', outcome, 'fetches', fetches,
        'ms', ms, 'bytes', bytes) order by hour, outcome)
      from aso_research.fetch_count where hour > moment - interval '48 hours'), '[]'));
end
$$;

reset role;
revoke create on schema public from aso_research_owner;

-- A project's default privileges may let every role call new functions, so each is taken back by name.
do $$
declare
  called record;
begin
  for called in
    select p.oid::regprocedure as signature, n.nspname = 'public' as is_public
    from pg_catalog.pg_proc p join pg_catalog.pg_namespace n on n.oid = p.pronamespace
    where (n.nspname = 'public' and p.proname like 'aso\_research\_%') or n.nspname = 'aso_research'
  loop
    execute format('revoke all on function %s from public, anon, authenticated, service_role',
      called.signature);
    if called.is_public then
      execute format('grant execute on function %s to service_role', called.signature);
    end if;
  end loop;
end
$$;
