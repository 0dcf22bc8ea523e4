// SPDX-License-Identifier: GPL-3.0-or-later
// Tags as they are seen everywhere: a dot in the colour of the tag, and its name.
#pragma once

#include "ui_kit/theme/tokens.h"
#include "ui_kit/widgets/pressable.h"

#include <QFont>
#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

class QPainter;

namespace veltrix
{

/// The colour of a tag. It follows from the name, without case, alone: the same at every start on
/// every machine.
Token tagToken(const QString &name);

/// A tag made ready to be painted again and again.
struct TagChip {
    /// The name on one line.
    QString text;
    Token token = Token::Gray;

    static TagChip of(const QString &name);
    static QList<TagChip> of(const QStringList &names);

    bool operator==(const TagChip &) const = default;
};

/// The size of a whole chip. `base` is the body font.
QSizeF tagChipSize(const TagChip &chip, const QFont &base);
/// At the left end of `rect`, centred vertically, its name elided where there is no room for it.
void paintTagChip(QPainter &painter, const QRectF &rect, const TagChip &chip, const Tokens &tokens,
                  const QFont &base);

/// Where the chips of a table's cell lie: as many as fit, and how many more there are.
struct TagRowGeometry {
    /// Of the first chips.
    QList<QRectF> chips;
    /// Of "+2" behind them; empty when all are there.
    QRectF more;
    int moreCount = 0;
};

/// At least one chip lies there, as wide as there is room.
TagRowGeometry layoutTagRow(const QRectF &rect, const QList<TagChip> &chips, const QFont &base);
void paintTagRow(QPainter &painter, const QRectF &rect, const QList<TagChip> &chips,
                 const Tokens &tokens, const QFont &base);

/// A tag that can be taken off: a press on its ×, or Space, Enter, Backspace or Delete, sends
/// clicked(). It is read as "core, remove".
class RemovableTag final : public Pressable
{
    Q_OBJECT

public:
    explicit RemovableTag(const QString &name, QWidget *parent = nullptr);

    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] QSize sizeHint() const override;
    /// A long name gives way.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint &position) const override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QRect crossRect() const;

    QString m_name;
    TagChip m_chip;
};

} // namespace veltrix
