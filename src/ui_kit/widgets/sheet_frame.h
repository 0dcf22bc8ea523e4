// SPDX-License-Identifier: GPL-3.0-or-later
// The frame of every sheet: its title, its way out, and a body that scrolls.
#pragma once

#include <QWidget>

class QBoxLayout;
class QHBoxLayout;
class QScrollArea;

namespace veltrix
{

class Button;
class ElidedLabel;

/// A header with title, quiet second line and buttons, a hairline, and the body below. Put into an
/// Overlay it is a sheet.
class SheetFrame : public QWidget
{
    Q_OBJECT

public:
    enum class Body {
        /// As high as the sheet.
        Fixed,
        /// As high as its content; scrolled where the sheet is lower.
        Scrolled,
    };

    /// `preferred` is the size at the standard font; a sheet never gets larger than its window.
    SheetFrame(const QString &objectName, const QString &title, Body body, QSize preferred,
               QWidget *parent = nullptr);

    void setSubtitle(const QString &subtitle);
    /// Adds a control before the buttons that are there.
    void addAction(QWidget *control);
    /// The button that ends the sheet; `text` may be empty for a button with a symbol alone.
    Button *addCloseButton(const QString &objectName, const QString &symbol, const QString &text,
                           const QString &accessibleName);

    void setPreferredSize(QSize preferred);
    /// A strip below the body, for what is done with the whole sheet; it is there once asked for.
    [[nodiscard]] QHBoxLayout *footer();

    /// Where the content goes.
    [[nodiscard]] QBoxLayout *body() const { return m_body; }
    /// Null for a fixed body.
    [[nodiscard]] QScrollArea *scrollArea() const { return m_scroll; }

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// The user is done with the sheet.
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QSize m_preferred;
    QWidget *m_header;
    ElidedLabel *m_title;
    ElidedLabel *m_subtitle;
    QHBoxLayout *m_actions;
    QWidget *m_footer = nullptr;
    QScrollArea *m_scroll = nullptr;
    QBoxLayout *m_body;
};

/// Opens a sheet over the window of `opener`; the sheet deletes itself when it is done.
void openSheet(QWidget *opener, SheetFrame *sheet);

} // namespace veltrix
