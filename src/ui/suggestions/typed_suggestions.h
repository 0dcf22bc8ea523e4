// SPDX-License-Identifier: GPL-3.0-or-later
// Looks for suggestions while somebody types.
#pragma once

#include "effects/autocomplete_suggesting.h"
#include "effects/clock.h"
#include "model/error.h"
#include "ui_kit/loading/loader.h"

#include <QStringList>

namespace veltrix
{

/// Suggestions could not be had.
class SuggestionsError final : public Error
{
public:
    SuggestionsError();
};

/// The suggestions for a text and a storefront. Throws SuggestionsError.
Task<QStringList> loadedSuggestions(std::shared_ptr<AutocompleteSuggesting> source, QString text,
                                    QString country, std::stop_token stop);

/// Follows a text while it is typed: asks once typing pauses, one request at a time, and forgets
/// the answer for a text that is there no longer.
class TypedSuggestions final : public QObject
{
    Q_OBJECT

public:
    /// How long typing must rest before anything is asked.
    static constexpr Seconds typingPause{0.3};

    /// Without a source nothing is ever suggested; the clock outlives this.
    TypedSuggestions(std::shared_ptr<AutocompleteSuggesting> source, Clock &clock,
                     QObject *parent = nullptr);

    /// What is typed now. The same text and storefront again change nothing; without a storefront,
    /// or for a text that is not worth it, nothing is asked.
    void follow(const QString &typed, const QString &country);
    /// The text is a suggestion that was taken: nothing is asked until it is another.
    void settle(const QString &taken);

    [[nodiscard]] const QString &typed() const { return m_typed; }
    [[nodiscard]] const Loadable<QStringList> &state() const { return m_terms.state(); }

Q_SIGNALS:
    void changed();

private:
    Task<QStringList> askSoon(QString typed, QString country, std::stop_token stop);

    std::shared_ptr<AutocompleteSuggesting> m_source;
    Clock &m_clock;
    QString m_typed;
    QString m_country;
    Loader<QStringList> m_terms;
};

} // namespace veltrix
