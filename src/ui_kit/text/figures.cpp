// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/figures.h"

#include <optional>

namespace veltrix
{

namespace
{

/// The user's locale where it is not QLocale(). As global as QLocale::setDefault() is.
std::optional<QLocale> &ownWords()
{
    static std::optional<QLocale> locale;
    return locale;
}

} // namespace

void setUserLocale(const QLocale &user)
{
    const bool hasPlainDigits = user.zeroDigit() == u"0";
    ownWords() = hasPlainDigits ? std::nullopt : std::optional(user);
    QLocale::setDefault(hasPlainDigits ? user : QLocale(QLocale::English, QLocale::UnitedStates));
}

QLocale wordLocale()
{
    return ownWords().value_or(QLocale());
}

QString withPlainDigits(const QString &text)
{
    QString plain;
    plain.reserve(text.size());
    for (const char32_t c : text.toUcs4()) {
        if (QChar::category(c) == QChar::Number_DecimalDigit)
            plain += QChar(u'0' + QChar::digitValue(c));
        else
            plain += QChar::fromUcs4(c);
    }
    return plain;
}

} // namespace veltrix
