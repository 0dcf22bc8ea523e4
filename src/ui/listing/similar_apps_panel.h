// SPDX-License-Identifier: GPL-3.0-or-later
// Apps like the researched one.
#pragma once

#include "ui/listing/similar_apps.h"

#include <QWidget>

namespace veltrix
{

class AppRowList;
class ArtworkImages;
class Banner;
class TextLabel;

/// Rows of similar apps, or that they are searched, were not found, or could not be.
class SimilarAppsPanel final : public QWidget
{
    Q_OBJECT

public:
    /// Follows `similar`, which it does not start.
    SimilarAppsPanel(SimilarApps &similar, ArtworkImages &images, QWidget *parent = nullptr);

    /// The App Store id of the user's own app, which is marked.
    void setOwnApp(std::optional<std::int64_t> trackId);
    /// What went wrong is told elsewhere, and here only that nothing came of it.
    void setFailureTold(bool isTold);

Q_SIGNALS:
    void opened(const ITunesAppResult &app);

private:
    void showState();

    SimilarApps &m_similar;
    bool m_isFailureTold = false;
    TextLabel *m_message;
    Banner *m_failure;
    AppRowList *m_rows;
};

} // namespace veltrix
