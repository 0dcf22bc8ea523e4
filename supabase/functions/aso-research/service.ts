// SPDX-License-Identifier: GPL-3.0-or-later
// Takes requests in: questions, hand-overs between workers, and the look at the service's health.
import {
  jsonAnswer,
  readyAnswer,
  refusalAnswer,
  unreachableAnswer,
  waitingAnswer,
} from "./answer.ts";
import { AnswerCache } from "./answer_cache.ts";
import { clientAddress, clientName, type Peer } from "./client_name.ts";
import type { Configuration } from "./configuration.ts";
import { DataApi, type Known, Unreachable } from "./data_api.ts";
import { fromBase64 } from "./gzip.ts";
import { Holding } from "./holding.ts";
import { errorName, type Log, logLine } from "./log.ts";
import { drain, type Question, readQuestion, Refusal } from "./question.ts";
import { searchService } from "./upstream.ts";
import { Worker } from "./worker.ts";

/** What the edge runtime adds to Deno; absent elsewhere. */
declare const EdgeRuntime: { waitUntil(work: Promise<unknown>): void } | undefined;

export type Handler = (request: Request, info?: { remoteAddr?: unknown }) => Promise<Response>;

/** A page of the operator's own disk may read the health; its address is no secret and it has the key. */
const readableAnywhere = { "Access-Control-Allow-Origin": "*" };
const preflight = {
  ...readableAnywhere,
  "Access-Control-Allow-Headers": "apikey",
  "Access-Control-Allow-Methods": "GET",
};
const uuid = /^[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$/;

/** Takes as long for a wrong key as for the right one. */
function isSame(one: string, other: string): boolean {
  let difference = one.length ^ other.length;
  for (let i = 0; i < other.length; ++i) difference |= one.charCodeAt(i) ^ other.charCodeAt(i);
  return difference === 0;
}

/** The UTC day as 2026-03-01. */
const today = () => new Date().toISOString().slice(0, 10);

export class ResearchService {
  #configuration: Configuration;
  #log: Log;
  #dataApi: DataApi;
  #cache: AnswerCache;
  #holding: Holding;
  #worker: Worker;

  constructor(configuration: Configuration, log: Log = logLine) {
    this.#configuration = configuration;
    this.#log = log;
    this.#dataApi = new DataApi(configuration.projectUrl, configuration.secretKey);
    this.#cache = new AnswerCache(configuration.cacheBytes);
    this.#holding = new Holding(configuration.holdMs);
    this.#worker = new Worker({
      dataApi: this.#dataApi,
      upstream: searchService(configuration.upstreamUrl),
      handOver: (worker) => this.#handOver(worker),
      keepAlive: (work) => {
        if (typeof EdgeRuntime !== "undefined") EdgeRuntime.waitUntil(work);
      },
      log,
      shiftMs: configuration.shiftMs,
    });
  }

  /** Answers one request; never throws. */
  readonly handle: Handler = async (request, info) => {
    const peer = info?.remoteAddr as Peer | undefined;
    const answer = await this.#routeOrRefuse(request, peer);
    await drain(request);
    return answer;
  };

  async #routeOrRefuse(request: Request, peer: Peer | undefined): Promise<Response> {
    try {
      return await this.#route(request, peer);
    } catch (error) {
      if (error instanceof Refusal) {
        this.#log("refused", { status: error.status, code: error.code });
        return refusalAnswer(error);
      }
      if (error instanceof Unreachable) {
        this.#log("database-fault", { reason: error.reason });
        return unreachableAnswer();
      }
      this.#log("fault", { error: errorName(error) });
      return refusalAnswer(new Refusal(500, "INTERNAL_ERROR", "The service has a fault"));
    }
  }

  async #route(request: Request, peer: Peer | undefined): Promise<Response> {
    // The gateway of a project leaves out what stands before the function's name.
    const path = new URL(request.url).pathname.match(
      /^(?:\/functions\/v1)?\/aso-research(\/[^/]*)?$/,
    );
    if (!path) throw new Refusal(404, "NOT_FOUND", "There is nothing at this path");
    switch (path[1]) {
      case undefined:
        return request.method === "POST"
          ? await this.#answer(request, peer)
          : this.#wrongMethod("POST");
      case "/health":
        if (request.method === "OPTIONS") {
          return new Response(null, { status: 204, headers: preflight });
        }
        return request.method === "GET"
          ? await this.#health(request)
          : this.#wrongMethod("GET, OPTIONS");
      case "/shift":
        return request.method === "POST" ? await this.#shift(request) : this.#wrongMethod("POST");
      default:
        throw new Refusal(404, "NOT_FOUND", "There is nothing at this path");
    }
  }

  #wrongMethod(allowed: string): Response {
    const refusal = new Refusal(405, "METHOD_NOT_ALLOWED", `The method is not ${allowed}`);
    this.#log("refused", { status: refusal.status, code: refusal.code });
    return refusalAnswer(refusal, { Allow: allowed });
  }

  #checkKey(request: Request, keys: string[]) {
    const key = request.headers.get("apikey") ?? "";
    if (!keys.some((known) => isSame(key, known))) {
      throw new Refusal(401, "INVALID_KEY", "The apikey is not one of this project");
    }
  }

  async #answer(request: Request, peer: Peer | undefined): Promise<Response> {
    const { publishableKeys, secretKey, trustsForwarded } = this.#configuration;
    this.#checkKey(request, publishableKeys);
    const question = await readQuestion(request);
    const key = `${question.country}:${question.keyword}`;
    const day = today();
    const cached = this.#cache.get(key, day);
    if (cached) return await readyAnswer(request, cached);

    const client = await clientName(
      secretKey,
      day,
      clientAddress(request.headers, peer, trustsForwarded),
    );
    const ask = () => this.#ask(question, client);
    const known = await this.#holding.hold(key, await ask(), ask);
    if (known.state !== "ready") return waitingAnswer(known);
    const body = fromBase64(known.body);
    // Only what is of this very day may be given away without asking again.
    if (known.fetched_at.startsWith(day)) this.#cache.put(key, day, body);
    return await readyAnswer(request, body);
  }

  async #ask(question: Question, client: string): Promise<Known> {
    const known = await this.#dataApi.ask(question, client);
    if ("work" in known && known.work) this.#worker.wake();
    return known;
  }

  async #health(request: Request): Promise<Response> {
    this.#checkKey(request, this.#configuration.publishableKeys);
    return jsonAnswer(200, await this.#dataApi.health(), readableAnywhere);
  }

  async #shift(request: Request): Promise<Response> {
    this.#checkKey(request, [this.#configuration.secretKey]);
    const worker = (await request.text()).slice(0, 100);
    if (!uuid.test(worker)) throw new Refusal(400, "BAD_REQUEST", "The body is no worker's name");
    this.#worker.takeOver(worker);
    return jsonAnswer(202, { status: "accepted" });
  }

  async #handOver(worker: string) {
    const { projectUrl, secretKey } = this.#configuration;
    const response = await fetch(`${projectUrl}/functions/v1/aso-research/shift`, {
      method: "POST",
      headers: { apikey: secretKey },
      body: worker,
      signal: AbortSignal.timeout(10_000),
    });
    await response.body?.cancel();
    if (response.status !== 202) throw new Unreachable(`status ${response.status}`);
  }
}
