// SPDX-License-Identifier: GPL-3.0-or-later
// The terms that are suggested in each language, with how much they are searched for.
#pragma once

#include "sample/sample_catalog.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace veltrix::sample
{

struct Hint {
    QString term;
    /// The sum of log10(1 + ratings at home) over the apps that answer to the term; larger is
    /// searched for more.
    double weight = 0;
};

class HintIndex
{
public:
    static constexpr std::size_t mostHints = 10;

    /// Collects the phrases of all apps and the names of the better known ones.
    explicit HintIndex(const SampleCatalog &catalog);

    /// At most mostHints, best first. Terms that begin with the prefix come before terms in which
    /// another word does; case and accents do not matter. No hints for an empty prefix.
    [[nodiscard]] std::vector<Hint> hintsFor(const QString &prefix, Language language) const;

private:
    struct Entry {
        Hint hint;
        QString folded;
    };
    ByLanguage<std::vector<Entry>> m_entries;
};

} // namespace veltrix::sample
