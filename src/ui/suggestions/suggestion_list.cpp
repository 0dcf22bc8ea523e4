// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/suggestion_list.h"

#include "model/keyword_rule.h"
#include "model/storefront_codes.h"
#include "model/text_folding.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>
#include <QSet>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Suggestions)
};

/// A character of these is a word, or the most of one.
bool isWord(char32_t character)
{
    switch (QChar::script(character)) {
    case QChar::Script_Han:
    case QChar::Script_Hangul:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
        return true;
    default:
        return false;
    }
}

/// A field of keywords would part it, or the store refuses it.
bool isUsable(const QString &term)
{
    return !term.contains(u',') && !keywordRefusal(term, storefrontCodes().constFirst());
}

} // namespace

bool isWorthSuggesting(const QString &typed)
{
    const QList<uint> characters = typed.trimmed().toUcs4();
    if (characters.isEmpty() || characters.size() > longestKeyword)
        return false;
    return characters.size() > 1 || isWord(characters.constFirst());
}

QList<Suggestion> offeredSuggestions(const QStringList &terms, const QString &typed,
                                     const std::function<bool(const QString &)> &isTracked,
                                     qsizetype most)
{
    QList<Suggestion> offered;
    QSet<QString> seen{foldedCase(typed.trimmed())};
    for (const QString &term : terms) {
        if (offered.size() == most)
            break;
        const QString text = term.trimmed();
        const QString folded = foldedCase(text);
        if (!isUsable(text) || seen.contains(folded))
            continue;
        seen.insert(folded);
        offered.append({text, isTracked(text)});
    }
    return offered;
}

QString suggestionsHeading(const QString &typed)
{
    return Texts::tr("Suggestions for “%1”").arg(inSentence(typed));
}

QString noSuggestions(const QString &typed)
{
    return Texts::tr("No suggestions for “%1”").arg(inSentence(typed));
}

QString suggestionsFailed()
{
    return Texts::tr("Suggestions couldn't be loaded.");
}

QString spokenSuggestion(const Suggestion &suggestion, qsizetype number, qsizetype count)
{
    const QString text =
        Texts::tr("%1, suggestion %2 of %3")
            .arg(inSentence(suggestion.term), QString::number(number), QString::number(count));
    return suggestion.isTracked ? text + Texts::tr(", tracked") : text;
}

} // namespace veltrix
