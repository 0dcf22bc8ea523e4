// SPDX-License-Identifier: GPL-3.0-or-later
// Tags to check in a list.
#pragma once

#include "ui/dashboard/tag_change.h"
#include "ui_kit/widgets/tag_chip.h"

#include <QAbstractListModel>

namespace veltrix
{

/// Tags, each checked, partly checked or not, and the ones that a typed text finds. What a check
/// means is its owner's business, who sets the states anew.
class TagCheckModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    /// What there is to check beside the tags.
    enum class Offer {
        /// "Without a tag", at the end.
        Untagged,
        /// A new tag that is called like the typed text, at the start.
        NewTag,
    };
    struct Row {
        enum class Kind { Tag, Untagged, NewTag };
        Kind kind = Kind::Tag;
        QString name;
        Qt::CheckState state = Qt::Unchecked;
        TagChip chip;
    };

    explicit TagCheckModel(Offer offer, QObject *parent = nullptr);

    /// Nothing moves where the tags are the same as before.
    void setTags(const QList<TagState> &tags);
    void setUntagged(bool isChecked);
    /// Typed ignoring case and accents.
    void setFilter(const QString &text);
    [[nodiscard]] const Row &rowAt(int row) const { return m_rows[row]; }
    /// -1 when it is not listed.
    [[nodiscard]] int rowOf(const QString &tag) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    [[nodiscard]] QList<Row> wantedRows() const;
    void show();

    Offer m_offer;
    QList<TagState> m_tags;
    bool m_isUntaggedChecked = false;
    QString m_filter;
    QList<Row> m_rows;
};

} // namespace veltrix
