// SPDX-License-Identifier: GPL-3.0-or-later
// Puts a running service into a state of the contract, to see what a client makes of it.
import { setState } from "../contract/state.ts";
import { clientName } from "../functions/aso-research/client_name.ts";
import { Connection } from "./postgres.ts";

const [folder, cluster, given, keyword, country, address = "127.0.0.1"] = Deno.args;
const keys = JSON.parse(await Deno.readTextFile(`${folder}/keys.json`));
const day = new Date().toISOString().slice(0, 10);
const client = await clientName(keys.secret, day, address);
const database = await Connection.open({
  folder: cluster,
  port: 5432,
  user: "supabase_admin",
  database: "research",
});
await setState(database, JSON.parse(given), { keyword, country, client });
database.close();
