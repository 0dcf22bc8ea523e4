// SPDX-License-Identifier: GPL-3.0-or-later
// Push buttons with a symbol, a text, or both.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QPushButton>

namespace veltrix
{

/// Where the parts of a button lie. A part that is not there has an empty rectangle.
struct ButtonGeometry {
    QRectF symbol;
    QRectF text;
};

/// Places a symbol (16 pixels at the standard font) and a text of `textWidth` side by side in the
/// middle of `rect`; text that does not fit keeps what is left after the symbol.
ButtonGeometry layoutButton(const QRectF &rect, qreal symbolSize, qreal textWidth,
                            Qt::LayoutDirection direction);

/// A push button of one of five kinds.
class Button : public QPushButton
{
    Q_OBJECT

public:
    enum class Kind {
        /// A frame on the surface.
        Standard,
        /// Filled with the accent colour: the one main action of a screen.
        Primary,
        /// Filled red: destroys something.
        Destructive,
        /// Accent text without a frame.
        Link,
        /// A symbol without a frame, in the secondary colour.
        Plain,
    };

    Button(Kind kind, const QString &symbol, const QString &text, QWidget *parent = nullptr);
    Button(Kind kind, const QString &text, QWidget *parent = nullptr);

    void setSymbol(const QString &symbol);
    [[nodiscard]] QString symbol() const { return m_symbol; }
    /// Where there is no room for its text, a button with a symbol shows that alone, and the text
    /// as a tool tip unless it has one.
    void setCompact(bool isCompact);
    /// How much narrower that makes it, or has made it.
    [[nodiscard]] int savedByCompact() const;
    void setKind(Kind kind);
    [[nodiscard]] Kind kind() const { return m_kind; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Colors {
        QColor fill;
        QColor line;
        QColor content;
    };
    [[nodiscard]] Colors colors(const Tokens &tokens) const;
    [[nodiscard]] QFont labelFont() const;
    [[nodiscard]] int symbolSize() const;
    /// The text as it is shown.
    [[nodiscard]] QString plainText() const;
    [[nodiscard]] QSize sizeWith(const QString &text) const;

    Kind m_kind;
    QString m_symbol;
    bool m_isCompact = false;
};

} // namespace veltrix
