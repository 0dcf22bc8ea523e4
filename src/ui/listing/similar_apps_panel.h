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

Q_SIGNALS:
    void opened(const ITunesAppResult &app);

private:
    void showState();

    SimilarApps &m_similar;
    TextLabel *m_message;
    Banner *m_failure;
    AppRowList *m_rows;
};

} // namespace veltrix
