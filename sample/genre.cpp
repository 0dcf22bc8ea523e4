// SPDX-License-Identifier: GPL-3.0-or-later
// The categories of the App Store.
#include "sample/genre.h"

#include <array>
#include <cstddef>

namespace veltrix::sample
{

namespace
{

struct GenreEntry {
    Genre genre;
    int id;
    /// In the order of Language.
    std::array<QStringView, languageCount> names;
};

constexpr std::array<GenreEntry, genreCount> entries{{
    {Genre::Business,
     6000,
     {u"Business", u"Wirtschaft", u"Économie et entreprise", u"Empresa", u"Negócios", u"ビジネス",
      u"비즈니스", u"ธุรกิจ", u"أعمال", u"Бизнес"}},
    {Genre::Education,
     6017,
     {u"Education", u"Bildung", u"Éducation", u"Educación", u"Educação", u"教育", u"교육",
      u"การศึกษา", u"تعليم", u"Образование"}},
    {Genre::Finance,
     6015,
     {u"Finance", u"Finanzen", u"Finance", u"Finanzas", u"Finanças", u"ファイナンス", u"금융",
      u"การเงิน", u"المال", u"Финансы"}},
    {Genre::FoodAndDrink,
     6023,
     {u"Food & Drink", u"Essen und Trinken", u"Cuisine et boissons", u"Comida y bebidas",
      u"Comer e beber", u"フード/ドリンク", u"음식 및 음료", u"อาหารและเครื่องดื่ม",
      u"مأكولات ومشروبات", u"Еда и напитки"}},
    {Genre::Games,
     6014,
     {u"Games", u"Spiele", u"Jeux", u"Juegos", u"Jogos", u"ゲーム", u"게임", u"เกม", u"ألعاب",
      u"Игры"}},
    {Genre::HealthAndFitness,
     6013,
     {u"Health & Fitness", u"Gesundheit und Fitness", u"Forme et santé", u"Salud y forma física",
      u"Saúde e fitness", u"ヘルスケア/フィットネス", u"건강 및 피트니스", u"สุขภาพและฟิตเนส",
      u"صحة ولياقة", u"Здоровье и фитнес"}},
    {Genre::Lifestyle,
     6012,
     {u"Lifestyle", u"Lifestyle", u"Style de vie", u"Estilo de vida", u"Estilo de vida",
      u"ライフスタイル", u"라이프 스타일", u"ไลฟ์สไตล์", u"نمط حياة", u"Стиль жизни"}},
    {Genre::Music,
     6011,
     {u"Music", u"Musik", u"Musique", u"Música", u"Música", u"ミュージック", u"음악", u"เพลง",
      u"موسيقى", u"Музыка"}},
    {Genre::PhotoAndVideo,
     6008,
     {u"Photo & Video", u"Foto und Video", u"Photo et vidéo", u"Foto y vídeo", u"Foto e vídeo",
      u"写真/ビデオ", u"사진 및 비디오", u"รูปภาพและวิดีโอ", u"صور وفيديو", u"Фото и видео"}},
    {Genre::Productivity,
     6007,
     {u"Productivity", u"Produktivität", u"Productivité", u"Productividad", u"Produtividade",
      u"仕事効率化", u"생산성", u"ผลิตภาพ", u"إنتاجية", u"Производительность"}},
    {Genre::SocialNetworking,
     6005,
     {u"Social Networking", u"Soziale Netze", u"Réseaux sociaux", u"Redes sociales",
      u"Redes sociais", u"ソーシャルネットワーキング", u"소셜 네트워킹", u"เครือข่ายสังคม",
      u"شبكات اجتماعية", u"Социальные сети"}},
    {Genre::Travel,
     6003,
     {u"Travel", u"Reisen", u"Voyages", u"Viajes", u"Viagens", u"旅行", u"여행", u"ท่องเที่ยว", u"سفر",
      u"Путешествия"}},
    {Genre::Utilities,
     6002,
     {u"Utilities", u"Dienstprogramme", u"Utilitaires", u"Utilidades", u"Utilitários",
      u"ユーティリティ", u"유틸리티", u"ยูทิลิตี้", u"أدوات", u"Утилиты"}},
    {Genre::Weather,
     6001,
     {u"Weather", u"Wetter", u"Météo", u"Meteorología", u"Meteorologia", u"天気", u"날씨",
      u"สภาพอากาศ", u"طقس", u"Погода"}},
}};

constexpr bool followsTheEnumeration()
{
    for (std::size_t index = 0; index < entries.size(); ++index)
        if (static_cast<std::size_t>(entries[index].genre) != index)
            return false;
    return true;
}
static_assert(followsTheEnumeration());

const GenreEntry &entryOf(Genre genre)
{
    return entries[static_cast<std::size_t>(genre)];
}

} // namespace

int genreId(Genre genre)
{
    return entryOf(genre).id;
}

QStringView genreName(Genre genre, Language language)
{
    return entryOf(genre).names[static_cast<std::size_t>(language)];
}

} // namespace veltrix::sample
