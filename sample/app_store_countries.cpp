// SPDX-License-Identifier: GPL-3.0-or-later
// The countries that have an App Store.
#include "sample/app_store_countries.h"

namespace veltrix::sample
{

namespace
{

constexpr QStringView codes = u"AE AG AI AL AM AO AR AT AU AZ BB BD BE BF BG BH BJ BM BN BO BR BS "
                              u"BT BW BY BZ CA CG CH CI CL CN CO CR CV CY CZ DE DK DM DO DZ EC EE "
                              u"EG ES FI FJ FM FR GB GD GE GH GM GR GT GW GY HK HN HR HU ID IE IL "
                              u"IN IS IT JM JO JP KE KG KH KN KR KW KY KZ LA LB LC LI LK LR LT LU "
                              u"LV MD MG MK ML MN MO MR MS MT MU MV MW MX MY MZ NA NE NG NI NL NO "
                              u"NP NZ OM PA PE PG PH PK PL PT PW PY QA RO RS RU SA SB SC SE SG SI "
                              u"SK SL SN SR ST SV SZ TC TD TH TJ TM TN TR TT TW TZ UA UG US UY UZ "
                              u"VC VE VG VN YE ZA ZW";

} // namespace

bool hasAppStore(QStringView country)
{
    return country.size() == 2 && !country.contains(u' ') && codes.contains(country);
}

} // namespace veltrix::sample
