// SPDX-License-Identifier: GPL-3.0-or-later
// What the dashboard says about keywords that are in no row: those that an import refused.
#include "ui/dashboard/dashboard_page.h"

#include "ui/dashboard/keyword_actions.h"
#include "ui/text/admission_texts.h"
#include "ui/widgets/banner.h"

namespace veltrix
{

void DashboardPage::buildNotices()
{
    m_importBanner = new Banner(QStringLiteral("importBanner"),
                                QStringLiteral("exclamationmark.triangle"), tr("Copy refused"));
    m_importBanner->setActionSymbol(QStringLiteral("doc.on.doc"));
    m_importBanner->makeDismissible();
    connect(m_importBanner, &Banner::actionTriggered, this,
            [this] { m_actions->copyRefusals(m_imported.refused); });
    connect(m_importBanner, &Banner::dismissed, this, [this] { m_imported = {}; });
    connect(m_actions, &KeywordActions::imported, this, &DashboardPage::showImported);
}

void DashboardPage::showImported(QUuid appId, const KeywordAdmission &admission)
{
    m_importedApp = appId;
    m_imported = admission;
    updateImportNotice();
}

void DashboardPage::updateImportNotice()
{
    QStringList lines;
    if (!m_imported.refused.isEmpty() && m_importedApp == m_appId)
        lines = QStringList{admissionCount(m_imported)} + refusalLines(m_imported.refused);
    m_importBanner->setMessage(lines.join(u'\n'));
}

} // namespace veltrix
