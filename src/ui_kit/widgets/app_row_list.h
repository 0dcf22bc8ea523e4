// SPDX-License-Identifier: GPL-3.0-or-later
// Apps below each other.
#pragma once

#include "ui_kit/widgets/app_row.h"

#include <functional>

class QVBoxLayout;

namespace veltrix
{

/// Rows that keep their places: another list changes what they show, not where they are, so that
/// scrolling and focus stay. The focus moves among them by arrows and pages. Without apps it is
/// hidden.
class AppRowList final : public QWidget
{
    Q_OBJECT

public:
    enum class Ranks { Hidden, Shown };
    /// Called for a row that has got an app, to give it its control and its purpose.
    using Prepare = std::function<void(AppRow &row)>;

    /// Rows are called `rowName` and their number from 1.
    AppRowList(const QString &rowName, AppRowLook look, Ranks ranks, ArtworkImages &images,
               Prepare prepare = {}, QWidget *parent = nullptr);

    void setApps(const QList<ITunesAppResult> &apps);
    /// The App Store id of the user's own app, which is marked where it is listed.
    void setOwnApp(std::optional<std::int64_t> trackId);

Q_SIGNALS:
    /// The row of that app was pressed.
    void pressed(const ITunesAppResult &app);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    AppRow *addRow();
    void markOwn(AppRow &row) const;

    QString m_rowName;
    AppRowLook m_look;
    Ranks m_ranks;
    ArtworkImages &m_images;
    Prepare m_prepare;
    std::optional<std::int64_t> m_ownTrackId;
    QList<AppRow *> m_rows;
    QVBoxLayout *m_layout;
};

} // namespace veltrix
