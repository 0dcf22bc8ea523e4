// SPDX-License-Identifier: GPL-3.0-or-later
// A signed feed of program versions.
#include "sample/update_feed.h"

#include "sample/debian_package.h"
#include "sample/http_reply.h"

#include <QXmlStreamWriter>

#include <sodium.h>

#include <stdexcept>
#include <utility>

namespace veltrix::sample
{

namespace
{

/// The namespace by which readers know the feed's own elements.
const QString feedNamespace = u"http://www.andymatuschak.org/xml-namespaces/sparkle"_qs;

constexpr const char *releaseNotes = "<h2>What is new</h2><ul><li>Rankings load faster.</li>"
                                     "<li>Charts mark days without a check.</li></ul>";

struct FeedItem {
    QString version;
    QString path;
    /// Empty for an item that names no system.
    QString system;
    QString channel;
};

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

QByteArray signatureOf(const QByteArray &archive, const QByteArray &secretKey)
{
    QByteArray signature(crypto_sign_BYTES, '\0');
    if (crypto_sign_detached(bytes(signature), nullptr, bytes(archive),
                             static_cast<unsigned long long>(archive.size()),
                             bytes(secretKey)) != 0)
        throw std::runtime_error("The package could not be signed.");
    return signature.toBase64();
}

void writeItem(QXmlStreamWriter &xml, const FeedItem &item, const QString &origin,
               const QByteArray &archive, const QByteArray &signature)
{
    xml.writeStartElement(QStringLiteral("item"));
    xml.writeTextElement(QStringLiteral("title"), QStringLiteral("Version ") + item.version);
    xml.writeTextElement(QStringLiteral("pubDate"),
                         QStringLiteral("Mon, 02 Nov 2026 09:00:00 +0000"));
    xml.writeTextElement(feedNamespace, QStringLiteral("version"), item.version);
    xml.writeTextElement(feedNamespace, QStringLiteral("shortVersionString"), item.version);
    if (!item.channel.isEmpty())
        xml.writeTextElement(feedNamespace, QStringLiteral("channel"), item.channel);
    xml.writeTextElement(feedNamespace, QStringLiteral("releaseNotesLink"),
                         origin + QStringLiteral("/updates/notes.html"));
    xml.writeStartElement(QStringLiteral("description"));
    xml.writeCDATA(QString::fromLatin1(releaseNotes));
    xml.writeEndElement();
    xml.writeEmptyElement(QStringLiteral("enclosure"));
    xml.writeAttribute(QStringLiteral("url"), origin + item.path);
    xml.writeAttribute(QStringLiteral("length"), QString::number(archive.size()));
    xml.writeAttribute(QStringLiteral("type"),
                       QStringLiteral("application/vnd.debian.binary-package"));
    if (!item.system.isEmpty())
        xml.writeAttribute(feedNamespace, QStringLiteral("os"), item.system);
    xml.writeAttribute(feedNamespace, QStringLiteral("edSignature"),
                       QString::fromLatin1(signature));
    xml.writeEndElement();
}

} // namespace

SigningKey signingKey(const QByteArray &seed)
{
    if (sodium_init() < 0)
        throw std::runtime_error("The signing library could not be set up.");
    SigningKey key{QByteArray(crypto_sign_PUBLICKEYBYTES, '\0'),
                   QByteArray(crypto_sign_SECRETKEYBYTES, '\0')};
    if (seed.isEmpty())
        crypto_sign_keypair(bytes(key.publicKey), bytes(key.secretKey));
    else if (seed.size() == crypto_sign_SEEDBYTES)
        crypto_sign_seed_keypair(bytes(key.publicKey), bytes(key.secretKey), bytes(seed));
    else
        throw std::runtime_error("The update seed must have 32 bytes.");
    return key;
}

UpdateFeed::UpdateFeed(QString version, SigningKey key)
    : m_version(std::move(version)), m_key(std::move(key)), m_package(debianPackage(m_version))
{
}

QString UpdateFeed::packagePath() const
{
    return QStringLiteral("/updates/veltrix-%1.deb").arg(m_version);
}

QByteArray UpdateFeed::appcast(const QString &origin) const
{
    const QByteArray signature = signatureOf(m_package, m_key.secretKey);
    const QString linuxSystem = QStringLiteral("linux");
    const FeedItem items[] = {
        {QStringLiteral("0.0.1"), packagePath(), linuxSystem, {}},
        {m_version + QStringLiteral(".2"), packagePath(), {}, {}},
        {m_version, packagePath(), linuxSystem, {}},
        {m_version + QStringLiteral(".1"), packagePath(), linuxSystem, QStringLiteral("beta")},
    };
    QByteArray body;
    QXmlStreamWriter xml(&body);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeNamespace(feedNamespace, QStringLiteral("sparkle"));
    xml.writeStartElement(QStringLiteral("rss"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("2.0"));
    xml.writeStartElement(QStringLiteral("channel"));
    xml.writeTextElement(QStringLiteral("title"), QStringLiteral("Veltrix"));
    for (const FeedItem &item : items)
        writeItem(xml, item, origin, m_package, signature);
    xml.writeEndDocument();
    return body;
}

void UpdateFeed::install(httplib::Server &server, const QString &origin)
{
    using Request = httplib::Request;
    using Response = httplib::Response;
    server.Get(feedPath, [this, origin](const Request &request, Response &response) {
        replyText(request, response, appcast(origin), "application/rss+xml; charset=utf-8");
    });
    server.Get(packagePath().toStdString(), [this](const Request &, Response &response) {
        replyBytes(response, m_package, "application/vnd.debian.binary-package");
    });
    server.Get("/updates/notes.html", [](const Request &request, Response &response) {
        replyText(request, response,
                  "<!DOCTYPE html>\n<html><body>" + QByteArray(releaseNotes) + "</body></html>\n",
                  "text/html; charset=utf-8");
    });
}

} // namespace veltrix::sample
