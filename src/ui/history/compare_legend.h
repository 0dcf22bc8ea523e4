// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a compared history, to turn on and off.
#pragma once

#include "ui/history/compared_text.h"

#include <QWidget>

namespace veltrix
{

class TextLabel;

/// Check boxes in three columns, or two or one where it is narrow. The arrows move among them.
class CompareLegend final : public QWidget
{
    Q_OBJECT

public:
    explicit CompareLegend(QWidget *parent = nullptr);

    /// Entries keep their places, and the focus, while they are the same lines.
    void setEntries(const std::vector<LegendEntry> &entries);
    /// In a picture what is off means nothing.
    void setOffShown(bool shown);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void turned(std::int64_t line, bool on);
    /// The pointer rests on the entry of that line; on none any more.
    void pointedAt(std::optional<std::int64_t> line);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    class Entry;

    [[nodiscard]] int columns(int width) const;
    [[nodiscard]] std::vector<Entry *> shownEntries() const;
    void place();

    std::vector<Entry *> m_entries;
    bool m_isOffShown = true;
};

} // namespace veltrix
