// SPDX-License-Identifier: GPL-3.0-or-later
// Games, talk, music and the weather.
#include "sample/themes_english.h"

namespace veltrix::sample
{

namespace
{

constexpr QStringView puzzlesNames[] = {
    u"{}: Word Puzzle Game",
    u"Block Puzzle – {}",
    u"{} Sudoku Classic",
    u"Jigsaw Puzzles: {}",
    u"{}: Match 3 Garden",
    u"Crossword Daily: {}",
    u"{} Solitaire",
    u"Water Sort Puzzle – {}",
    u"{}: Brain Training Games",
    u"Nonogram: {} Picture Cross",
    u"{} Mahjong Tiles",
    u"Word Search: {}",
    u"{}: Logic Riddles",
    u"Number Merge: {}",
    u"{} Chess Puzzles",
    u"Color by Number: {}",
    u"{}: Escape Room Mystery",
    u"Hidden Objects – {} Manor",
};

constexpr QStringView puzzlesTopics[] = {
    u"puzzle, puzzle games, block puzzle, brain games",
    u"word puzzle, crossword, word search, word game",
    u"sudoku, nonogram, logic, riddles, number puzzle",
    u"jigsaw, jigsaw puzzles, photo puzzle, color by number",
    u"match 3, merge, sort puzzle, relaxing",
    u"solitaire, mahjong, chess, card game, board game",
    u"escape room, hidden objects, mystery",
};

constexpr QStringView kidsNames[] = {
    u"{}: Kids Learning Games",    u"Coloring Book for Kids: {}", u"{} Toddler Puzzle Games",
    u"ABC & Phonics – {}",         u"{}: Math Games for Kids",    u"Baby Piano: {}",
    u"{} Dinosaur Games for Kids", u"Bedtime Stories: {}",        u"{}: Dress Up & Castle",
    u"Preschool Games: {}",        u"{} Cooking Games for Kids",  u"Animal Sounds: {}",
};

constexpr QStringView kidsTopics[] = {
    u"kids games, toddler games, baby games, preschool",
    u"learning games, abc, phonics, alphabet, reading",
    u"math games, counting, numbers, kindergarten",
    u"coloring, drawing for kids, painting, stickers",
    u"bedtime stories, animals, dinosaurs, piano",
    u"kids puzzle, dress up, cooking games",
};

constexpr QStringView socialNames[] = {
    u"{}: Chat & Video Call", u"Group Chat – {}",       u"{} Video Call & Meetings",
    u"Meet New People: {}",   u"{}: Neighbours Nearby", u"Polls & Questions: {}",
    u"{} Pen Friends",        u"Family Locator: {}",
};

constexpr QStringView socialTopics[] = {
    u"chat, messages, group chat, video call",
    u"meet people, friends, dating, pen friends",
    u"neighbours, community, polls, forum",
    u"family locator, location sharing, video meetings",
};

constexpr QStringView musicNames[] = {
    u"{}: Offline Music Player",
    u"Guitar Tuner – {}",
    u"{} Piano Lessons",
    u"Metronome & Beat: {}",
    u"{}: Radio & Podcasts",
    u"Karaoke Sing Along: {}",
    u"{} Beat Maker",
    u"Ukulele Chords: {}",
};

constexpr QStringView musicTopics[] = {
    u"music player, offline music, equalizer",
    u"guitar tuner, chords, ukulele, metronome",
    u"piano lessons, learn piano, keyboard, sheet music",
    u"radio, podcasts, karaoke, sing, beat maker",
};

constexpr QStringView weatherNames[] = {
    u"{}: Weather Forecast & Radar",
    u"Weather Radar Live – {}",
    u"{} Weather Widget",
    u"Rain Alarm: {}",
    u"{}: Storm & Lightning Tracker",
    u"Marine Wind Forecast: {}",
    u"{} Air Quality & Pollen",
    u"Ski & Snow Report: {}",
    u"{}: Tides & Moon",
    u"Barometer: {}",
};

constexpr QStringView weatherTopics[] = {
    u"weather, weather forecast, local weather, hourly",
    u"weather radar, rain alarm, storm, lightning",
    u"weather widget, temperature, barometer",
    u"wind, tides, marine, surf, moon",
    u"air quality, pollen, snow report, uv index",
};

} // namespace

Theme puzzlesTheme()
{
    return {.id = ThemeId::Puzzles,
            .primary = Genre::Games,
            .secondary = Genre::Lifestyle,
            .glyph = Glyph::Jigsaw,
            .topRatings = 6.2,
            .paidShare = 0.06,
            .names = puzzlesNames,
            .topics = puzzlesTopics};
}

Theme kidsGamesTheme()
{
    return {.id = ThemeId::KidsGames,
            .primary = Genre::Games,
            .secondary = Genre::Education,
            .glyph = Glyph::Balloon,
            .topRatings = 5.5,
            .paidShare = 0.2,
            .names = kidsNames,
            .topics = kidsTopics};
}

Theme socialTheme()
{
    return {.id = ThemeId::Social,
            .primary = Genre::SocialNetworking,
            .secondary = Genre::Lifestyle,
            .glyph = Glyph::Ring,
            .topRatings = 6.3,
            .paidShare = 0.0,
            .names = socialNames,
            .topics = socialTopics};
}

Theme musicTheme()
{
    return {.id = ThemeId::Music,
            .primary = Genre::Music,
            .secondary = Genre::Utilities,
            .glyph = Glyph::Note,
            .topRatings = 5.7,
            .paidShare = 0.12,
            .names = musicNames,
            .topics = musicTopics};
}

Theme weatherTheme()
{
    return {.id = ThemeId::Weather,
            .primary = Genre::Weather,
            .secondary = Genre::Utilities,
            .glyph = Glyph::Sun,
            .topRatings = 5.9,
            .paidShare = 0.1,
            .names = weatherNames,
            .topics = weatherTopics};
}

} // namespace veltrix::sample
