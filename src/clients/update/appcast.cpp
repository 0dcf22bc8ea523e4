// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/appcast.h"

#include <QDateTime>

namespace veltrix
{

namespace
{

/// What makes an element one of the feed's own.
constexpr QLatin1String feedNamespace{"http://www.andymatuschak.org/xml-namespaces/sparkle"};

/// A mail date such as "Mon, 02 Nov 2026 09:00:00 +0000".
std::optional<Date> parseMailDate(QString text)
{
    for (const QLatin1String zone : {QLatin1String(" GMT"), QLatin1String(" UT")}) {
        if (text.endsWith(zone))
            text.replace(text.size() - zone.size(), zone.size(), QLatin1String(" +0000"));
    }
    const QDateTime time = QDateTime::fromString(text, Qt::RFC2822Date);
    if (!time.isValid())
        return std::nullopt;
    return dateFromUnixSeconds(double(time.toSecsSinceEpoch()));
}

std::optional<qint64> parseNumber(const QString &text)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<Seconds> parseSeconds(const QString &text)
{
    const std::optional<qint64> number = parseNumber(text);
    return number ? std::optional(Seconds(double(*number))) : std::nullopt;
}

void keepFirst(QString &kept, const QString &text)
{
    if (kept.isEmpty())
        kept = text;
}

template <class T>
void keepFirst(std::optional<T> &kept, std::optional<T> value)
{
    if (!kept)
        kept = value;
}

class Reader
{
public:
    Reader(const QByteArray &xml, XmlLimits limits) : m_xml(xml, limits) {}

    Appcast document()
    {
        if (!m_xml.enterChild() || !isRss(u"rss"))
            throw AppcastError(QStringLiteral("The document is not an RSS feed."));
        bool hasChannel = false;
        while (m_xml.enterChild()) {
            if (isRss(u"channel")) {
                hasChannel = true;
                readChannel();
            } else {
                m_xml.skip();
            }
        }
        m_xml.requireEnd();
        if (!hasChannel)
            throw AppcastError(QStringLiteral("The document has no channel."));
        return std::move(m_appcast);
    }

private:
    [[nodiscard]] bool isRss(QStringView name) const
    {
        return m_xml.namespaceUri().isEmpty() && m_xml.name() == name;
    }

    void readChannel()
    {
        while (m_xml.enterChild()) {
            if (isRss(u"item"))
                m_appcast.items.append(readItem());
            else
                m_xml.skip();
        }
    }

    void countEntry()
    {
        if (++m_entries > mostAppcastEntries)
            throw AppcastError(QStringLiteral("The document has too many items."));
    }

    AppcastItem readItem()
    {
        countEntry();
        AppcastItem item;
        while (m_xml.enterChild()) {
            if (m_xml.namespaceUri() == feedNamespace)
                readOwnElement(item);
            else if (m_xml.namespaceUri().isEmpty())
                readRssElement(item);
            else
                m_xml.skip();
        }
        return item;
    }

    void readRssElement(AppcastItem &item)
    {
        const QString name = m_xml.name().toString();
        if (name == u"link")
            keepFirst(item.link, takeText());
        else if (name == u"description")
            keepFirst(item.description, takeText());
        else if (name == u"pubDate")
            keepFirst(item.pubDate, parseMailDate(takeText()));
        else if (name == u"enclosure")
            item.enclosures.append(takeEnclosure());
        else
            m_xml.skip();
    }

    void readOwnElement(AppcastItem &item)
    {
        const QString name = m_xml.name().toString();
        if (name == u"version")
            keepFirst(item.version, takeText());
        else if (name == u"shortVersionString")
            keepFirst(item.shortVersionString, takeText());
        else if (name == u"minimumSystemVersion")
            keepFirst(item.minimumSystemVersion, takeText());
        else if (name == u"channel")
            keepFirst(item.channel, takeText());
        else if (name == u"releaseNotesLink")
            keepFirst(item.releaseNotesLink, takeText());
        else if (name == u"phasedRolloutInterval")
            keepFirst(item.phasedRolloutInterval, parseSeconds(takeText()));
        else
            readMark(name, item);
    }

    /// An element that says all by being there.
    void readMark(const QString &name, AppcastItem &item)
    {
        item.isCritical |= name == u"criticalUpdate";
        item.isInformational |= name == u"informationalUpdate";
        m_xml.skip();
    }

    /// The text of the current element, which is then left.
    QString takeText() { return m_xml.takeText().trimmed(); }

    AppcastEnclosure takeEnclosure()
    {
        countEntry();
        const QXmlStreamAttributes attributes = m_xml.attributes();
        m_xml.skip();
        const auto own = [&attributes](QLatin1String name) {
            return attributes.value(feedNamespace, name).trimmed().toString();
        };
        const auto rss = [&attributes](QLatin1String name) {
            return attributes.value(name).trimmed().toString();
        };
        AppcastEnclosure enclosure;
        enclosure.url = rss(QLatin1String("url"));
        enclosure.length = parseNumber(rss(QLatin1String("length")));
        enclosure.edSignature = own(QLatin1String("edSignature"));
        enclosure.os = own(QLatin1String("os"));
        enclosure.version = own(QLatin1String("version"));
        enclosure.shortVersionString = own(QLatin1String("shortVersionString"));
        return enclosure;
    }

    SafeXmlReader m_xml;
    Appcast m_appcast;
    int m_entries = 0;
};

} // namespace

AppcastError::AppcastError(const QString &problem)
    : Error(QStringLiteral("The update feed couldn’t be read. ") + problem)
{
}

Appcast readAppcast(const QByteArray &xml, XmlLimits limits)
{
    try {
        return Reader(xml, limits).document();
    } catch (const XmlError &error) {
        throw AppcastError(error.description());
    }
}

} // namespace veltrix
