// SPDX-License-Identifier: GPL-3.0-or-later
// Apps like the researched one.
#pragma once

#include "ui/listing/similar_apps.h"

#include <QWidget>

class QVBoxLayout;

namespace veltrix
{

class ArtworkImages;
class FailureCard;
class TextLabel;

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
    ArtworkImages &m_images;
    TextLabel *m_message;
    FailureCard *m_failure;
    QVBoxLayout *m_rows;
};

} // namespace veltrix
