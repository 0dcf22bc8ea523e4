// SPDX-License-Identifier: GPL-3.0-or-later
// A process of its own, for its own event loop; it prints one line with its port first.

const here = (path: string) => new URL(path, import.meta.url).pathname;

export class Process {
  private constructor(readonly child: Deno.ChildProcess, readonly port: number) {}

  get url(): string {
    return `http://127.0.0.1:${this.port}`;
  }

  /** `path` is relative to this file. */
  static async start(
    path: string,
    env: Record<string, string> = {},
    args: string[] = [],
  ): Promise<Process> {
    const child = new Deno.Command(Deno.execPath(), {
      args: ["run", "--quiet", "--no-lock", "--allow-all", "--no-check", here(path), ...args],
      env,
      stdout: "piped",
      stderr: "null",
    }).spawn();
    const reader = child.stdout.pipeThrough(new TextDecoderStream()).getReader();
    let text = "";
    while (!text.includes("\n")) {
      const { value, done } = await reader.read();
      if (done) throw new Error(`${path} did not start.`);
      text += value;
    }
    // The rest of its log is read, so that it never waits for a reader, and dropped.
    (async () => {
      while (!(await reader.read()).done);
    })();
    return new Process(child, JSON.parse(text.split("\n")[0]).port);
  }

  async stop(signal: Deno.Signal = "SIGKILL") {
    try {
      this.child.kill(signal);
    } catch {
      // It has ended already.
    }
    await this.child.status;
  }
}
