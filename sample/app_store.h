// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store as its services see it: records for searches and look-ups.
#pragma once

#include "sample/app_record.h"
#include "sample/app_search.h"
#include "sample/sample_catalog.h"

#include <QDate>
#include <QList>
#include <QString>

#include <functional>
#include <vector>

namespace veltrix::sample
{

using Records = std::vector<std::vector<RecordField>>;

/// Safe to use from several threads at once.
class AppStore
{
public:
    /// `today` gives the UTC day for which rankings and counts are made; it is asked each time.
    explicit AppStore(std::function<QDate()> today);

    [[nodiscard]] const SampleCatalog &catalog() const { return m_catalog; }
    [[nodiscard]] QDate today() const { return m_today(); }

    /// At most `limit` records, best first.
    [[nodiscard]] Records search(const QString &term, const Storefront &storefront, int limit,
                                 const QString &origin) const;

    /// Records of those of the apps that are sold in the storefront, in the order of the IDs.
    [[nodiscard]] Records lookUp(const QList<qint64> &trackIds, const Storefront &storefront,
                                 const QString &origin) const;

private:
    std::function<QDate()> m_today;
    SampleCatalog m_catalog;
    AppSearch m_search{m_catalog};
};

} // namespace veltrix::sample
