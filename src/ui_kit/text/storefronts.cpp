// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/storefronts.h"

#include "model/text_folding.h"
#include "ui_kit/text/icu_text.h"

#include <QHash>

namespace veltrix
{

namespace
{

/// Storefronts by their folded names in English and in the language of `locale`.
QHash<QString, QString> codesByName(const QLocale &locale)
{
    QHash<QString, QString> codes{{QStringLiteral("hong kong"), QStringLiteral("HK")},
                                  {QStringLiteral("czech republic"), QStringLiteral("CZ")},
                                  {QStringLiteral("turkey"), QStringLiteral("TR")}};
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    for (const QString &code : storefrontCodes()) {
        codes.insert(foldedForSearch(storefrontName(code, english)), code);
        codes.insert(foldedForSearch(storefrontName(code, locale)), code);
    }
    return codes;
}

} // namespace

QString storefrontName(const QString &code, const QLocale &locale)
{
    // Lists ask for the same few names again and again.
    static QHash<QString, QString> names;
    const QString key = locale.bcp47Name() + u'/' + code;
    const auto known = names.constFind(key);
    if (known != names.constEnd())
        return *known;

    icu::UnicodeString name;
    const QByteArray region = code.toUpper().toLatin1();
    icu::Locale("", region.constData()).getDisplayCountry(icuLocale(locale), name);
    const QString text = fromIcu(name);
    return *names.insert(key, text.isEmpty() ? code : text);
}

std::optional<QString> storefrontNamed(const QString &text, const QLocale &locale)
{
    const QString name = text.simplified();
    if (isStorefrontCode(name))
        return name.toUpper();
    static QHash<QString, QHash<QString, QString>> codesByLocale;
    const QString language = locale.bcp47Name();
    if (!codesByLocale.contains(language))
        codesByLocale.insert(language, codesByName(locale));
    const QString code = codesByLocale.constFind(language)->value(foldedForSearch(name));
    return code.isEmpty() ? std::nullopt : std::optional(code);
}

} // namespace veltrix
