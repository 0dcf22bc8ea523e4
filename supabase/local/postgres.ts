// SPDX-License-Identifier: GPL-3.0-or-later
// A small PostgreSQL client, for one machine: a Unix socket in a private folder, no password. It is here
// so that the stand-in of the Data API and the tests need no package.

export type Value = string | number | boolean | null;
export type Row = Record<string, unknown>;

export interface Address {
  /** The folder of the server's socket. */
  folder: string;
  port: number;
  user: string;
  database: string;
  /** Settings of the session, such as { role: "service_role" }. */
  settings?: Record<string, string>;
}

/** What the server says is wrong. */
export class PostgresError extends Error {
  constructor(readonly code: string, message: string) {
    super(message);
  }
}

const encoder = new TextEncoder();
const decoder = new TextDecoder();

/** Builds one message: its length is filled in at the end. */
class Message {
  #bytes: number[] = [];
  constructor(readonly type: string) {}
  int32(value: number): this {
    this.#bytes.push(value >>> 24 & 255, value >>> 16 & 255, value >>> 8 & 255, value & 255);
    return this;
  }
  int16(value: number): this {
    this.#bytes.push(value >>> 8 & 255, value & 255);
    return this;
  }
  raw(bytes: Uint8Array): this {
    for (const byte of bytes) this.#bytes.push(byte);
    return this;
  }
  text(value: string): this {
    this.raw(encoder.encode(value)).#bytes.push(0);
    return this;
  }
  finish(): number[] {
    const length = new Message("").int32(this.#bytes.length + 4).#bytes;
    const type = this.type === "" ? [] : [this.type.charCodeAt(0)];
    return [...type, ...length, ...this.#bytes];
  }
}

/** Values by the object identifiers of their types; everything else stays text. */
function parseValue(text: string, type: number): unknown {
  switch (type) {
    case 16:
      return text === "t";
    case 20:
    case 21:
    case 23:
    case 700:
    case 701:
    case 1700:
      return Number(text);
    case 114:
    case 3802:
      return JSON.parse(text);
    default:
      return text;
  }
}

export class Connection {
  #buffer = new Uint8Array(0);
  #turn: Promise<unknown> = Promise.resolve();

  private constructor(readonly stream: Deno.Conn) {}

  static async open(address: Address): Promise<Connection> {
    const path = `${address.folder}/.s.PGSQL.${address.port}`;
    const stream = await Deno.connect({ transport: "unix", path });
    const connection = new Connection(stream);
    const start = new Message("").int32(196608);
    const options = Object.entries(address.settings ?? {})
      .map(([name, value]) => `-c ${name}=${value.replaceAll(/([ \\])/g, "\\$1")}`).join(" ");
    const named = { user: address.user, database: address.database, options };
    for (const [name, value] of Object.entries(named)) start.text(name).text(value);
    start.text("");
    try {
      await connection.#send([start]);
      await connection.#readResult();
    } catch (error) {
      connection.close();
      throw error;
    }
    return connection;
  }

  close() {
    try {
      this.stream.close();
    } catch {
      // The server was first.
    }
  }

  /** One statement with parameters $1, $2 and so on. Calls at the same time wait for their turn. */
  query(sql: string, parameters: Value[] = []): Promise<Row[]> {
    const bind = new Message("B").text("").text("").int16(0).int16(parameters.length);
    for (const parameter of parameters) {
      if (parameter === null) {
        bind.int32(-1);
      } else {
        const bytes = encoder.encode(String(parameter));
        bind.int32(bytes.length).raw(bytes);
      }
    }
    bind.int16(0);
    return this.#take([
      new Message("P").text("").text(sql).int16(0),
      bind,
      new Message("D").raw(encoder.encode("P")).text(""),
      new Message("E").text("").int32(0),
      new Message("S"),
    ]);
  }

  /** Any number of statements without parameters. */
  run(sql: string): Promise<Row[]> {
    return this.#take([new Message("Q").text(sql)]);
  }

  #take(messages: Message[]): Promise<Row[]> {
    const result = this.#turn.then(async () => {
      await this.#send(messages);
      return await this.#readResult();
    });
    this.#turn = result.catch(() => undefined);
    return result;
  }

  async #send(messages: Message[]) {
    const bytes = new Uint8Array(messages.flatMap((message) => message.finish()));
    for (let sent = 0; sent < bytes.length;) {
      sent += await this.stream.write(bytes.subarray(sent));
    }
  }

  /** Reads up to the point where the server waits for the next statement. */
  async #readResult(): Promise<Row[]> {
    let rows: Row[] = [];
    let columns: { name: string; type: number }[] = [];
    let failure: PostgresError | undefined;
    for (;;) {
      const { type, body } = await this.#readMessage();
      if (type === "Z") break;
      if (type === "R" && new DataView(body.buffer, body.byteOffset).getInt32(0) !== 0) {
        throw new PostgresError("28000", "the server wants a password");
      }
      if (type === "T") [columns, rows] = [readColumns(body), []];
      if (type === "D") rows.push(readRow(body, columns));
      // The first error counts; those after it only say that the transaction is over.
      if (type === "E") {
        failure ??= readError(body);
        // A session that ends sends no more.
        if (failure.code.startsWith("57P") || failure.code.startsWith("3D")) throw failure;
      }
    }
    if (failure) throw failure;
    return rows;
  }

  async #readMessage(): Promise<{ type: string; body: Uint8Array }> {
    await this.#fill(5);
    const length = new DataView(this.#buffer.buffer, this.#buffer.byteOffset).getInt32(1);
    await this.#fill(length + 1);
    const type = String.fromCharCode(this.#buffer[0]);
    const body = this.#buffer.slice(5, length + 1);
    this.#buffer = this.#buffer.subarray(length + 1);
    return { type, body };
  }

  async #fill(wanted: number) {
    if (this.#buffer.length >= wanted) return;
    const parts = [this.#buffer];
    let have = this.#buffer.length;
    while (have < wanted) {
      const part = new Uint8Array(65536);
      const count = await this.stream.read(part);
      if (count === null) throw new PostgresError("08006", "the server closed the connection");
      parts.push(part.subarray(0, count));
      have += count;
    }
    const whole = new Uint8Array(have);
    let at = 0;
    for (const part of parts) {
      whole.set(part, at);
      at += part.length;
    }
    this.#buffer = whole;
  }
}

function readText(body: Uint8Array, from: number): { text: string; next: number } {
  const end = body.indexOf(0, from);
  return { text: decoder.decode(body.subarray(from, end)), next: end + 1 };
}

function readColumns(body: Uint8Array): { name: string; type: number }[] {
  const view = new DataView(body.buffer, body.byteOffset);
  const columns = [];
  for (let i = 0, at = 2; i < view.getInt16(0); ++i) {
    const { text, next } = readText(body, at);
    columns.push({ name: text, type: view.getInt32(next + 6) });
    at = next + 18;
  }
  return columns;
}

function readRow(body: Uint8Array, columns: { name: string; type: number }[]): Row {
  const view = new DataView(body.buffer, body.byteOffset);
  const row: Row = {};
  let at = 2;
  for (const { name, type } of columns) {
    const length = view.getInt32(at);
    at += 4;
    row[name] = length < 0
      ? null
      : parseValue(decoder.decode(body.subarray(at, at + Math.max(length, 0))), type);
    at += Math.max(length, 0);
  }
  return row;
}

function readError(body: Uint8Array): PostgresError {
  const fields: Record<string, string> = {};
  for (let at = 0; body[at] !== 0;) {
    const { text, next } = readText(body, at + 1);
    fields[String.fromCharCode(body[at])] = text;
    at = next;
  }
  return new PostgresError(fields.C ?? "XX000", fields.M ?? "unknown error");
}

/** At most so many connections to one address, opened when they are wanted. */
export class Pool {
  #idle: Connection[] = [];
  #open = 0;
  #waiting: (() => void)[] = [];

  constructor(readonly address: Address, readonly most = 8) {}

  async query(sql: string, parameters: Value[] = []): Promise<Row[]> {
    while (this.#idle.length === 0 && this.#open >= this.most) {
      await new Promise<void>((resolve) => this.#waiting.push(resolve));
    }
    let connection = this.#idle.pop();
    if (!connection) {
      ++this.#open;
      try {
        connection = await Connection.open(this.address);
      } catch (error) {
        this.#release();
        throw error;
      }
    }
    try {
      const rows = await connection.query(sql, parameters);
      this.#idle.push(connection);
      this.#waiting.shift()?.();
      return rows;
    } catch (error) {
      const isAlive = error instanceof PostgresError && !/^(08|57P)/.test(error.code);
      if (isAlive) {
        this.#idle.push(connection);
        this.#waiting.shift()?.();
      } else {
        // Where one session has ended, those that are idle have ended with it.
        for (const dead of [connection, ...this.#idle.splice(0)]) {
          dead.close();
          this.#release();
        }
      }
      throw error;
    }
  }

  close() {
    for (const connection of this.#idle.splice(0)) connection.close();
    this.#open = 0;
  }

  #release() {
    --this.#open;
    this.#waiting.shift()?.();
  }
}
