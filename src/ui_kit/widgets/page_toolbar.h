// SPDX-License-Identifier: GPL-3.0-or-later
// The strip at the top of a page: its title at one end, its controls at the other.
#pragma once

#include <QWidget>

class QHBoxLayout;

namespace veltrix
{

class TextLabel;

/// The title of a page with the controls before and after it.
class PageToolbar final : public QWidget
{
    Q_OBJECT

public:
    explicit PageToolbar(const QString &title, QWidget *parent = nullptr);

    void setTitle(const QString &title);
    /// The quiet text beside the title, "24 tracked".
    void setSubtitle(const QString &subtitle);
    /// Adds a control at the leading end, before the title.
    void addLeading(QWidget *control);
    /// Adds a control at the trailing end.
    void addTrailing(QWidget *control);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Gives up what the width has no room for: the subtitle, the texts of buttons that have a
    /// symbol, those of storefronts, and at last the title, which the sidebar tells, too.
    void fit();

    QHBoxLayout *m_leading;
    QHBoxLayout *m_trailing;
    TextLabel *m_title;
    TextLabel *m_subtitle;
    /// How much of that is given up, 0 to 4.
    int m_given = 0;
};

} // namespace veltrix
