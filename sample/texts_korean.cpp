// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store in Korean.
#include "sample/texts.h"

namespace veltrix::sample
{

namespace
{

constexpr LocalTheme themeTexts[] = {
    {ThemeId::Photo, u"사진 편집|사진 보정과 콜라주|필름 카메라|사진 꾸미기",
     u"사진 편집, 사진 보정, 사진 합치기, 콜라주, 배경 제거, 증명사진, 필터, 필름 카메라, 레트로, "
     u"사진 일기"},
    {ThemeId::Video, u"동영상 편집|영상 자르기",
     u"동영상 편집, 영상 자르기, 자막, 슬로우 모션, 영상 압축"},
    {ThemeId::Journal, u"일기장|감정 일기",
     u"일기, 일기장, 비밀 일기, 감정 기록, 감사 일기, 다이어리"},
    {ThemeId::Budget, u"가계부|지출 관리", u"가계부, 지출 관리, 예산, 용돈 기입장, 저축, 돈 관리"},
    {ThemeId::Trading, u"주식과 옵션|증권 시세", u"주식, 옵션 거래, 증권, 투자, 배당, 시세"},
    {ThemeId::Meditation, u"명상과 수면|마음 챙김",
     u"명상, 수면, 수면 음악, 호흡, 백색 소음, 빗소리"},
    {ThemeId::PrivateNetwork, u"VPN과 보안|사설 네트워크",
     u"vpn, 빠른 vpn, 광고 차단, 비밀번호 관리, 보안 와이파이"},
    {ThemeId::Recipes, u"레시피와 식단|집밥 요리", u"레시피, 요리, 식단, 장보기, 베이킹, 도시락"},
    {ThemeId::Running, u"러닝 기록|만보기", u"러닝, 달리기, 만보기, 걷기, 마라톤, 홈트, 다이어트"},
    {ThemeId::Languages, u"영어 공부|단어장",
     u"영어 공부, 영어 회화, 단어장, 번역기, 사전, 일본어"},
    {ThemeId::Calendar, u"캘린더와 일정|할 일", u"캘린더, 달력, 일정, 플래너, 할 일, 알림, 근무표"},
    {ThemeId::Notes, u"메모장|문서 스캔", u"메모, 메모장, 노트, 문서 스캔, 서명, 녹음, 필기"},
    {ThemeId::Weather, u"날씨와 미세먼지|비 예보",
     u"날씨, 일기예보, 미세먼지, 비 예보, 태풍, 바람"},
    {ThemeId::Puzzles, u"두뇌 퍼즐|낱말 퍼즐", u"퍼즐, 두뇌 게임, 낱말 퍼즐, 스도쿠, 방탈출, 마작"},
    {ThemeId::KidsGames, u"어린이 놀이|색칠 공부",
     u"유아 게임, 어린이, 색칠 공부, 한글 놀이, 동화"},
    {ThemeId::Social, u"채팅과 영상 통화|동네 친구", u"채팅, 영상 통화, 동네, 친구 만들기"},
    {ThemeId::Travel, u"여행 계획|오프라인 지도", u"여행, 항공권, 지도, 지하철, 환율, 짐 싸기"},
    {ThemeId::Music, u"음악 플레이어|기타 튜너",
     u"음악, 기타 튜너, 메트로놈, 피아노, 라디오, 노래방"},
};

constexpr LocalApp localApps[] = {
    {ThemeId::Photo, u"달빛보정 - 사진 편집"},
    {ThemeId::Photo, u"솜사탕필름: 레트로 카메라"},
    {ThemeId::Photo, u"반듯증명 - 증명사진 만들기"},
    {ThemeId::Budget, u"도토리가계부: 지출 관리"},
    {ThemeId::Recipes, u"국자집 - 집밥 레시피"},
    {ThemeId::Journal, u"자정의서랍: 비밀 일기"},
    {ThemeId::Running, u"새벽걸음 만보기"},
    {ThemeId::Weather, u"뭉게알리미 - 날씨와 미세먼지"},
    {ThemeId::Calendar, u"제비달력: 일정과 근무표"},
    {ThemeId::Puzzles, u"낱말방앗간"},
    {ThemeId::Languages, u"참새영어 단어장"},
};

constexpr QStringView publishers[] = {
    u"달빛고개 주식회사",   u"도토리상회",      u"(주)뭉게언덕",
    u"자정의서랍 스튜디오", u"제비마루 소프트",
};

constexpr QStringView sentences[] = {
    u"%1: ‘%2’ 필요할 때 바로 쓰는 앱입니다.",
    u"• %2 기능을 빠르고 쉽게",
    u"회원 가입도, 방해되는 광고도 없습니다.",
    u"데이터는 기기 안에만 저장됩니다.",
    u"의견을 보내 주세요. 모두 읽고 답장합니다!",
    u"구독은 만료 24시간 전에 해지하지 않으면 자동으로 갱신됩니다.",
};

} // namespace

const LanguageTexts &koreanTexts()
{
    static constexpr LanguageTexts texts{Language::Korean, u"KR",      themeTexts,
                                         localApps,        publishers, sentences};
    return texts;
}

} // namespace veltrix::sample
