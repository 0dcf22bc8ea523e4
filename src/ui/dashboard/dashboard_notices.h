// SPDX-License-Identifier: GPL-3.0-or-later
// What the dashboard says about keywords that are in no row: those that an import refused, and
// those whose app is gone.
#pragma once

#include "store/aso_store.h"
#include "ui/measuring/admission_texts.h"

#include <QObject>

namespace veltrix
{

/// Decides which of the two notices stand and what they say. Knows no widget; whoever shows them
/// follows changed().
class DashboardNotices final : public QObject
{
    Q_OBJECT

public:
    /// `store` outlives this.
    explicit DashboardNotices(ASOStore &store, QObject *parent = nullptr);

    /// The app in view.
    void setApp(std::optional<QUuid> appId);
    /// The end of an import into that app, and what of the file was refused.
    void setImported(QUuid appId, const AdmissionCount &count, const QList<RefusedLine> &refused);
    void dismissImported();

    /// What of the last import into the app in view was refused; empty when nothing was.
    [[nodiscard]] QString importNotice() const;
    [[nodiscard]] const QList<RefusedLine> &refused() const { return m_refused; }
    /// That there are keywords whose app is not tracked; empty when there are none.
    [[nodiscard]] QString orphansNotice() const;
    [[nodiscard]] const QList<QUuid> &orphans() const { return m_orphans; }

Q_SIGNALS:
    void changed();

private:
    void findOrphans();
    void forgetOrphan(QUuid id);

    ASOStore &m_store;
    std::optional<QUuid> m_appId;
    QUuid m_importedApp;
    AdmissionCount m_imported;
    QList<RefusedLine> m_refused;
    QList<QUuid> m_orphans;
};

} // namespace veltrix
