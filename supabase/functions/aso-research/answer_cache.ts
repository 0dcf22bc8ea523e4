// SPDX-License-Identifier: GPL-3.0-or-later
// Today's answers, in memory: a result does not change until the UTC day does, so a question that was
// answered once needs no database. Fresh isolates begin with nothing, which costs them one call.

export class AnswerCache {
  #answers = new Map<string, ArrayBuffer>();
  #bytes = 0;
  #day = "";

  /** At most so many bytes of bodies; 0 keeps none. */
  constructor(readonly mostBytes: number) {}

  get(key: string, day: string): ArrayBuffer | undefined {
    if (day !== this.#day) return undefined;
    const body = this.#answers.get(key);
    if (body) {
      // A map keeps its order of insertion, so what was used last is made the youngest.
      this.#answers.delete(key);
      this.#answers.set(key, body);
    }
    return body;
  }

  put(key: string, day: string, body: ArrayBuffer) {
    if (day < this.#day || body.byteLength > this.mostBytes) return;
    if (day > this.#day) {
      this.#answers.clear();
      this.#bytes = 0;
      this.#day = day;
    }
    this.#bytes += body.byteLength - (this.#answers.get(key)?.byteLength ?? 0);
    this.#answers.delete(key);
    this.#answers.set(key, body);
    for (const [oldest, { byteLength }] of this.#answers) {
      if (this.#bytes <= this.mostBytes) break;
      this.#answers.delete(oldest);
      this.#bytes -= byteLength;
    }
  }
}
