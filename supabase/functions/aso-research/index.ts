// SPDX-License-Identifier: GPL-3.0-or-later
// The research function as a project runs it.
import { configurationFrom } from "./configuration.ts";
import { ResearchService } from "./service.ts";

Deno.serve(new ResearchService(configurationFrom(Deno.env.toObject())).handle);
