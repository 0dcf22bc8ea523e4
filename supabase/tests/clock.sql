-- In a test the service's moment is whatever stands here; without a row it is the real one.
create schema testing;
create table testing.clock (moment timestamptz not null);
grant usage on schema testing to aso_research_owner;
grant select on testing.clock to aso_research_owner;
create or replace function aso_research.moment() returns timestamptz
language sql volatile set search_path = ''
as $$ select coalesce((select moment from testing.clock), clock_timestamp()) $$;
