// SPDX-License-Identifier: GPL-3.0-or-later
// What an app says about itself in the store.
#include "sample/description.h"

#include "sample/dice.h"

#include <algorithm>
#include <cmath>

namespace veltrix::sample
{

namespace
{

enum class Purpose { Description = 21, ReleaseNotes };

QString filledIn(QString sentence, const QString &name, const QString &phrase)
{
    return sentence.replace(QStringLiteral("%1"), name).replace(QStringLiteral("%2"), phrase);
}

/// Cuts between characters: half of an emoji is not valid text.
QString cutTo(QString text, qsizetype length)
{
    if (text.size() <= length)
        return text;
    if (text.at(length - 1).isHighSurrogate())
        --length;
    return text.left(length);
}

} // namespace

Language listedLanguage(const SampleApp &app, Language wanted)
{
    if (app.onlyLanguage)
        return *app.onlyLanguage;
    const bool translated = app.listing(wanted).name != app.listing(Language::English).name;
    return translated ? wanted : Language::English;
}

QString descriptionOf(const SampleApp &app, Language wanted)
{
    const Listing &listing = app.listing(wanted);
    const QStringList &sentences = textsOf(listedLanguage(app, wanted)).sentences;
    Dice dice(stableHash(app.trackId, wanted, Purpose::Description));
    const bool asLongAsPossible = dice.chance(0.04);
    const qsizetype length = asLongAsPossible
                                 ? longestDescription
                                 : static_cast<qsizetype>(180 + 3'000 * std::pow(dice.unit(), 2));
    QString text = filledIn(sentences.front(), listing.name, listing.phrases.front());
    if (dice.chance(0.03))
        text += QLatin1Char('\b');
    while (text.size() < length) {
        const QString &phrase = dice.pick(listing.phrases);
        text += dice.chance(0.4) ? QStringLiteral("\n\n") : QStringLiteral("\n");
        text += filledIn(dice.pick(sentences), listing.name, phrase);
    }
    return cutTo(text, asLongAsPossible ? longestDescription : length + 400);
}

QString releaseNotesOf(const SampleApp &app, Language wanted)
{
    const Listing &listing = app.listing(wanted);
    const QStringList &sentences = textsOf(listedLanguage(app, wanted)).sentences;
    Dice dice(stableHash(app.trackId, wanted, Purpose::ReleaseNotes));
    return filledIn(sentences[1], listing.name, dice.pick(listing.phrases));
}

} // namespace veltrix::sample
