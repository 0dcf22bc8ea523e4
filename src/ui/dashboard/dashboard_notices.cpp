// SPDX-License-Identifier: GPL-3.0-or-later
// What the dashboard says about keywords that are in no row: those that an import refused, and
// those whose app is gone.
#include "ui/dashboard/dashboard_page.h"

#include "ui/dashboard/keyword_actions.h"
#include "ui/measuring/admission_texts.h"
#include "ui_kit/widgets/banner.h"

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

    m_orphansBanner =
        new Banner(QStringLiteral("orphansBanner"), QStringLiteral("info.circle"), tr("Remove…"));
    m_orphansBanner->setActionSymbol(QStringLiteral("trash"));
    connect(m_orphansBanner, &Banner::actionTriggered, this, [this] {
        QList<QUuid> ids;
        for (const TrackedKeyword &keyword : std::as_const(m_orphans))
            ids.append(keyword.id);
        askToRemove(ids);
    });
    connect(&m_store, &ASOStore::keywordRemoved, this, &DashboardPage::forgetKeywordWithoutApp);
    connect(&m_store, &ASOStore::appsChanged, this, &DashboardPage::findKeywordsWithoutApp);
    findKeywordsWithoutApp();
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

void DashboardPage::findKeywordsWithoutApp()
{
    m_orphans = m_store.keywordsWithoutApp();
    showKeywordsWithoutApp();
}

void DashboardPage::forgetKeywordWithoutApp(QUuid id)
{
    // Many are removed at once; the banner is written when they all are gone.
    if (m_orphans.removeIf([&](const TrackedKeyword &keyword) { return keyword.id == id; }) > 0)
        QMetaObject::invokeMethod(this, &DashboardPage::showKeywordsWithoutApp,
                                  Qt::QueuedConnection);
}

void DashboardPage::showKeywordsWithoutApp()
{
    QStringList names;
    for (const TrackedKeyword &keyword : std::as_const(m_orphans))
        names << keyword.keyword;
    QString message;
    if (names.size() == 1)
        message = tr("1 keyword belongs to an app that is no longer tracked: %1.")
                      .arg(namesInShort(names));
    else if (!names.isEmpty())
        message = tr("%L1 keywords belong to an app that is no longer tracked: %2.")
                      .arg(names.size())
                      .arg(namesInShort(names));
    m_orphansBanner->setMessage(message);
}

} // namespace veltrix
