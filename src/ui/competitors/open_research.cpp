// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/open_research.h"

namespace veltrix
{

void OpenResearch::setApp(const std::optional<QUuid> &appId)
{
    if (appId == m_appId)
        return;
    m_appId = appId;
    Q_EMIT appChanged();
}

void OpenResearch::setCountry(const QString &country)
{
    if (country == m_country)
        return;
    m_country = country;
    Q_EMIT countryChanged();
}

void OpenResearch::pickCountry(const QString &country)
{
    setCountry(country);
    if (m_pages.isEmpty() || m_pages.back().about.country == country)
        return;
    const ResearchSelection about = m_pages.takeLast().about;
    open(about.trackId, country, about.name);
}

void OpenResearch::open(std::int64_t trackId, const QString &country, const QString &name)
{
    m_pages.append({++m_lastId, {trackId, country, name}});
    if (m_pages.size() > mostPages)
        m_pages.removeFirst();
    Q_EMIT pageChanged();
}

void OpenResearch::back()
{
    if (m_pages.isEmpty())
        return;
    m_pages.removeLast();
    Q_EMIT pageChanged();
}

void OpenResearch::close()
{
    if (m_pages.isEmpty())
        return;
    m_pages.clear();
    Q_EMIT pageChanged();
}

void OpenResearch::setName(int id, const QString &name)
{
    for (Page &page : m_pages) {
        if (page.id == id)
            page.about.name = name;
    }
}

} // namespace veltrix
