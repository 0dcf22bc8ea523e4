// SPDX-License-Identifier: GPL-3.0-or-later
// The 161 storefronts of the App Store, as two-letter country codes.

const codes = `
  AE AG AI AL AM AO AR AT AU AZ BB BD BE BF BG BH BJ BM BN BO BR BS BT BW BY BZ CA CG CH CI CL CN
  CO CR CV CY CZ DE DK DM DO DZ EC EE EG ES FI FJ FM FR GB GD GE GH GM GR GT GW GY HK HN HR HU ID
  IE IL IN IS IT JM JO JP KE KG KH KN KR KW KY KZ LA LB LC LI LK LR LT LU LV MD MG MK ML MN MO MR
  MS MT MU MV MW MX MY MZ NA NE NG NI NL NO NP NZ OM PA PE PG PH PK PL PT PW PY QA RO RS RU SA SB
  SC SE SG SI SK SL SN SR ST SV SZ TC TD TH TJ TM TN TR TT TW TZ UA UG US UY UZ VC VE VG VN YE ZA
  ZW
`;

export const storefronts: ReadonlySet<string> = new Set(codes.trim().split(/\s+/));
