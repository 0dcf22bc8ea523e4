// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/persistence_banner.h"

#include "store/aso_store.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/date_texts.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/confirm_sheet.h"

#include <QVBoxLayout>

namespace veltrix
{

PersistenceBanner::PersistenceBanner(ASOStore &store, QWidget *parent)
    : QWidget(parent), m_store(store),
      m_banner(new Banner(QStringLiteral("persistenceBanner"),
                          QStringLiteral("exclamationmark.triangle"), QString())),
      m_tryAgain(
          new Button(Button::Kind::Standard, QStringLiteral("arrow.clockwise"), tr("Try again"))),
      m_beginAnew(new Button(Button::Kind::Standard, tr("Begin anew…"))),
      m_dismiss(new Button(Button::Kind::Plain, QStringLiteral("xmark"), QString()))
{
    nameControl(m_tryAgain, QStringLiteral("persistenceTryAgain"), tr("Try again"));
    nameControl(m_beginAnew, QStringLiteral("persistenceBeginAnew"), tr("Begin anew…"));
    nameControl(m_dismiss, QStringLiteral("persistenceDismiss"), tr("Dismiss"));
    m_dismiss->setToolTip(tr("Dismiss"));
    for (Button *button : {m_tryAgain, m_beginAnew, m_dismiss})
        m_banner->addControl(button);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_banner);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    connect(m_tryAgain, &Button::clicked, this, [this] { m_tasks.own(tryAgain(m_tasks.token())); });
    connect(m_beginAnew, &Button::clicked, this, &PersistenceBanner::askToBeginAnew);
    connect(m_dismiss, &Button::clicked, this, [this] { m_store.dismissPersistenceNotices(); });
    connect(&m_store, &ASOStore::persistenceProblemChanged, this, [this] {
        m_lastTry.clear();
        update();
    });
    update();
}

void PersistenceBanner::update()
{
    using Remedy = PersistenceProblem::Remedy;
    const auto problem = m_store.persistenceProblem();
    const auto remedy = problem ? problem->remedy : Remedy::Dismiss;
    m_tryAgain->setVisible(remedy != Remedy::Dismiss);
    m_beginAnew->setVisible(remedy == Remedy::TryAgainOrBeginAnew);
    m_dismiss->setVisible(remedy == Remedy::Dismiss);
    QString message = problem ? problem->text : QString();
    if (!m_lastTry.isEmpty())
        message += u'\n' + m_lastTry;
    m_banner->setMessage(message);
    setVisible(problem.has_value());
}

Task<void> PersistenceBanner::tryAgain(std::stop_token stop)
{
    const auto before = m_store.persistenceProblem();
    m_store.retryPersistence();
    co_await m_store.saved(stop);
    if (m_store.persistenceProblem() != before)
        co_return;
    // A button that does nothing would seem broken.
    m_lastTry =
        tr("Tried again at %1. Nothing has changed.").arg(dateTimeText(m_store.clock().now()));
    update();
}

void PersistenceBanner::askToBeginAnew()
{
    const ConfirmSheet::Question question{
        tr("Begin Anew?"),
        tr("Veltrix will start with an empty list. The file that couldn’t be loaded is kept under "
           "another name in the same folder."),
        tr("Begin Anew")};
    ConfirmSheet::ask(this, question, [this] { m_store.beginAnew(); });
}

} // namespace veltrix
