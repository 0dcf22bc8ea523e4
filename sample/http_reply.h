// SPDX-License-Identifier: GPL-3.0-or-later
// Answers over HTTP, sent byte for byte as given: whole, compressed, or broken on purpose.
#pragma once

#include <QByteArray>

#include <httplib.h>

#include <string>

namespace veltrix::sample
{

/// gzip of bytes.
QByteArray gzipped(const QByteArray &bytes);

/// Sends the body with status 200 unless another is set, compressed if the client accepts gzip.
void replyText(const httplib::Request &request, httplib::Response &response, const QByteArray &body,
               const std::string &contentType);

/// Sends the bytes as they are.
void replyBytes(httplib::Response &response, const QByteArray &body,
                const std::string &contentType);

/// Announces the whole body, sends half of it and closes the connection.
void replyCut(httplib::Response &response, const QByteArray &body, const std::string &contentType);

/// A status without a body.
void replyEmpty(httplib::Response &response, int status);

/// A page of a proxy in front, where JSON was asked for, with status 200 unless another is set.
void replyGarbage(httplib::Response &response);

} // namespace veltrix::sample
