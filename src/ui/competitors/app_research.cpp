// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/app_research.h"

namespace veltrix
{

AppResearch::AppResearch(ASOStore &store, const ResearchSelection &selection, QObject *parent)
    : QObject(parent), m_store(store), m_selection(selection), m_coverage(store), m_similar(store)
{
    connect(&m_app, &LoaderSignals::changed, this, &AppResearch::showApp);
    // Both begin with the same phrase. The similar apps wait for the first check, whose answer the
    // research service has then kept, so that one search serves both.
    connect(&m_coverage, &KeywordCoverage::checked, this, &AppResearch::startSimilar);
    connect(&m_coverage, &KeywordCoverage::progressChanged, this, [this] {
        using Phase = KeywordCoverage::Phase;
        const Phase phase = m_coverage.phase();
        if (phase == Phase::Stopped || phase == Phase::Failed || phase == Phase::Finished)
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

void AppResearch::showApp()
{
    const ITunesAppResult *app = m_app.state().value();
    if (app)
        m_selection.name = displayName(*app);
    Q_EMIT changed();
    if (!app)
        return;
    const auto own = m_selection.appId ? m_store.app(*m_selection.appId) : std::nullopt;
    m_coverage.start(*app, m_selection.country, own ? std::optional(own->trackId) : std::nullopt);
}

void AppResearch::startSimilar()
{
    const ITunesAppResult *app = m_app.state().value();
    if (app && m_similar.state().is<NotAsked>())
        m_similar.start(*app, m_selection.country);
}

} // namespace veltrix
