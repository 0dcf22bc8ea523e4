// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/shared_keyword_column.h"

#include "ui_kit/table/cell_parts.h"
#include "ui_kit/text/date_texts.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/position_badge.h"

#include <QCoreApplication>

#include <array>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SharedKeywords)
};

using Entry = SharedEntry;
using Info = Column<SharedEntry, SharedColumn>;

QString keywordSentence(const Entry &entry)
{
    return Texts::tr("%1, %2").arg(inSentence(entry.shared.keyword),
                                   storefrontName(entry.shared.country));
}

/// Of which day both ranks are, where that is not the newest check.
QString olderSentence(const Entry &entry)
{
    return entry.shared.isMeasuredSince ? Texts::tr("Both ranks are of the check of %1.")
                                              .arg(dayText(entry.shared.checkedAt, DayFormat::Day))
                                        : QString();
}

QString keywordTip(const Entry &entry)
{
    const QString older = olderSentence(entry);
    return older.isEmpty() ? keywordSentence(entry) : keywordSentence(entry) + u'\n' + older;
}

void paintRank(const CellPainting &cell, std::int64_t rank, bool isBetter)
{
    paintPosition(cell.painter, cell.content, {rank}, std::nullopt, cell.tokens, cell.base(),
                  isBetter ? PositionWeight::Strong : PositionWeight::Regular);
}

void paintLead(const CellPainting &cell, const Entry &entry)
{
    const bool isOwn = entry.shared.lead() >= 0;
    paintIconWithText(cell, isOwn ? entry.icons.own : entry.icons.theirs, entry.shared.leadText(),
                      isOwn ? Token::Text : Token::Secondary);
}

constexpr std::array columns{
    Info{
        .column = SharedColumn::Keyword,
        .title = [] { return Texts::tr("Keyword"); },
        .defaultWidth = 200,
        .minimumWidth = 90,
        .sortKey = [](const Entry &entry) { return ColumnSortKey{.text = entry.collation.get()}; },
        .text = [](const Entry &entry) { return entry.shared.keyword; },
        .exportedAlong = {[] { return Texts::tr("Storefront"); },
                          [](const Entry &entry) {
                              return entry.shared.country;
                          }},
        .accessibleText = keywordSentence,
        .accessibleHint = olderSentence,
        .toolTip = keywordTip,
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintTextWithCode(cell, entry.shared.keyword, entry.shared.country);
            },
    },
    Info{
        .column = SharedColumn::OwnRank,
        .title = [] { return Texts::tr("Your rank"); },
        .defaultWidth = 112,
        .minimumWidth = 84,
        .sortKey =
            [](const Entry &entry) {
                return ColumnSortKey{.number = double(entry.shared.ownRank)};
            },
        .text = [](const Entry &entry) { return PositionBadge{entry.shared.ownRank}.text(); },
        .accessibleText =
            [](const Entry &entry) { return Texts::tr("your rank %1").arg(entry.shared.ownRank); },
        .accessibleHint = olderSentence,
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintRank(cell, entry.shared.ownRank, entry.shared.lead() > 0);
            },
    },
    Info{
        .column = SharedColumn::TheirRank,
        .title = [] { return Texts::tr("Their rank"); },
        .defaultWidth = 112,
        .minimumWidth = 84,
        .sortKey =
            [](const Entry &entry) {
                return ColumnSortKey{.number = double(entry.shared.theirRank)};
            },
        .text = [](const Entry &entry) { return PositionBadge{entry.shared.theirRank}.text(); },
        .accessibleText =
            [](const Entry &entry) {
                return Texts::tr("their rank %1").arg(entry.shared.theirRank);
            },
        .accessibleHint = olderSentence,
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintRank(cell, entry.shared.theirRank, entry.shared.lead() < 0);
            },
    },
    Info{
        .column = SharedColumn::Leads,
        .title = [] { return Texts::tr("Leads"); },
        .help = [] { return Texts::tr("Who is ahead, and by how many places"); },
        .defaultWidth = 134,
        .minimumWidth = 112,
        // The user's largest lead first.
        .sortKey =
            [](const Entry &entry) {
                return ColumnSortKey{.number = -double(entry.shared.lead())};
            },
        .text = [](const Entry &entry) { return entry.shared.leadText(); },
        .accessibleText = [](const Entry &entry) { return entry.shared.leadSentence(); },
        .accessibleHint = olderSentence,
        .paint = paintLead,
    },
};

} // namespace

std::span<const Column<SharedEntry, SharedColumn>> sharedColumns()
{
    return columns;
}

} // namespace veltrix
