// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/keyword_admission.h"

namespace veltrix
{

namespace
{

/// Characters of a keyword that a message quotes.
constexpr qsizetype longestQuotation = 24;

} // namespace

QString refusalReason(KeywordRefusal refusal, const QString &country)
{
    switch (refusal) {
    case KeywordRefusal::Empty:
        return QStringLiteral("no text");
    case KeywordRefusal::TooLong:
        return QStringLiteral("longer than %1 characters").arg(longestKeyword);
    case KeywordRefusal::ControlCharacter:
        return QStringLiteral("contains a control character");
    case KeywordRefusal::UnknownStorefront:
        return country.trimmed().isEmpty()
                   ? QStringLiteral("no storefront")
                   : QStringLiteral("%1 is not a supported storefront").arg(quotedKeyword(country));
    }
    Q_UNREACHABLE();
}

QString appGoneReason()
{
    return QStringLiteral("its app is no longer tracked");
}

QString unmeasurableSentence(const QString &keyword, const QString &reason)
{
    return QStringLiteral("%1 cannot be measured: %2.").arg(quotedKeyword(keyword), reason);
}

QString quotedKeyword(const QString &text)
{
    QString shown;
    qsizetype characters = 0;
    bool isRightToLeft = false;
    // By characters rather than code units, so that none is cut in half.
    for (const char32_t c : text.trimmed().toUcs4()) {
        if (++characters > longestQuotation) {
            shown += u'…';
            break;
        }
        const QChar::Direction direction = QChar::direction(c);
        isRightToLeft |= direction == QChar::DirR || direction == QChar::DirAL;
        shown += QChar::category(c) == QChar::Other_Control ? QStringView(u"\uFFFD").toString()
                                                            : QString::fromUcs4(&c, 1);
    }
    // Isolated, it does not turn what stands around it.
    if (isRightToLeft)
        shown = u'\u2068' + shown + u'\u2069';
    return u'“' + shown + u'”';
}

} // namespace veltrix
