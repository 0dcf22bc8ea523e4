// SPDX-License-Identifier: GPL-3.0-or-later
// The research service on one machine: the function over HTTPS, and behind it, on loopback, what a project
// would supply. scripts/service prepares the database and starts this.
import { logLine } from "../functions/aso-research/log.ts";
import { FakeUpstream } from "./fake_upstream.ts";
import { serveProject } from "./gateway.ts";

/** Options are "--name value"; each of these is given by scripts/service. */
function option(name: string): string {
  const at = Deno.args.indexOf(`--${name}`);
  const value = at < 0 ? undefined : Deno.args[at + 1];
  if (value === undefined) throw new Error(`The option --${name} is missing.`);
  return value;
}

const escaped = (text: string) => text.replaceAll("&", "&amp;").replaceAll("<", "&lt;");

function propertyList(projectUrl: string, key: string): string {
  return `<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
    <key>projectURL</key>
    <string>${escaped(projectUrl)}</string>
    <key>publishableKey</key>
    <string>${escaped(key)}</string>
</dict>
</plist>
`;
}

const folder = option("folder");
const keys = JSON.parse(await Deno.readTextFile(`${folder}/keys.json`));
const cluster = { folder: option("cluster"), port: 5432, database: "research" };
const wanted = option("upstream");
const upstream = wanted === "fake" ? new FakeUpstream() : undefined;
const upstreamUrl = upstream?.url ?? (wanted === "real" ? undefined : wanted);
const project = serveProject(cluster, keys, {
  ...(upstreamUrl ? { upstreamUrl } : {}),
  // No gateway stands in front that could be believed, unless the operator says so.
  trustsForwarded: Deno.env.get("ASO_RESEARCH_CLIENT_ADDRESS") === "forwarded",
});

Deno.serve({
  hostname: option("host"),
  port: Number(option("port")),
  cert: await Deno.readTextFile(`${folder}/certificate.pem`),
  key: await Deno.readTextFile(`${folder}/certificate-key.pem`),
  // Only the function is shown to the world.
  onListen: async ({ port }) => {
    const url = `https://${option("name")}:${port}`;
    await Deno.mkdir(`${folder}/bundle`, { recursive: true });
    await Deno.writeTextFile(
      `${folder}/bundle/SupabaseDevelopment.plist`,
      propertyList(url, keys.publishable),
    );
    await Deno.copyFile(`${folder}/authority.pem`, `${folder}/bundle/TrustedCertificates.pem`);
    const ready = `research=${url}\npublishable-key=${keys.publishable}\n` +
      `certificate=${folder}/authority.pem\nplist=${folder}/bundle/SupabaseDevelopment.plist\n`;
    // Whoever waits for the file must find it whole.
    await Deno.writeTextFile(`${folder}/ready.new`, ready);
    await Deno.rename(`${folder}/ready.new`, option("ready-file"));
    logLine("listening", { url, upstream: wanted === "fake" ? "fake" : upstreamUrl ?? "real" });
  },
}, project.service.handle);
