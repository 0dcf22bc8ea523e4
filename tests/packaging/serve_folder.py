# SPDX-License-Identifier: GPL-3.0-or-later
"""Serves a folder over HTTPS on loopback: serve_folder.py FOLDER PORT CERTIFICATE KEY."""
import functools
import http.server
import ssl
import sys

folder, port, certificate, key = sys.argv[1:]
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(certificate, key)
handler = functools.partial(http.server.SimpleHTTPRequestHandler, directory=folder)
handler.func.log_message = lambda *_: None
server = http.server.ThreadingHTTPServer(("127.0.0.1", int(port)), handler)
server.socket = context.wrap_socket(server.socket, server_side=True)
server.serve_forever()
