// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/app_facts.h"

#include "model/date.h"
#include "ui_kit/text/date_texts.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AppFacts)
};

QString notAvailable()
{
    return Texts::tr("Not available");
}

QString known(const std::optional<QString> &text, const QString &otherwise)
{
    const QString line = shownLine(text.value_or(QString()));
    return line.isEmpty() ? otherwise : line;
}

} // namespace

QString shownName(const ITunesAppResult &app)
{
    return known(displayName(app), displayName({}));
}

bool hasNoRatings(const ITunesAppResult &app)
{
    if (app.userRatingCount)
        return *app.userRatingCount <= 0;
    return app.averageUserRating && *app.averageUserRating <= 0;
}

QString ratingText(const ITunesAppResult &app, const QLocale &locale)
{
    if (hasNoRatings(app))
        return Texts::tr("No ratings");
    // Nobody can give less than one star.
    if (app.averageUserRating.value_or(0) <= 0)
        return {};
    return locale.toString(*app.averageUserRating, 'f', 1);
}

QString ratingOfFive(const ITunesAppResult &app, const QLocale &locale)
{
    const QString text = ratingText(app, locale);
    if (text.isEmpty())
        return notAvailable();
    return hasNoRatings(app) ? text : Texts::tr("%1 / 5").arg(text);
}

QString ratingCountText(const ITunesAppResult &app, const QLocale &locale)
{
    return app.userRatingCount ? locale.toString(qlonglong(*app.userRatingCount)) : notAvailable();
}

std::optional<QString> updatedText(const ITunesAppResult &app, const AppFactFormat &format)
{
    const auto date = parseInternetDateTime(app.currentVersionReleaseDate.value_or(QString()));
    if (!date)
        return std::nullopt;
    return dateText(*date, format.locale, format.zone);
}

QList<AppFact> appFacts(const ITunesAppResult &app, const AppFactFormat &format)
{
    return {{Texts::tr("Rating"), ratingOfFive(app, format.locale)},
            {Texts::tr("Ratings"), ratingCountText(app, format.locale)},
            {Texts::tr("Category"), known(app.primaryGenreName, notAvailable())},
            {Texts::tr("Price"), known(app.formattedPrice, notAvailable())},
            {Texts::tr("Version"), known(app.version, notAvailable())},
            {Texts::tr("Requires iOS"), known(app.minimumOsVersion, notAvailable())},
            {Texts::tr("Updated"), updatedText(app, format).value_or(notAvailable())}};
}

QString sellerText(const ITunesAppResult &app)
{
    return shownLine(app.sellerName.value_or(QString()));
}

QString bylineText(const ITunesAppResult &app)
{
    QStringList parts{inSentence(sellerText(app)),
                      known(app.primaryGenreName, Texts::tr("Unknown category")),
                      known(app.formattedPrice, Texts::tr("Price unavailable"))};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

QString descriptionText(const ITunesAppResult &app)
{
    const QString text = shownText(app.description.value_or(QString())).trimmed();
    return text.isEmpty() ? Texts::tr("No description available.") : text;
}

QList<Url> screenshots(const ITunesAppResult &app)
{
    QList<Url> urls;
    for (const auto *list : {&app.screenshotUrls, &app.ipadScreenshotUrls}) {
        for (const QString &text : list->value_or(QStringList())) {
            if (const auto url = Url::fromText(text))
                urls.append(*url);
        }
    }
    return urls;
}

QUrl appStoreLink(const QUrl &base, const QString &country, std::int64_t trackId)
{
    QString text = base.toString(QUrl::StripTrailingSlash);
    text += u'/' + country.toLower() + QStringLiteral("/app/id") + QString::number(trackId);
    return QUrl(text);
}

} // namespace veltrix
