// SPDX-License-Identifier: GPL-3.0-or-later
// HTTP requests to a server on loopback that follows a script.
#pragma once

#include "clients/network_http.h"

#include "support/json_printers.h"
#include "support/loopback_server.h"
#include "support/task_outcome.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace veltrix
{

using namespace std::chrono_literals;
using Request = LoopbackServer::Request;
using Connection = LoopbackServer::Connection;

inline QByteArray gzip(const QByteArray &plain)
{
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY),
              Z_OK);
    QByteArray packed(qsizetype(deflateBound(&stream, uLong(plain.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(plain.constData()));
    stream.avail_in = uInt(plain.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = uInt(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

class NetworkHttpTest : public testing::Test
{
protected:
    static HttpRequest get(const QUrl &url)
    {
        HttpRequest request;
        request.url = url;
        request.timeout = Seconds(5);
        return request;
    }
    Outcome<HttpResponse> send(HttpRequest request, std::stop_token stop = {})
    {
        return Outcome(m_http->sender()(std::move(request), std::move(stop)));
    }
    /// The text that a failure of the request gives the user.
    QString failure(HttpRequest request) { return send(std::move(request)).wait().failureText(); }

    std::unique_ptr<NetworkHttp> m_http =
        std::make_unique<NetworkHttp>(NetworkHttp::Options{QStringLiteral("1.2.3"), {}});
};

} // namespace veltrix
