// SPDX-License-Identifier: GPL-3.0-or-later
// An app as the App Store's services describe it: named JSON values, in an order of its own.
#pragma once

#include "sample/sample_app.h"

#include <QByteArray>
#include <QDate>
#include <QString>

#include <vector>

namespace veltrix::sample
{

struct RecordField {
    QByteArray key;
    /// JSON.
    QByteArray value;
};

/// Where and when a record is written.
struct RecordSetting {
    const Storefront *storefront = nullptr;
    QDate day;
    /// Where this server is reached, such as "http://127.0.0.1:8080"; pictures and pages are there.
    QString origin;
};

/// All fields that the search service sends for an app. The order differs from app to app, and some
/// fields are missing from some, always the same ones:
/// ratings of unrated apps (others say 0), the price of subscription games, the seller's page,
/// release notes, the date of the current version of old apps. Most have no screenshots.
std::vector<RecordField> recordOf(const SampleApp &app, const RecordSetting &setting);

} // namespace veltrix::sample
