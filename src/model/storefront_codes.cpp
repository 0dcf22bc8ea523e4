// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/storefront_codes.h"

#include <QSet>

namespace veltrix
{

const QStringList &storefrontCodes()
{
    static const QStringList codes =
        QStringLiteral("US GB CA AU DE FR IT ES NL SE NO DK FI IE CH AT BE PT PL CZ HU RO GR TR BR "
                       "MX AR CL CO PE JP KR CN HK TW SG MY TH PH VN ID IN AE SA IL ZA NZ")
            .split(u' ');
    return codes;
}

bool isStorefrontCode(const QString &code)
{
    static const QSet<QString> codes(storefrontCodes().begin(), storefrontCodes().end());
    return codes.contains(code.toUpper());
}

} // namespace veltrix
