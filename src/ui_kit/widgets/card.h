// SPDX-License-Identifier: GPL-3.0-or-later
// Cards and what stands on them: figures, meters, notes.
#pragma once

#include "ui_kit/theme/tokens.h"
#include "ui_kit/widgets/text_label.h"

#include <QWidget>

#include <optional>

class QVBoxLayout;

namespace veltrix
{

/// A group with round corners and a hairline around it, in the colour of a token when it has one.
class Card : public QWidget
{
    Q_OBJECT

public:
    explicit Card(const QString &objectName, QWidget *parent = nullptr);

    /// Tints the card; without a token it is plain.
    void setTint(std::optional<Token> token);
    [[nodiscard]] QVBoxLayout *content() const { return m_content; }

    /// The colour of a tinted card, to lie over its background. A card is a larger area than a
    /// badge, so it is lighter.
    static QColor fill(Token token, const Tokens &tokens);
    /// A card of that place, tinted where there is a token.
    static void paint(QPainter &painter, const QRectF &place, std::optional<Token> token,
                      const Tokens &tokens);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::optional<Token> m_tint;
    QVBoxLayout *m_content;
};

/// A text whose colour is a token's, for labels whose colour has a meaning.
class TokenLabel : public TextLabel
{
    Q_OBJECT

public:
    TokenLabel(TextStyle style, Token token, const QString &text = QString(),
               QWidget *parent = nullptr);

    void setToken(Token token);
    [[nodiscard]] Token token() const { return m_token; }

protected:
    bool event(QEvent *event) override;

private:
    void applyColor();

    Token m_token;
};

/// A symbol in a token's colour, as high as a line of text.
class SymbolView final : public QWidget
{
    Q_OBJECT

public:
    SymbolView(const QString &symbol, Token token, QWidget *parent = nullptr);

    void setSymbol(const QString &symbol, Token token);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    Token m_token;
};

/// A figure with what it counts.
struct Figure {
    QString caption;
    QString value;
    /// "/ 100" or empty.
    QString unit = {};
    /// Figures in digits are large; words take their place in body size.
    bool isLarge = false;
    /// May be empty.
    QString symbol = {};
    /// What the figure is, in a tool tip; may be empty.
    QString help = {};

    /// Caption, value and unit as one text: "Difficulty: 61 / 100".
    [[nodiscard]] QString text() const;
    bool operator==(const Figure &) const = default;
};

/// A card with the caption of a figure over the figure. A screen reader reads both as one.
class FigureTile final : public Card
{
    Q_OBJECT

public:
    explicit FigureTile(const QString &objectName, QWidget *parent = nullptr);

    void setFigure(const Figure &figure);

private:
    SymbolView *m_symbol;
    TextLabel *m_caption;
    TextLabel *m_largeValue;
    TextLabel *m_value;
    TextLabel *m_unit;
};

/// A bar that is full at 1.
class Meter final : public QWidget
{
    Q_OBJECT

public:
    explicit Meter(Token token, QWidget *parent = nullptr);

    void setFraction(double fraction);
    [[nodiscard]] QSize sizeHint() const override { return {160, 5}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Token m_token;
    double m_fraction = 0;
};

} // namespace veltrix
