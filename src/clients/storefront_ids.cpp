// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/storefront_ids.h"

#include <algorithm>
#include <string_view>

namespace veltrix
{

namespace
{

struct Row {
    std::string_view country;
    int storefront;
    /// 0 where none is known.
    int language;
    std::string_view languageTag;
};

// clang-format off
/// In the order of the country codes.
constexpr Row rows[] = {
    {"AE", 143481, 2, "en-GB"},
    {"AG", 143540, 2, "en-GB"},
    {"AI", 143538, 2, "en-GB"},
    {"AL", 143575, 2, "en-GB"},
    {"AM", 143524, 2, "en-GB"},
    {"AO", 143564, 2, "en-GB"},
    {"AR", 143505, 28, "es-MX"},
    {"AT", 143445, 4, "de-DE"},
    {"AU", 143460, 27, "en-AU"},
    {"AZ", 143568, 2, "en-GB"},
    {"BB", 143541, 2, "en-GB"},
    {"BD", 143490, 0, ""},
    {"BE", 143446, 2, "en-GB"},
    {"BF", 143578, 2, "en-GB"},
    {"BG", 143526, 2, "en-GB"},
    {"BH", 143559, 2, "en-GB"},
    {"BJ", 143576, 2, "en-GB"},
    {"BM", 143542, 2, "en-GB"},
    {"BN", 143560, 2, "en-GB"},
    {"BO", 143556, 28, "es-MX"},
    {"BR", 143503, 15, "pt-BR"},
    {"BS", 143539, 2, "en-GB"},
    {"BT", 143577, 2, "en-GB"},
    {"BW", 143525, 2, "en-GB"},
    {"BY", 143565, 2, "en-GB"},
    {"BZ", 143555, 2, "en-GB"},
    {"CA", 143455, 6, "en-CA"},
    {"CG", 143582, 2, "en-GB"},
    {"CH", 143459, 57, "de-CH"},
    {"CI", 143527, 3, "fr-FR"},
    {"CL", 143483, 28, "es-MX"},
    {"CN", 143465, 19, "zh-Hans-CN"},
    {"CO", 143501, 28, "es-MX"},
    {"CR", 143495, 28, "es-MX"},
    {"CV", 143580, 2, "en-GB"},
    {"CY", 143557, 2, "en-GB"},
    {"CZ", 143489, 2, "en-GB"},
    {"DE", 143443, 4, "de-DE"},
    {"DK", 143458, 2, "en-GB"},
    {"DM", 143545, 2, "en-GB"},
    {"DO", 143508, 28, "es-MX"},
    {"DZ", 143563, 2, "en-GB"},
    {"EC", 143509, 28, "es-MX"},
    {"EE", 143518, 2, "en-GB"},
    {"EG", 143516, 2, "en-GB"},
    {"ES", 143454, 8, "es-ES"},
    {"FI", 143447, 2, "en-GB"},
    {"FJ", 143583, 2, "en-GB"},
    {"FM", 143591, 2, "en-GB"},
    {"FR", 143442, 3, "fr-FR"},
    {"GB", 143444, 2, "en-GB"},
    {"GD", 143546, 2, "en-GB"},
    {"GE", 143615, 2, "en-GB"},
    {"GH", 143573, 2, "en-GB"},
    {"GM", 143584, 2, "en-GB"},
    {"GR", 143448, 2, "en-GB"},
    {"GT", 143504, 28, "es-MX"},
    {"GW", 143585, 2, "en-GB"},
    {"GY", 143553, 2, "en-GB"},
    {"HK", 143463, 45, "zh-Hant-HK"},
    {"HN", 143510, 28, "es-MX"},
    {"HR", 143494, 2, "en-GB"},
    {"HU", 143482, 2, "en-GB"},
    {"ID", 143476, 2, "en-GB"},
    {"IE", 143449, 2, "en-GB"},
    {"IL", 143491, 2, "en-GB"},
    {"IN", 143467, 2, "en-GB"},
    {"IS", 143558, 2, "en-GB"},
    {"IT", 143450, 7, "it"},
    {"JM", 143511, 2, "en-GB"},
    {"JO", 143528, 2, "en-GB"},
    {"JP", 143462, 9, "ja"},
    {"KE", 143529, 2, "en-GB"},
    {"KG", 143586, 2, "en-GB"},
    {"KH", 143579, 2, "en-GB"},
    {"KN", 143548, 2, "en-GB"},
    {"KR", 143466, 13, "ko"},
    {"KW", 143493, 2, "en-GB"},
    {"KY", 143544, 2, "en-GB"},
    {"KZ", 143517, 2, "en-GB"},
    {"LA", 143587, 2, "en-GB"},
    {"LB", 143497, 2, "en-GB"},
    {"LC", 143549, 2, "en-GB"},
    {"LI", 143522, 0, ""},
    {"LK", 143486, 2, "en-GB"},
    {"LR", 143588, 2, "en-GB"},
    {"LT", 143520, 2, "en-GB"},
    {"LU", 143451, 2, "en-GB"},
    {"LV", 143519, 2, "en-GB"},
    {"MD", 143523, 2, "en-GB"},
    {"MG", 143531, 2, "en-GB"},
    {"MK", 143530, 2, "en-GB"},
    {"ML", 143532, 2, "en-GB"},
    {"MN", 143592, 2, "en-GB"},
    {"MO", 143515, 45, "zh-Hant-HK"},
    {"MR", 143590, 2, "en-GB"},
    {"MS", 143547, 2, "en-GB"},
    {"MT", 143521, 2, "en-GB"},
    {"MU", 143533, 2, "en-GB"},
    {"MV", 143488, 2, "en-GB"},
    {"MW", 143589, 2, "en-GB"},
    {"MX", 143468, 28, "es-MX"},
    {"MY", 143473, 2, "en-GB"},
    {"MZ", 143593, 2, "en-GB"},
    {"NA", 143594, 2, "en-GB"},
    {"NE", 143534, 2, "en-GB"},
    {"NG", 143561, 2, "en-GB"},
    {"NI", 143512, 28, "es-MX"},
    {"NL", 143452, 10, "nl"},
    {"NO", 143457, 2, "en-GB"},
    {"NP", 143484, 2, "en-GB"},
    {"NZ", 143461, 27, "en-AU"},
    {"OM", 143562, 2, "en-GB"},
    {"PA", 143485, 28, "es-MX"},
    {"PE", 143507, 28, "es-MX"},
    {"PG", 143597, 2, "en-GB"},
    {"PH", 143474, 2, "en-GB"},
    {"PK", 143477, 2, "en-GB"},
    {"PL", 143478, 2, "en-GB"},
    {"PT", 143453, 24, "pt-PT"},
    {"PW", 143595, 2, "en-GB"},
    {"PY", 143513, 28, "es-MX"},
    {"QA", 143498, 2, "en-GB"},
    {"RO", 143487, 2, "en-GB"},
    {"RS", 143500, 2, "en-GB"},
    {"RU", 143469, 16, "ru"},
    {"SA", 143479, 2, "en-GB"},
    {"SB", 143601, 2, "en-GB"},
    {"SC", 143599, 2, "en-GB"},
    {"SE", 143456, 17, "sv"},
    {"SG", 143464, 19, "en-GB"},
    {"SI", 143499, 2, "en-GB"},
    {"SK", 143496, 2, "en-GB"},
    {"SL", 143600, 2, "en-GB"},
    {"SN", 143535, 2, "en-GB"},
    {"SR", 143554, 2, "en-GB"},
    {"ST", 143598, 2, "en-GB"},
    {"SV", 143506, 28, "es-MX"},
    {"SZ", 143602, 2, "en-GB"},
    {"TC", 143552, 2, "en-GB"},
    {"TD", 143581, 2, "en-GB"},
    {"TH", 143475, 2, "en-GB"},
    {"TJ", 143603, 2, "en-GB"},
    {"TM", 143604, 2, "en-GB"},
    {"TN", 143536, 2, "en-GB"},
    {"TR", 143480, 2, "en-GB"},
    {"TT", 143551, 2, "en-GB"},
    {"TW", 143470, 18, "zh-Hant-TW"},
    {"TZ", 143572, 2, "en-GB"},
    {"UA", 143492, 2, "en-GB"},
    {"UG", 143537, 2, "en-GB"},
    {"US", 143441, 1, "en-US"},
    {"UY", 143514, 2, "en-GB"},
    {"UZ", 143566, 2, "en-GB"},
    {"VC", 143550, 2, "en-GB"},
    {"VE", 143502, 28, "es-MX"},
    {"VG", 143543, 2, "en-GB"},
    {"VN", 143471, 2, "en-GB"},
    {"YE", 143571, 2, "en-GB"},
    {"ZA", 143472, 2, "en-GB"},
    {"ZW", 143605, 2, "en-GB"},
};
// clang-format on

static_assert(std::ranges::is_sorted(rows, std::ranges::less(), &Row::country));

QString textOf(std::string_view text)
{
    return QString::fromLatin1(text.data(), qsizetype(text.size()));
}

} // namespace

QString StorefrontId::header() const
{
    const QString store = languageId ? QStringLiteral("%1-%2").arg(storefrontId).arg(*languageId)
                                     : QString::number(storefrontId);
    // 29 asks for the answer that a phone gets.
    return store + QStringLiteral(",29");
}

std::optional<StorefrontId> storefrontIdOf(const QString &country)
{
    const QByteArray code = country.toUpper().toLatin1();
    const std::string_view wanted(code.constData(), size_t(code.size()));
    const auto *row = std::ranges::lower_bound(rows, wanted, std::ranges::less(), &Row::country);
    if (row == std::end(rows) || row->country != wanted)
        return std::nullopt;
    StorefrontId id;
    id.storefrontId = row->storefront;
    if (row->language != 0)
        id.languageId = row->language;
    id.language = textOf(row->languageTag);
    return id;
}

} // namespace veltrix
