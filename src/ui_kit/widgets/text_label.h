// SPDX-License-Identifier: GPL-3.0-or-later
// Labels that take their font from the text styles and their colour from the tokens.
#pragma once

#include "ui_kit/theme/typography.h"

#include <QLabel>

namespace veltrix
{

/// A text in one of the styles.
class TextLabel : public QLabel
{
    Q_OBJECT

public:
    /// The palette role that carries the colour; see paletteFor().
    enum class Tone { Text, Secondary, Accent, Red };
    enum class Wrapping { OneLine, Wrapped };

    TextLabel(TextStyle style, Tone tone, const QString &text = QString(),
              QWidget *parent = nullptr);

    void setWrapping(Wrapping wrapping);
    void setTone(Tone tone);

protected:
    bool event(QEvent *event) override;

private:
    void applyFont();

    TextStyle m_style;
};

/// A text that wraps.
TextLabel *makeParagraph(TextStyle style, TextLabel::Tone tone, const QString &text = QString(),
                         const QString &objectName = QString());
/// The heading of a part of a page.
TextLabel *makeHeading(const QString &text);

/// A label of one line that shortens its text with an ellipsis and tells the whole text in a tool
/// tip when it had to.
class ElidedLabel final : public TextLabel
{
    Q_OBJECT

public:
    using TextLabel::TextLabel;

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool isElided() const;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace veltrix
