// SPDX-License-Identifier: GPL-3.0-or-later
// Short forms of the sample services' values, for tests that compare text with text.
#pragma once

#include "sample/app_search.h"
#include "sample/storefront.h"
#include "support/json_printers.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace veltrix::sample
{

/// The day of most tests.
inline QDate testDay()
{
    return QDate(2026, 11, 21);
}

inline const Storefront &storefront(const char *country)
{
    const Storefront *found = findStorefront(QString::fromLatin1(country));
    if (!found)
        throw std::logic_error(std::string("no storefront ") + country);
    return *found;
}

inline const SampleCatalog &testCatalog()
{
    static const SampleCatalog catalog;
    return catalog;
}

inline const AppSearch &testSearch()
{
    static const AppSearch search(testCatalog());
    return search;
}

/// The names that a storefront shows for a term, best first.
inline QStringList namesFor(const char *country, const char *term, QDate day = testDay())
{
    const Storefront &shop = storefront(country);
    QStringList names;
    for (const SampleApp *app : testSearch().find(QString::fromUtf8(term), shop, day))
        names += app->listing(shop.language).name;
    return names;
}

/// 1 for the best; 0 for an app that is not among the results.
inline int positionOf(std::int64_t trackId, const char *country, const char *term,
                      QDate day = testDay())
{
    const auto apps = testSearch().find(QString::fromUtf8(term), storefront(country), day);
    for (std::size_t index = 0; index < apps.size(); ++index)
        if (apps[index]->trackId == trackId)
            return static_cast<int>(index) + 1;
    return 0;
}

inline QJsonObject jsonOf(const std::string &body)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(body), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return document.object();
}

inline QJsonArray resultsOf(const std::string &body)
{
    return jsonOf(body).value(QLatin1String("results")).toArray();
}

} // namespace veltrix::sample
