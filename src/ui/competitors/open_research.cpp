// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/open_research.h"

namespace veltrix
{

void OpenResearch::setApp(const std::optional<QUuid> &appId)
{
    if (appId == m_appId)
        return;
    m_appId = appId;
    if (m_page)
        open(m_page->trackId, m_page->country, m_page->name);
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
    if (m_page)
        open(m_page->trackId, country, m_page->name);
}

void OpenResearch::open(std::int64_t trackId, const QString &country, const QString &name)
{
    m_page = ResearchSelection{trackId, country, m_appId, name};
    Q_EMIT pageChanged();
}

void OpenResearch::close()
{
    if (!m_page)
        return;
    m_page.reset();
    Q_EMIT pageChanged();
}

void OpenResearch::setName(const QString &name)
{
    if (m_page)
        m_page->name = name;
}

} // namespace veltrix
