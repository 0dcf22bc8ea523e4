// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/test_feed.h"

#include <sodium.h>

#include <stdexcept>

namespace veltrix
{

namespace
{

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

} // namespace

TestSigner::TestSigner(char number)
    : m_publicKey(crypto_sign_PUBLICKEYBYTES, '\0'), m_secretKey(crypto_sign_SECRETKEYBYTES, '\0')
{
    const QByteArray seed(crypto_sign_SEEDBYTES, number);
    if (sodium_init() < 0 ||
        crypto_sign_seed_keypair(bytes(m_publicKey), bytes(m_secretKey), bytes(seed)) != 0)
        throw std::runtime_error("no key pair");
}

QString TestSigner::publicKey() const
{
    return QString::fromLatin1(m_publicKey.toBase64());
}

QString TestSigner::sign(const QByteArray &package) const
{
    QByteArray signature(crypto_sign_BYTES, '\0');
    if (crypto_sign_detached(bytes(signature), nullptr, bytes(package),
                             static_cast<unsigned long long>(package.size()),
                             bytes(m_secretKey)) != 0)
        throw std::runtime_error("no signature");
    return QString::fromLatin1(signature.toBase64());
}

QByteArray feedWith(const QByteArray &items)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<rss version=\"2.0\" "
           "xmlns:u=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
           "<channel><title>Veltrix</title>\n" +
           items + "</channel></rss>\n";
}

QByteArray TestItem::xml() const
{
    QString enclosure = QStringLiteral("<enclosure url=\"%1\" length=\"%2\"").arg(url, length);
    if (!os.isEmpty())
        enclosure += QStringLiteral(" u:os=\"%1\"").arg(os);
    if (!signature.isEmpty())
        enclosure += QStringLiteral(" u:edSignature=\"%1\"").arg(signature);
    return QStringLiteral("<item><u:version>%1</u:version>%2%3/></item>\n")
        .arg(version, elements, enclosure)
        .toUtf8();
}

QByteArray feedOf(const QList<TestItem> &items)
{
    QByteArray xml;
    for (const TestItem &item : items)
        xml += item.xml();
    return feedWith(xml);
}

} // namespace veltrix
