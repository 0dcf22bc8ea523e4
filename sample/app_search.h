// SPDX-License-Identifier: GPL-3.0-or-later
// Finds and ranks apps for a search term, the same way on every machine.
#pragma once

#include "sample/sample_catalog.h"

#include <QDate>

#include <vector>

namespace veltrix::sample
{

/// The search of the made-up App Store.
///
/// Relevance, 0 to 1, of an app to a term (both without case, accents, punctuation and plural s;
/// words such as "for" and "app" do not count):
///   1.00  the term stands in the name, its words in a row
///   0.93  all its words stand in the name
///   0.85  the term is one of the app's hidden phrases
///   else  0.8 × the mean of its words' weights: in the name 1, in hidden phrases 0.6, in the
///         publisher's or the category's name 0.3, anywhere among the theme's topics 0.15, as the
///         beginning of one of these words 0.6 of it
/// At least half of the words must be found, else the app does not answer.
///
/// Apps are ordered by  relevance² × (0.3 + log10(1 + ratings) ÷ 6.5) × (0.8 + stars ÷ 25) × drift,
/// where drift moves by up to 8 % within weeks and by 2.5 % from one UTC day to the next.
class AppSearch
{
public:
    /// The catalogue must outlive the search.
    explicit AppSearch(const SampleCatalog &catalog);

    /// Apps that are sold in the storefront on the day and answer to the term, best first.
    [[nodiscard]] std::vector<const SampleApp *>
    find(const QString &term, const Storefront &storefront, QDate day) const;

private:
    struct Entry {
        const SampleApp *app = nullptr;
        /// Folded words with one space before and after each: " photo editor ".
        QString name;
        /// The same without any space.
        QString joinedName;
        QStringList nameWords;
        QStringList phrases;
        QStringList phraseWords;
        QStringList otherWords;
        const QStringList *themeWords = nullptr;
    };

    [[nodiscard]] Entry entryFor(const SampleApp &app, const LanguageTexts &texts) const;
    static double relevance(const Entry &entry, const QStringList &words);
    static double wordWeight(const Entry &entry, const QString &word);
    [[nodiscard]] QStringList searchWords(const QString &term, Language language) const;

    /// By Theme::number.
    ByLanguage<std::vector<QStringList>> m_themeWords;
    ByLanguage<std::vector<Entry>> m_entries;
    /// Words of scripts without spaces, longest first, by which such terms are cut.
    ByLanguage<QStringList> m_knownParts;
};

} // namespace veltrix::sample
