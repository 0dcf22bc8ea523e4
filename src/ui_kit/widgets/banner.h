// SPDX-License-Identifier: GPL-3.0-or-later
// A strip or card that says what went wrong and offers the way on.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QWidget>

namespace veltrix
{

class Button;
class TextLabel;

/// A message with its way on; hidden while there is none.
class Banner final : public QWidget
{
    Q_OBJECT

public:
    enum class Shape {
        /// From side to side, over a screen.
        Strip,
        /// In a page, above the part that failed.
        Card,
    };

    /// `action` may be empty: then the banner has no button.
    Banner(const QString &objectName, const QString &symbol, const QString &action,
           QWidget *parent = nullptr, Shape shape = Shape::Strip);
    /// A card that says what went wrong.
    static Banner *makeFailureCard(const QString &objectName, const QString &action);

    /// Shows the message, and below it the detail when there is one; hides the banner when the
    /// message is empty.
    void setMessage(const QString &message, const QString &detail = QString());
    [[nodiscard]] QString message() const;
    [[nodiscard]] QString detail() const;
    /// Adds a further button at the end.
    void addControl(QWidget *control);
    void setActionEnabled(bool enabled);
    /// An arrow in a circle unless set.
    void setActionSymbol(const QString &symbol);
    /// Adds a button that hides the banner.
    void makeDismissible();
    /// The button's words; empty for no button.
    void setAction(const QString &text);
    /// What the banner is about: at first the symbol of the constructor on Orange.
    void setLook(const QString &symbol, Token token);

Q_SIGNALS:
    void actionTriggered();
    void dismissed();

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Sizes that follow from the font.
    void fitFont();

    Shape m_shape;
    QString m_symbol;
    Token m_token = Token::Orange;
    QWidget *m_symbolSpace;
    TextLabel *m_text;
    TextLabel *m_detail;
    Button *m_action;
};

} // namespace veltrix
