-- The roles and default privileges of a Supabase project, as far as the research service meets them.
-- Run once in a new cluster, by its superuser.

create role postgres login createdb createrole replication;
create role anon nologin noinherit;
create role authenticated nologin noinherit;
create role service_role nologin noinherit bypassrls;
create role authenticator login noinherit;
grant anon, authenticated, service_role to authenticator;
grant anon, authenticated, service_role to postgres;
