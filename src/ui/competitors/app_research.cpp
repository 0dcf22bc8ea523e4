// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/app_research.h"

#include "ui_kit/text/app_facts.h"

namespace veltrix
{

AppResearch::AppResearch(ASOStore &store, const ResearchSelection &selection,
                         const std::optional<QUuid> &appId, QObject *parent)
    : QObject(parent), m_store(store), m_selection(selection), m_appId(appId), m_coverage(store),
      m_similar(store)
{
    connect(&m_app, &LoaderSignals::changed, this, &AppResearch::showApp);
    // Both begin with the same phrase. The similar apps wait for the first check, whose answer the
    // research service has then kept, so that one search serves both.
    connect(&m_coverage, &KeywordCoverage::checked, this, &AppResearch::startSimilar);
    connect(&m_coverage, &KeywordCoverage::progressChanged, this, [this] {
        using Phase = KeywordCoverage::Phase;
        const Phase phase = m_coverage.phase();
        if (phase == Phase::Stopped || phase == Phase::Finished)
            startSimilar();
    });
}

void AppResearch::start()
{
    m_app.ask([this](std::stop_token stop) {
        return m_store.appDetails(m_selection.trackId, m_selection.country, stop);
    });
}

void AppResearch::retry()
{
    m_app.retry();
}

void AppResearch::retryChecks()
{
    m_retriesSimilar = m_similar.state().is<LoadFailed>() && isSimilarFailureTold();
    m_coverage.resume();
}

void AppResearch::showApp()
{
    const ITunesAppResult *app = m_app.state().value();
    if (app)
        m_selection.name = shownName(*app);
    Q_EMIT changed();
    if (!app)
        return;
    m_coverage.start(*app, m_selection.country, ownTrackId());
}

std::optional<std::int64_t> AppResearch::ownTrackId() const
{
    const auto own = m_appId ? m_store.app(*m_appId) : std::nullopt;
    return own ? std::optional(own->trackId) : std::nullopt;
}

void AppResearch::setApp(const std::optional<QUuid> &appId)
{
    if (appId == m_appId)
        return;
    m_appId = appId;
    m_coverage.setOwnApp(ownTrackId());
}

void AppResearch::pause()
{
    m_isPaused = true;
    m_coverage.pause();
}

void AppResearch::unpause()
{
    m_isPaused = false;
    m_coverage.unpause();
    if (!m_coverage.checks().isEmpty())
        startSimilar();
}

void AppResearch::startSimilar()
{
    const ITunesAppResult *app = m_app.state().value();
    if (m_isPaused || !app)
        return;
    if (m_similar.state().is<NotAsked>())
        m_similar.start(*app, m_selection.country);
    else if (std::exchange(m_retriesSimilar, false))
        m_similar.retry();
}

bool AppResearch::isSimilarFailureTold() const
{
    if (m_coverage.phase() != KeywordCoverage::Phase::Failed)
        return false;
    const QString error = m_similar.state().error();
    return m_similar.state().is<NotAsked>() || error == m_coverage.error();
}

} // namespace veltrix
