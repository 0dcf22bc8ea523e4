// SPDX-License-Identifier: GPL-3.0-or-later
// What the research screens say about an App Store app, cleaned by shownText(). Pure values.
#pragma once

#include "model/itunes_app_result.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QTimeZone>

namespace veltrix
{

/// A fact with its label; "Not available" stands for a missing one.
struct AppFact {
    QString label;
    QString value;

    bool operator==(const AppFact &) const = default;
};

/// How numbers and dates are written.
struct AppFactFormat {
    QLocale locale = QLocale();
    QTimeZone zone = QTimeZone::systemTimeZone();
};

/// Rating, Ratings, Category, Price, Version, Requires iOS, Updated, in this order.
QList<AppFact> appFacts(const ITunesAppResult &app, const AppFactFormat &format = {});

/// The name as it is shown, on one line.
QString shownName(const ITunesAppResult &app);
/// The record says that nobody has rated the app; the store's 0 stars mean this too.
bool hasNoRatings(const ITunesAppResult &app);
/// "4.7 / 5"; "No ratings" where nobody has rated the app, "Not available" where it is not known.
QString ratingOfFive(const ITunesAppResult &app, const QLocale &locale = QLocale());
/// "4.7"; "No ratings" where nobody has rated the app, empty where it is not known.
QString ratingText(const ITunesAppResult &app, const QLocale &locale = QLocale());
/// "128,402"; "Not available" without a count.
QString ratingCountText(const ITunesAppResult &app, const QLocale &locale = QLocale());
/// "Nov 12, 2026": when the current version was released; nothing when that is not known.
std::optional<QString> updatedText(const ITunesAppResult &app, const AppFactFormat &format = {});
/// The seller on one line; empty when there is none.
QString sellerText(const ITunesAppResult &app);
/// "Brass Lens Studio · Photo & Video · Free"; "Unknown category" and "Price unavailable" stand for
/// what is missing, a missing seller is left out.
QString bylineText(const ITunesAppResult &app);
/// The description, or "No description available.".
QString descriptionText(const ITunesAppResult &app);

/// Screenshots in the store's order, those for phones first.
QList<Url> screenshots(const ITunesAppResult &app);

/// The page of an app: `base` ("https://apps.apple.com"), the storefront's code in lower case,
/// "/app/id" and the id.
QUrl appStoreLink(const QUrl &base, const QString &country, std::int64_t trackId);

} // namespace veltrix
