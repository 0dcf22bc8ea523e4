// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store in Japanese.
#include "sample/texts.h"

namespace veltrix::sample
{

namespace
{

constexpr LocalTheme themeTexts[] = {
    {ThemeId::Photo, u"写真加工|写真編集とコラージュ|画像編集アプリ|フィルム風カメラ",
     u"写真, 加工, 編集, 写真加工, 写真編集, 画像編集, コラージュ, 背景透過, 証明写真, フィルター, "
     u"フレーム, フィルムカメラ, レトロ, 写真日記"},
    {ThemeId::Video, u"動画編集|動画カット",
     u"動画, 編集, 動画編集, 動画カット, 字幕, スロー, 動画圧縮, 文字入れ"},
    {ThemeId::Journal, u"日記アプリ|毎日の日記|気分の記録",
     u"日記, 鍵付き, 鍵付き日記, 気分, 記録, 感謝, 写真日記, 手帳"},
    {ThemeId::Budget, u"家計簿|かんたん家計管理",
     u"家計簿, 家計管理, 予算, 支出, 節約, 貯金, お小遣い, レシート"},
    {ThemeId::Trading, u"株とオプション取引|株価チャート",
     u"株, 株価, オプション取引, 投資, 投資信託, 配当, チャート"},
    {ThemeId::Meditation, u"瞑想と睡眠|マインドフルネス",
     u"瞑想, 睡眠, 睡眠音, 呼吸, リラックス, 雨の音, ホワイトノイズ"},
    {ThemeId::PrivateNetwork, u"VPNと広告ブロック|プライベート接続",
     u"vpn, 高速vpn, 広告ブロック, パスワード管理, 安全, プライベート"},
    {ThemeId::Recipes, u"レシピと献立|お弁当レシピ",
     u"レシピ, 料理, 献立, 買い物リスト, お弁当, お菓子作り, 作り置き"},
    {ThemeId::Running, u"ランニング記録|歩数計",
     u"ランニング, ウォーキング, 歩数計, マラソン, 筋トレ, ダイエット, 登山"},
    {ThemeId::Languages, u"英語学習|単語帳",
     u"英語, 学習, 英語学習, 英会話, 単語帳, 翻訳, 辞書, 韓国語"},
    {ThemeId::Calendar, u"カレンダーと手帳|やることリスト",
     u"カレンダー, 手帳, スケジュール, 予定, タスク, リマインダー, シフト"},
    {ThemeId::Notes, u"メモ帳|書類スキャン",
     u"メモ, メモ帳, ノート, スキャン, 書類, 署名, 録音, 文字起こし"},
    {ThemeId::Weather, u"天気と雨雲レーダー|天気予報",
     u"天気, 天気予報, 雨雲, 雨雲レーダー, 台風, 花粉, 気圧"},
    {ThemeId::Puzzles, u"脳トレパズル|ことばパズル",
     u"パズル, 脳トレ, クロスワード, ナンプレ, 謎解き, 脱出ゲーム, 麻雀"},
    {ThemeId::KidsGames, u"こどもの知育|ぬりえあそび",
     u"知育, 子供, 子供向け, ぬりえ, ひらがな, 絵本, 寝かしつけ"},
    {ThemeId::Social, u"チャットと通話|ご近所さん",
     u"チャット, ビデオ通話, 通話, 友達作り, ご近所"},
    {ThemeId::Travel, u"旅行プラン|オフライン地図",
     u"旅行, 乗換, 乗換案内, 地図, 航空券, 持ち物, 為替"},
    {ThemeId::Music, u"音楽プレーヤー|チューナー",
     u"音楽, 音楽プレーヤー, チューナー, メトロノーム, ピアノ, ラジオ, カラオケ"},
};

constexpr LocalApp localApps[] = {
    {ThemeId::Photo, u"ひかりつぶ - 写真加工・フィルター"},
    {ThemeId::Photo, u"月見フィルム:レトロカメラ"},
    {ThemeId::Photo, u"証明写真たんぽぽ"},
    {ThemeId::Budget, u"どんぐり家計簿"},
    {ThemeId::Recipes, u"おたま日和:献立とレシピ"},
    {ThemeId::Journal, u"しおり雲 - 鍵付き日記"},
    {ThemeId::Calendar, u"つばめ手帳:予定とシフト"},
    {ThemeId::Travel, u"のりかえ小道"},
    {ThemeId::Weather, u"あまぐもノート 雨雲レーダー"},
    {ThemeId::Puzzles, u"ナンプレ茶屋"},
    {ThemeId::KidsGames, u"ぽんぽん山のひらがな"},
    {ThemeId::Languages, u"ことり単語帳 英語"},
    {ThemeId::Running, u"土手ラン:ランニング記録"},
};

constexpr QStringView publishers[] = {
    u"株式会社月見坂ラボ", u"どんぐり小屋合同会社", u"あまぐも製作所",
    u"株式会社つばめ小道", u"ぽんぽん山工房",
};

constexpr QStringView sentences[] = {
    u"「%2」をもっとかんたんに。%1は毎日使えるシンプルなアプリです。",
    u"・%2がすぐに使えます",
    u"会員登録は不要。広告の表示もありません。",
    u"データは端末の中だけに保存されます。",
    u"ご意見・ご要望をお待ちしています。",
    u"サブスクリプションは期間終了の24時間前までに解約しない限り自動更新されます。",
};

} // namespace

const LanguageTexts &japaneseTexts()
{
    static constexpr LanguageTexts texts{Language::Japanese, u"JP",      themeTexts,
                                         localApps,          publishers, sentences};
    return texts;
}

} // namespace veltrix::sample
