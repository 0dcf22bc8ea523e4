// SPDX-License-Identifier: GPL-3.0-or-later
// A word in a coloured capsule.
#pragma once

#include "model/assessments.h"
#include "ui_kit/theme/tokens.h"

#include <QFontMetricsF>
#include <QWidget>

#include <optional>

class QPainter;

namespace veltrix
{

struct Badge {
    QString text;
    Token token = Token::Gray;

    bool operator==(const Badge &) const = default;
};

/// The target label of a keyword: its tier, or "Refresh required" without an assessment.
Badge targetBadge(const std::optional<OpportunityAssessment> &opportunity);
/// Why there is no target; empty when there is one.
QString targetBadgeHelp(const std::optional<OpportunityAssessment> &opportunity);

struct BadgeGeometry {
    QRectF capsule;
    QRectF text;
};

/// A capsule at the leading end of `rect`, centred vertically, never wider than `rect`.
BadgeGeometry layoutBadge(const QRectF &rect, const QFontMetricsF &metrics, const Badge &badge);
/// `base` is the body font.
void paintBadge(QPainter &painter, const QRectF &rect, const Badge &badge, const Tokens &tokens,
                const QFont &base);

/// A short code, such as a storefront's: quiet letters on 14 % gray. The size that it takes.
QSizeF codeBadgeSize(const QString &code, const QFont &base);
/// `rect` has that size.
void paintCodeBadge(QPainter &painter, const QRectF &rect, const QString &code,
                    const Tokens &tokens, const QFont &base);

/// The badge as a widget.
class BadgeView final : public QWidget
{
    Q_OBJECT

public:
    explicit BadgeView(QWidget *parent = nullptr);

    void setBadge(const Badge &badge);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Badge m_badge;
};

} // namespace veltrix
