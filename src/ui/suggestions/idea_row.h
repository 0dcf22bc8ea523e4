// SPDX-License-Identifier: GPL-3.0-or-later
// One idea of a keyword in a list.
#pragma once

#include "ui/suggestions/keyword_ideas.h"
#include "ui_kit/widgets/pressable.h"

namespace veltrix
{

class Button;

/// The phrase with its storefront, below it why it stands where it stands. Pressing it chooses it;
/// a button of its own tracks it alone.
class IdeaRow final : public Pressable
{
    Q_OBJECT

public:
    explicit IdeaRow(QWidget *parent = nullptr);

    void setIdea(const KeywordIdea &idea);
    [[nodiscard]] const KeywordIdea &idea() const { return m_idea; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void trackRequested();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeButton();

    KeywordIdea m_idea;
    Button *m_track;
};

} // namespace veltrix
