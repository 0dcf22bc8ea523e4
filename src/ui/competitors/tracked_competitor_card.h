// SPDX-License-Identifier: GPL-3.0-or-later
// A tracked competitor as a card that opens its research page.
#pragma once

#include "effects/one_shot.h"
#include "model/tracked_competitor.h"
#include "ui_kit/loading/loader.h"
#include "ui_kit/widgets/pressable.h"

namespace veltrix
{

class ArtworkImages;
class ArtworkView;
class ASOStore;
class Button;
class ElidedLabel;

/// Looks the developer up when the record has none, once it is on screen.
class TrackedCompetitorCard final : public Pressable
{
    Q_OBJECT

public:
    TrackedCompetitorCard(ASOStore &store, ArtworkImages &images,
                          const TrackedCompetitor &competitor, QWidget *parent = nullptr);

    void setCompetitor(const TrackedCompetitor &competitor);
    [[nodiscard]] const TrackedCompetitor &competitor() const { return m_competitor; }
    /// Names the competitor's storefront unless it is this one.
    void setCountry(const QString &country);

Q_SIGNALS:
    void removeRequested();

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void showTexts();
    [[nodiscard]] QString developerText() const;
    Task<Done> lookUpDeveloper(std::stop_token stop);
    void openMenu(const QPoint &globalPosition);

    ASOStore &m_store;
    TrackedCompetitor m_competitor;
    QString m_country;
    ArtworkView *m_icon;
    ElidedLabel *m_name;
    ElidedLabel *m_developer;
    Button *m_manage;
    Loader<Done> m_lookUp;
};

} // namespace veltrix
