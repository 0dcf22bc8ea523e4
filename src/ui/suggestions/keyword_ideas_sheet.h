// SPDX-License-Identifier: GPL-3.0-or-later
// Phrases of competitors' listings, to be tracked.
#pragma once

#include "ui/suggestions/rival_ideas.h"
#include "ui_kit/widgets/sheet_frame.h"

class QVBoxLayout;

namespace veltrix
{

class Banner;
class Button;
class EmptyState;
class IdeaRow;
class TextLabel;

/// The ideas best first. What is kept shows at once; listings that are not known are read when the
/// user asks for it.
class KeywordIdeasSheet final : public SheetFrame
{
    Q_OBJECT

public:
    KeywordIdeasSheet(ASOStore &store, QUuid appId, QWidget *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void showState();
    void showRows();
    void showReading();
    void showChosen();
    void showOutcome();
    void addRow();
    [[nodiscard]] QList<KeywordToTrack> chosen() const;

    RivalIdeas m_ideas;
    Button *m_track;
    Button *m_read;
    TextLabel *m_progress;
    Banner *m_failure;
    TextLabel *m_outcome;
    EmptyState *m_empty;
    QWidget *m_list;
    QVBoxLayout *m_listLayout;
    QList<IdeaRow *> m_rows;
};

} // namespace veltrix
