// SPDX-License-Identifier: GPL-3.0-or-later
// Bodies are handled as ArrayBuffer throughout: it is spelled alike in every version of the type checker.

export function gzip(text: string): Promise<ArrayBuffer> {
  const stream = new Blob([text]).stream().pipeThrough(new CompressionStream("gzip"));
  return new Response(stream).arrayBuffer();
}

export function gunzip(bytes: ArrayBuffer): Promise<ArrayBuffer> {
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
  return new Response(stream).arrayBuffer();
}

export function toBase64(bytes: ArrayBuffer): string {
  const view = new Uint8Array(bytes);
  let text = "";
  // In pieces, because the number of arguments of a call is limited.
  for (let at = 0; at < view.length; at += 8192) {
    text += String.fromCharCode(...view.subarray(at, at + 8192));
  }
  return btoa(text);
}

/** Line breaks in the text are skipped. */
export function fromBase64(text: string): ArrayBuffer {
  const decoded = atob(text);
  const buffer = new ArrayBuffer(decoded.length);
  const view = new Uint8Array(buffer);
  for (let i = 0; i < decoded.length; ++i) view[i] = decoded.charCodeAt(i);
  return buffer;
}
