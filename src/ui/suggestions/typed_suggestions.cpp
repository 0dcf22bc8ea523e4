// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/typed_suggestions.h"

#include "ui/suggestions/suggestion_list.h"

#include <QCoreApplication>

#include <utility>

namespace veltrix
{

SuggestionsError::SuggestionsError()
    : Error(QCoreApplication::translate("Suggestions",
                                        "The service gave no answer, or the requests of the day "
                                        "are used up."))
{
}

Task<QStringList> loadedSuggestions(std::shared_ptr<AutocompleteSuggesting> source, QString text,
                                    QString country, std::stop_token stop)
{
    const std::optional<QStringList> terms = co_await source->suggest(text, country, stop);
    if (!terms)
        throw SuggestionsError();
    co_return *terms;
}

TypedSuggestions::TypedSuggestions(std::shared_ptr<AutocompleteSuggesting> source, Clock &clock,
                                   QObject *parent)
    : QObject(parent), m_source(std::move(source)), m_clock(clock)
{
    connect(&m_terms, &LoaderSignals::changed, this, &TypedSuggestions::changed);
}

void TypedSuggestions::follow(const QString &typed, const QString &country)
{
    if (typed == m_typed && country == m_country)
        return;
    m_typed = typed;
    m_country = country;
    if (!m_source || country.isEmpty() || !isWorthSuggesting(typed))
        m_terms.clear();
    else
        m_terms.ask([this, typed, country](std::stop_token stop) {
            return askSoon(typed, country, std::move(stop));
        });
}

void TypedSuggestions::settle(const QString &taken)
{
    m_typed = taken;
    m_terms.clear();
}

Task<QStringList> TypedSuggestions::askSoon(QString typed, QString country, std::stop_token stop)
{
    co_await m_clock.sleep(typingPause, stop);
    const QStringList terms = co_await loadedSuggestions(m_source, typed, country, stop);
    co_return terms;
}

} // namespace veltrix
