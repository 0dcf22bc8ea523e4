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
        /// As high as the sheet; scrolled where the sheet is lower than the least that it needs.
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

    /// Adds a button before the title that ends the sheet, named after what is seen again then.
    void showWayBack(const QString &place);

    void setPreferredSize(QSize preferred);
    /// A strip below the body, for what is done with the whole sheet; it is there once asked for.
    [[nodiscard]] QHBoxLayout *footer();

    /// Where the content goes.
    [[nodiscard]] QBoxLayout *body() const { return m_body; }
    [[nodiscard]] QScrollArea *scrollArea() const { return m_scroll; }

    [[nodiscard]] QSize sizeHint() const override;
    /// Of the strip above the body.
    [[nodiscard]] int headerHeight() const { return m_header->sizeHint().height(); }

Q_SIGNALS:
    /// The user is done with the sheet.
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    /// Adds a control to the header at that place, and to the Tab order there.
    void insertAction(int index, QWidget *control);

    QSize m_preferred;
    QWidget *m_header;
    /// Hidden while there is no way back.
    Button *m_back;
    ElidedLabel *m_title;
    ElidedLabel *m_subtitle;
    QHBoxLayout *m_actions;
    QWidget *m_footer = nullptr;
    QScrollArea *m_scroll;
    QBoxLayout *m_body;
};

/// Opens a sheet over the window of `opener`; the sheet deletes itself when it is done. Over
/// another sheet it shows the way back to that one.
void openSheet(QWidget *opener, SheetFrame *sheet);

} // namespace veltrix
