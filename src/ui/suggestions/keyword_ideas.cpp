// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/keyword_ideas.h"

#include "model/text_folding.h"
#include "scoring/app_keyword_check.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>

#include <algorithm>
#include <tuple>
#include <utility>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeywordIdeas)
};

constexpr int pointsOfPlace[] = {3, 2, 1};
constexpr int pointsOfFurtherRival = 2;
constexpr int mostOfFurtherRivals = 6;
constexpr int pointsOfSuggestion = 3;
constexpr int pointsOfRanking = 2;

/// The phrases of one text of a listing.
QStringList phrasesOf(const QString &text)
{
    ITunesAppResult alone;
    alone.trackName = text;
    return keywordPhrases(alone);
}

/// Whether a word could go on over that edge: scripts without spaces have no edges to look for.
bool goesOn(QChar last, QChar next)
{
    const QChar::Script script = last.script();
    const bool hasSpaces = script != QChar::Script_Han && script != QChar::Script_Hiragana &&
                           script != QChar::Script_Katakana && script != QChar::Script_Hangul;
    return hasSpaces && last.isLetterOrNumber() && next.isLetterOrNumber();
}

/// Whether a text says a phrase in whole words; both are folded.
bool says(const QString &text, const QString &phrase)
{
    for (qsizetype at = text.indexOf(phrase); at >= 0 && !phrase.isEmpty();
         at = text.indexOf(phrase, at + 1)) {
        const qsizetype end = at + phrase.size();
        const bool isCutAtBegin = at > 0 && goesOn(phrase.front(), text[at - 1]);
        const bool isCutAtEnd = end < text.size() && goesOn(phrase.back(), text[end]);
        if (!isCutAtBegin && !isCutAtEnd)
            return true;
    }
    return false;
}

/// The ideas as they are found, each once.
class Finding
{
public:
    void add(const QString &phrase, const RivalListing &rival, IdeaPlace place)
    {
        const IdeaKey key{foldedCase(phrase), rival.country};
        const auto known = m_places.constFind(key);
        if (known == m_places.constEnd()) {
            m_places.insert(key, m_ideas.size());
            m_ideas.append({phrase, rival.country, place, {rival.name}, false, std::nullopt});
            return;
        }
        // Places come in their order, so the first that was found is the most telling one.
        QStringList &rivals = m_ideas[*known].rivals;
        if (!rivals.contains(rival.name))
            rivals.append(rival.name);
    }
    /// What descriptions say of the ideas that there are, and of what the App Store suggests.
    void addDescriptions(const QList<RivalListing> &listings, const QSet<IdeaKey> &suggested)
    {
        QHash<IdeaKey, QString> phrases;
        for (const IdeaKey &key : suggested)
            phrases.insert(key, key.phrase);
        for (const KeywordIdea &idea : std::as_const(m_ideas)) {
            // Single words of a description are any words.
            if (idea.phrase.contains(u' '))
                phrases.insert({foldedCase(idea.phrase), idea.country}, idea.phrase);
        }
        // Sets have no order, and the ideas have one.
        QList<IdeaKey> keys = phrases.keys();
        std::sort(keys.begin(), keys.end(), [](const IdeaKey &a, const IdeaKey &b) {
            return std::tie(a.country, a.phrase) < std::tie(b.country, b.phrase);
        });
        for (const RivalListing &rival : listings) {
            const QString said = foldedCase(rival.listing.description.value_or(QString()));
            for (const IdeaKey &key : std::as_const(keys)) {
                if (key.country == rival.country && says(said, key.phrase))
                    add(phrases.value(key), rival, IdeaPlace::Description);
            }
        }
    }
    [[nodiscard]] QList<KeywordIdea> take() { return std::move(m_ideas); }

private:
    QList<KeywordIdea> m_ideas;
    QHash<IdeaKey, qsizetype> m_places;
};

QString namesOf(const QStringList &rivals)
{
    const QString first = inSentence(rivals.value(0));
    return rivals.size() < 2
               ? first
               : Texts::tr("%1 and %2 more").arg(first, QString::number(rivals.size() - 1));
}

QString placeText(const KeywordIdea &idea)
{
    const QString names = namesOf(idea.rivals);
    switch (idea.place) {
    case IdeaPlace::Title:
        return Texts::tr("In the title of %1").arg(names);
    case IdeaPlace::Subtitle:
        return Texts::tr("In the subtitle of %1").arg(names);
    case IdeaPlace::Description:
        return Texts::tr("In the description of %1").arg(names);
    }
    Q_UNREACHABLE();
}

} // namespace

int KeywordIdea::points() const
{
    const int further = int(std::min<qsizetype>(rivals.size(), mostOfFurtherRivals)) - 1;
    return pointsOfPlace[int(place)] +
           std::clamp(further * pointsOfFurtherRival, 0, mostOfFurtherRivals) +
           (isSuggested ? pointsOfSuggestion : 0) +
           (ranking && !ranking->isEmpty() ? pointsOfRanking : 0);
}

QList<KeywordIdea>
keywordIdeas(const QList<RivalListing> &listings, const IdeaEvidence &evidence,
             const std::function<bool(const QString &, const QString &)> &isTracked, qsizetype most)
{
    Finding finding;
    for (const RivalListing &rival : listings) {
        for (const QString &phrase : phrasesOf(rival.listing.trackName.value_or(rival.name)))
            finding.add(phrase, rival, IdeaPlace::Title);
    }
    for (const RivalListing &rival : listings) {
        for (const QString &phrase : phrasesOf(rival.listing.subtitle.value_or(QString())))
            finding.add(phrase, rival, IdeaPlace::Subtitle);
    }
    finding.addDescriptions(listings, evidence.suggested);
    QList<KeywordIdea> ideas = finding.take();
    ideas.removeIf(
        [&isTracked](const KeywordIdea &idea) { return isTracked(idea.phrase, idea.country); });
    for (KeywordIdea &idea : ideas) {
        const IdeaKey key{foldedCase(idea.phrase), idea.country};
        idea.isSuggested = evidence.suggested.contains(key);
        if (const auto ranking = evidence.ranking.constFind(key);
            ranking != evidence.ranking.constEnd())
            idea.ranking = *ranking;
    }
    std::stable_sort(ideas.begin(), ideas.end(), [](const KeywordIdea &a, const KeywordIdea &b) {
        return a.points() > b.points();
    });
    return ideas.mid(0, most);
}

QString ideaReasons(const KeywordIdea &idea)
{
    QStringList reasons{placeText(idea)};
    if (idea.isSuggested)
        reasons << Texts::tr("suggested by the App Store");
    if (idea.ranking)
        reasons << (idea.ranking->isEmpty()
                        ? Texts::tr("none of them ranks for it")
                        : Texts::tr("%1 ranks for it").arg(namesOf(*idea.ranking)));
    return reasons.join(QStringLiteral(" · "));
}

} // namespace veltrix
