// SPDX-License-Identifier: GPL-3.0-or-later
// The property lists of the search-hints service.
#include "sample/hints_body.h"

#include <QUrl>

namespace veltrix::sample
{

namespace
{

QString element(const QString &name, const QString &text)
{
    return QStringLiteral("<%1>%2</%1>").arg(name, text.toHtmlEscaped());
}

QString entry(const QString &key, const QString &type, const QString &text)
{
    return element(QStringLiteral("key"), key) + element(type, text);
}

QString newerHint(const Hint &hint)
{
    const QString string = QStringLiteral("string");
    return entry(QStringLiteral("displayTerm"), string, hint.term) +
           entry(QStringLiteral("term"), string, hint.term);
}

QString olderHint(const Hint &hint)
{
    const QString string = QStringLiteral("string");
    const QString url =
        QStringLiteral("https://search.example/search?media=software&src=hint&term=") +
        QString::fromLatin1(QUrl::toPercentEncoding(hint.term));
    return entry(QStringLiteral("term"), string, hint.term) +
           entry(QStringLiteral("priority"), QStringLiteral("integer"),
                 QString::number(static_cast<int>(hint.weight * 100))) +
           entry(QStringLiteral("url"), string, url);
}

} // namespace

QByteArray hintsBody(const std::vector<Hint> &hints, HintsForm form)
{
    QString body =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" "
                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                       "<plist version=\"1.0\"><dict><key>title</key><string>Suggestions</string>"
                       "<key>hints</key>");
    if (hints.empty())
        return (body + QStringLiteral("<array/></dict></plist>\n")).toUtf8();
    body += QStringLiteral("<array>\n");
    for (const Hint &hint : hints)
        body += QStringLiteral("<dict>%1</dict>\n")
                    .arg(form == HintsForm::Newer ? newerHint(hint) : olderHint(hint));
    return (body + QStringLiteral("</array></dict></plist>\n")).toUtf8();
}

} // namespace veltrix::sample
