// SPDX-License-Identifier: GPL-3.0-or-later
// The function is held to the contract, case by case, over HTTP and on a real database.
import { contract, faultOf, requestOf, subjectOf } from "../contract/cases.ts";
import { setState } from "../contract/state.ts";
import { clientName } from "../functions/aso-research/client_name.ts";
import { sentFields } from "../functions/aso-research/sent_fields.ts";
import { storefronts } from "../functions/aso-research/storefronts.ts";
import { FakeUpstream } from "../local/fake_upstream.ts";
import { serveProject } from "../local/gateway.ts";
import { Database } from "./database.ts";
import { expectEqual } from "./expect.ts";
import { keys } from "./service.ts";

const address = "192.0.2.1";

// A worker may sleep its last seconds when the test is over.
const options = { sanitizeOps: false, sanitizeResources: false };

Deno.test("the contract", options, async (test) => {
  const database = await Database.make();
  const upstream = new FakeUpstream();
  for (const one of contract.cases) {
    await test.step(one.name, async () => {
      // A new service for each case, so that nothing is remembered but what the database holds.
      const fresh = serveProject(database.cluster, keys, {
        upstreamUrl: upstream.url,
        log: () => {},
      });
      const day = new Date().toISOString().slice(0, 10);
      const client = await clientName(keys.secret, day, address);
      await setState(database.admin, one.given, { ...subjectOf(one), client });
      const request = requestOf(fresh.url, keys.publishable, one);
      request.headers.set("X-Forwarded-For", address);
      expectEqual(await faultOf(await fetch(request), one), "");
      await fresh.close();
    });
  }
  await upstream.close();
  await database.close();
});

Deno.test("the fields that are sent are those of the contract and those that Veltrix keeps", async () => {
  const header = await Deno.readTextFile(
    new URL("../../src/model/itunes_app_result.h", import.meta.url),
  );
  const kept = [...header.matchAll(/field\("(\w+)", &ITunesAppResult::/g)].map((match) => match[1]);
  expectEqual(kept.length, 20);
  expectEqual([...sentFields].sort(), [...kept].sort());
  expectEqual([...contract.fields].sort(), [...kept].sort());
});

Deno.test("the storefronts are those that Veltrix knows", async () => {
  const source = await Deno.readTextFile(
    new URL("../../src/clients/storefront_ids.cpp", import.meta.url),
  );
  const known = [...source.matchAll(/\{"([A-Z]{2})", \d+, /g)].map((match) => match[1]);
  expectEqual(known.length, 161);
  expectEqual([...storefronts].sort(), known.sort());
});
