// SPDX-License-Identifier: GPL-3.0-or-later
// Answers over HTTP.
#include "sample/http_reply.h"

#include <zlib.h>

#include <algorithm>
#include <stdexcept>

namespace veltrix::sample
{

namespace
{

bool acceptsGzip(const httplib::Request &request)
{
    return request.get_header_value("Accept-Encoding").find("gzip") != std::string::npos;
}

/// Sends the first `sent` bytes of a body whose length is announced in full. A body given whole
/// would be compressed by the library in a way of its own.
void replyWith(httplib::Response &response, const QByteArray &body, std::size_t sent,
               const std::string &contentType)
{
    if (body.isEmpty()) {
        response.set_content("", contentType);
        return;
    }
    response.set_content_provider(
        static_cast<std::size_t>(body.size()), contentType,
        [body, sent](std::size_t offset, std::size_t length, httplib::DataSink &sink) {
            if (offset >= sent)
                return false;
            return sink.write(body.constData() + offset, std::min(length, sent - offset));
        });
}

} // namespace

QByteArray gzipped(const QByteArray &bytes)
{
    z_stream stream{};
    // 16 on top of the window bits asks for the gzip form.
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY) !=
        Z_OK)
        throw std::runtime_error("Compression could not be set up.");
    QByteArray packed(
        static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(bytes.size()))),
        Qt::Uninitialized);
    // zlib reads the input without writing to it, but its pointer is not const.
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.constData()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.truncate(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    if (result != Z_STREAM_END)
        throw std::runtime_error("A body could not be compressed.");
    return packed;
}

void replyText(const httplib::Request &request, httplib::Response &response, const QByteArray &body,
               const std::string &contentType)
{
    response.set_header("Vary", "Accept-Encoding");
    if (!acceptsGzip(request)) {
        replyBytes(response, body, contentType);
        return;
    }
    response.set_header("Content-Encoding", "gzip");
    replyBytes(response, gzipped(body), contentType);
}

void replyBytes(httplib::Response &response, const QByteArray &body, const std::string &contentType)
{
    replyWith(response, body, static_cast<std::size_t>(body.size()), contentType);
}

void replyCut(httplib::Response &response, const QByteArray &body, const std::string &contentType)
{
    replyWith(response, body, static_cast<std::size_t>(body.size() / 2), contentType);
}

void replyEmpty(httplib::Response &response, int status)
{
    response.status = status;
    response.set_content("", "text/plain");
}

void replyGarbage(httplib::Response &response)
{
    replyBytes(response,
               "<!DOCTYPE html>\n<html><head><title>Please wait</title></head>\n"
               "<body><h1>One moment</h1><p>Checking your connection.</p></body></html>\n",
               "text/html; charset=utf-8");
}

} // namespace veltrix::sample
