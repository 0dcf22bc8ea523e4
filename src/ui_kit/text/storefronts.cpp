// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/storefronts.h"

#include "ui_kit/text/icu_text.h"

#include <QHash>

namespace veltrix
{

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

} // namespace veltrix
