// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/storefront_markets.h"

#include <QString>

#include <array>

namespace veltrix
{

namespace
{

/// Storefront → market size relative to the United States.
constexpr StorefrontMarket markets[] = {
    {"AI", 0.0001}, {"AG", 0.0002}, {"AR", 0.03},   {"BS", 0.001},  {"BB", 0.0006}, {"BZ", 0.0006},
    {"BM", 0.0002}, {"BO", 0.0083}, {"BR", 0.18},   {"VG", 0.0001}, {"CA", 0.15},   {"KY", 0.0002},
    {"CL", 0.03},   {"CO", 0.03},   {"CR", 0.0089}, {"DM", 0.0001}, {"DO", 0.0139}, {"EC", 0.0172},
    {"SV", 0.0061}, {"GD", 0.0002}, {"GT", 0.0168}, {"GY", 0.0008}, {"HN", 0.0087}, {"JM", 0.0038},
    {"MX", 0.1},    {"MS", 0.0001}, {"NI", 0.0046}, {"PA", 0.0077}, {"PY", 0.0056}, {"PE", 0.0324},
    {"KN", 0.0001}, {"LC", 0.0003}, {"VC", 0.0002}, {"SR", 0.0006}, {"TT", 0.0026}, {"TC", 0.0001},
    {"US", 1.0},    {"UY", 0.0046}, {"VE", 0.0193}, {"AL", 0.0023}, {"AM", 0.0041}, {"AT", 0.04},
    {"AZ", 0.0104}, {"BY", 0.0075}, {"BE", 0.04},   {"BA", 0.0033}, {"BG", 0.0087}, {"HR", 0.0066},
    {"CY", 0.0027}, {"CZ", 0.0163}, {"DK", 0.04},   {"EE", 0.0029}, {"FI", 0.03},   {"FR", 0.22},
    {"GE", 0.0038}, {"DE", 0.25},   {"GR", 0.0177}, {"HU", 0.0131}, {"IS", 0.0015}, {"IE", 0.03},
    {"IT", 0.12},   {"XK", 0.0015}, {"LV", 0.0032}, {"LT", 0.0049}, {"LU", 0.0022}, {"MT", 0.0017},
    {"MD", 0.002},  {"ME", 0.0008}, {"NL", 0.07},   {"MK", 0.0018}, {"NO", 0.04},   {"PL", 0.05},
    {"PT", 0.03},   {"RO", 0.026},  {"RU", 0.12},   {"RS", 0.0081}, {"SK", 0.0081}, {"SI", 0.0036},
    {"ES", 0.1},    {"SE", 0.06},   {"CH", 0.06},   {"TR", 0.05},   {"UA", 0.0387}, {"GB", 0.3},
    {"BH", 0.0036}, {"IQ", 0.0368}, {"IL", 0.04},   {"JO", 0.0139}, {"KW", 0.0117}, {"LB", 0.0074},
    {"OM", 0.0078}, {"QA", 0.0074}, {"SA", 0.04},   {"AE", 0.04},   {"YE", 0.0117}, {"DZ", 0.0249},
    {"AO", 0.0147}, {"BJ", 0.0047}, {"BW", 0.0022}, {"BF", 0.0063}, {"CM", 0.0097}, {"CV", 0.0005},
    {"TD", 0.0037}, {"CG", 0.0021}, {"CD", 0.0208}, {"CI", 0.0118}, {"EG", 0.03},   {"SZ", 0.0007},
    {"GA", 0.0016}, {"GM", 0.0011}, {"GH", 0.02},   {"GW", 0.0006}, {"KE", 0.02},   {"LR", 0.0018},
    {"LY", 0.0047}, {"MG", 0.0082}, {"MW", 0.0057}, {"ML", 0.0063}, {"MR", 0.002},  {"MU", 0.0018},
    {"MA", 0.0307}, {"MZ", 0.0092}, {"NA", 0.0021}, {"NE", 0.0055}, {"NG", 0.03},   {"RW", 0.0048},
    {"SN", 0.0096}, {"SC", 0.0002}, {"SL", 0.0029}, {"ZA", 0.03},   {"ST", 0.0001}, {"TZ", 0.02},
    {"TN", 0.0102}, {"UG", 0.02},   {"ZM", 0.0084}, {"ZW", 0.0091}, {"AF", 0.0086}, {"BT", 0.0005},
    {"BN", 0.0011}, {"KH", 0.0139}, {"CN", 0.45},   {"HK", 0.0281}, {"IN", 0.15},   {"ID", 0.05},
    {"JP", 0.35},   {"KZ", 0.0272}, {"KG", 0.0048}, {"LA", 0.0041}, {"MO", 0.0023}, {"MY", 0.04},
    {"MV", 0.0011}, {"MN", 0.0035}, {"MM", 0.0294}, {"NP", 0.0123}, {"PK", 0.02},   {"PH", 0.04},
    {"SG", 0.04},   {"KR", 0.2},    {"LK", 0.015},  {"TW", 0.08},   {"TJ", 0.0041}, {"TH", 0.05},
    {"TM", 0.0022}, {"UZ", 0.0243}, {"VN", 0.1349}, {"AU", 0.12},   {"FJ", 0.0016}, {"FM", 0.0001},
    {"NR", 0.0001}, {"NZ", 0.03},   {"PW", 0.0001}, {"PG", 0.0056}, {"SB", 0.0004}, {"TO", 0.0001},
    {"VU", 0.0002},
};
static_assert(std::size(markets) == 175);

constexpr size_t letterCount = 26;

/// The factors by the two letters of the code, 0 where there is no storefront: an index made by the
/// compiler, so that a look-up is one read and nothing is built when the program runs.
constexpr std::array<double, letterCount * letterCount> makeIndex()
{
    std::array<double, letterCount * letterCount> index{};
    for (const StorefrontMarket &market : markets)
        index[size_t(market.code[0] - 'A') * letterCount + size_t(market.code[1] - 'A')] =
            market.factor;
    return index;
}

constexpr auto factorIndex = makeIndex();

constexpr bool isUpperCaseLetter(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

} // namespace

std::span<const StorefrontMarket> storefrontMarkets()
{
    return markets;
}

std::optional<double> storefrontMarketFactor(QStringView storefront)
{
    const QString code = storefront.toString().toUpper();
    if (code.size() != 2 || !isUpperCaseLetter(code[0]) || !isUpperCaseLetter(code[1]))
        return std::nullopt;
    const double factor = factorIndex[size_t(code[0].unicode() - u'A') * letterCount +
                                      size_t(code[1].unicode() - u'A')];
    return factor > 0 ? std::optional(factor) : std::nullopt;
}

} // namespace veltrix
