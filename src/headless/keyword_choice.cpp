// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/keyword_choice.h"

#include "model/text_folding.h"
#include "store/aso_store.h"

#include <QSet>

#include <algorithm>

namespace veltrix
{

namespace
{

QString quoted(const QStringList &names)
{
    QStringList quoted;
    for (const QString &name : names)
        quoted.append(QStringLiteral("“") + name + QStringLiteral("”"));
    return quoted.join(QStringLiteral(", "));
}

bool isNamed(const AppProfile &app, const QString &name)
{
    return QString::number(app.trackId) == name || foldedCase(app.appName) == foldedCase(name);
}

QSet<QUuid> namedApps(const QList<AppProfile> &apps, const QStringList &names)
{
    QSet<QUuid> ids;
    for (const QString &name : names) {
        for (const AppProfile &app : apps) {
            if (isNamed(app, name))
                ids.insert(app.id);
        }
        const bool isThere =
            std::ranges::any_of(apps, [&](const AppProfile &app) { return isNamed(app, name); });
        if (isThere)
            continue;
        QStringList tracked;
        for (const AppProfile &app : apps)
            tracked.append(app.appName);
        throw UnknownChoice(tracked.isEmpty() ? QStringLiteral("No app is tracked.")
                                              : QStringLiteral("No app is called “") + name +
                                                    QStringLiteral("”. There are ") +
                                                    quoted(tracked) + QStringLiteral("."));
    }
    return ids;
}

QSet<QString> namedStorefronts(const QList<TrackedKeyword> &keywords, const QStringList &names)
{
    QSet<QString> tracked;
    for (const TrackedKeyword &keyword : keywords)
        tracked.insert(keyword.country);
    QSet<QString> named;
    for (const QString &name : names) {
        const QString code = name.toUpper();
        if (!tracked.contains(code)) {
            throw UnknownChoice(QStringLiteral("No keyword is tracked in the storefront “") + name +
                                QStringLiteral("”."));
        }
        named.insert(code);
    }
    return named;
}

} // namespace

QList<TrackedKeyword> chosenKeywords(const ASOStore &store, const KeywordChoice &choice)
{
    const QSet<QUuid> apps = namedApps(store.apps(), choice.apps);
    const QSet<QString> storefronts = namedStorefronts(store.trackedKeywords(), choice.storefronts);
    QList<TrackedKeyword> chosen;
    std::ranges::copy_if(
        store.trackedKeywords(), std::back_inserter(chosen), [&](const TrackedKeyword &keyword) {
            return (apps.isEmpty() || apps.contains(keyword.appId)) &&
                   (storefronts.isEmpty() || storefronts.contains(keyword.country));
        });
    return chosen;
}

} // namespace veltrix
