// SPDX-License-Identifier: GPL-3.0-or-later
// The change log of a competitor's listing.
#pragma once

#include "ui/competitors/change_log.h"
#include "ui_kit/loading/loadable.h"

#include <QWidget>

class QVBoxLayout;

namespace veltrix
{

class ArtworkImages;
class Banner;
class Button;
class TextLabel;

/// Changes below each other; of many the newest until all are wanted.
class ChangeLogView final : public QWidget
{
    Q_OBJECT

public:
    /// Entries shown at first.
    static constexpr size_t firstEntries = 10;

    explicit ChangeLogView(ArtworkImages &images, QWidget *parent = nullptr);

    /// As high as the head beside it, so that both stand on one line.
    void setHeadHeight(int height);

    /// Shows the log, or what `state` says in its place; `toldError` is what stands beside already.
    void showLog(const Loadable<ListingPast> &state, const std::vector<ChangeLogEntry> &log,
                 const QString &toldError);

Q_SIGNALS:
    void retryRequested();

private:
    void showEntries();

    ArtworkImages &m_images;
    TextLabel *m_heading;
    TextLabel *m_waiting;
    Banner *m_failure;
    QWidget *m_list;
    QVBoxLayout *m_rows;
    Button *m_more;
    std::vector<ChangeLogEntry> m_log;
    bool m_showsAll = false;
};

} // namespace veltrix
