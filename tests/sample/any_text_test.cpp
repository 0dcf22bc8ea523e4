// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for any text that somebody searches for.
#include "sample/hint_index.h"
#include "sample/json_text.h"
#include "sample/market.h"
#include "sample/text_folding.h"
#include "sample_printers.h"
#include "support/generators.h"

#include <rapidcheck/gtest.h>

#include <set>

namespace veltrix::sample
{
namespace
{

RC_GTEST_PROP(AnyText, FoldsOnceAndForAll, (const QString &text))
{
    RC_ASSERT(folded(folded(text)) == folded(text));
}

RC_GTEST_PROP(AnyText, ComesBackFromJson, (const QString &text))
{
    // This reader takes a U+FEFF at the start of a string for a byte order mark.
    const QString written = u'.' + text;
    const QByteArray array = '[' + jsonString(written) + ']';
    RC_ASSERT(QJsonDocument::fromJson(array).array().at(0).toString() == written);
}

RC_GTEST_PROP(AnyText, FindsEachAppOnceAndOnlySoldOnes, (const QString &text))
{
    // A known word among the noise, so that there is something to find.
    const QString term = text + QStringLiteral(" photo");
    for (const char *country : {"US", "JP"}) {
        const Storefront &shop = storefront(country);
        std::set<std::int64_t> seen;
        for (const SampleApp *app : testSearch().find(term, shop, testDay())) {
            RC_ASSERT(seen.insert(app->trackId).second);
            RC_ASSERT(isSold(*app, shop, testDay()));
        }
    }
}

RC_GTEST_PROP(AnyText, GetsAtMostTenHints, (const QString &text))
{
    static const HintIndex index(testCatalog());
    RC_ASSERT(index.hintsFor(text, Language::English).size() <= HintIndex::mostHints);
    RC_ASSERT(index.hintsFor(text, Language::Japanese).size() <= HintIndex::mostHints);
}

} // namespace
} // namespace veltrix::sample
