// SPDX-License-Identifier: GPL-3.0-or-later
// A long text of which a few lines are shown until the rest is asked for.
#pragma once

#include <QFont>
#include <QWidget>

namespace veltrix
{

class Button;
class TextLabel;

/// The first `lines` lines that a text takes when it is wrapped at `width`, ending in an ellipsis
/// when there is more. The whole text when it fits.
QString firstLines(const QString &text, const QFont &font, int width, int lines);

/// A text and the button that unfolds and folds it.
class ExpandableText final : public QWidget
{
    Q_OBJECT

public:
    explicit ExpandableText(const QString &objectName, QWidget *parent = nullptr);

    void setText(const QString &text);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setExpanded(bool expanded);
    [[nodiscard]] QString shownText(int width) const;
    /// Height of that text when it is wrapped at that width.
    [[nodiscard]] int textHeight(const QString &text, int width) const;
    void place();

    QString m_whole;
    TextLabel *m_text;
    Button *m_toggle;
    bool m_isExpanded = false;
};

} // namespace veltrix
