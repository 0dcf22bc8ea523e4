// SPDX-License-Identifier: GPL-3.0-or-later
// Apps for writing about one's days, for calm, and for languages.
#include "sample/themes_english.h"

namespace veltrix::sample
{

namespace
{

constexpr QStringView journalNames[] = {
    u"{} Journal: Daily Diary",
    u"Daily Journal – {}",
    u"{}: Diary with Lock",
    u"Mood Tracker & Diary: {}",
    u"{}: Gratitude Journal",
    u"Photo Journal: {}",
    u"{} Dotted Journal & Planner",
    u"My Secret Diary: {}",
    u"{}: Evening Journaling",
    u"Dream Journal: {}",
    u"{}: Mood Journal",
    u"Guided Journal & Prompts: {}",
    u"{} Travel Journal",
    u"Baby Journal: {} Milestones",
    u"{}: Line a Day Diary",
    u"Reading Journal – {}",
    u"{}: Audio Diary",
    u"Couples Journal: {}",
    u"{} Garden Journal",
    u"Shadow Work: {} Journal",
};

constexpr QStringView journalTopics[] = {
    u"journal, daily journal, diary, journaling",
    u"diary with lock, private diary, secret, password",
    u"mood tracker, feelings, emotions, mood journal",
    u"gratitude, affirmations, self care, thankful",
    u"journal prompts, guided, reflection, evening journal",
    u"photo journal, memories, year in pictures, one line a day",
    u"dotted journal, planner, habit tracker, goals",
    u"dream, sleep, voice diary, audio",
    u"travel journal, baby, milestones, garden, reading",
};

constexpr QStringView meditationNames[] = {
    u"{}: Sleep & Meditation",
    u"Meditation Timer – {}",
    u"{} Sleep Sounds & White Noise",
    u"Guided Meditation: {}",
    u"{}: Breathing Exercises",
    u"Rain Sounds: {} Sleep",
    u"{}: Mindfulness for Beginners",
    u"Sleep Stories – {}",
    u"{} Anxiety Relief",
    u"Daily Meditation: {}",
    u"{}: Singing Bowls & Chakra",
    u"Kids Sleep & Calm: {}",
    u"{}: Hypnosis for Sleep",
    u"Brown Noise: {}",
    u"{} Zen Timer",
    u"Meditation Music: {}",
};

constexpr QStringView meditationTopics[] = {
    u"meditation, guided meditation, mindfulness, calm",
    u"sleep sounds, white noise, brown noise, rain",
    u"sleep, sleep stories, insomnia, bedtime",
    u"breathing, breathwork, stress, anxiety relief",
    u"meditation timer, zen, bells, singing bowls",
    u"affirmations, self care, positive thinking, hypnosis",
};

constexpr QStringView languagesNames[] = {
    u"{}: Learn Languages",         u"Learn English: {} Speaking", u"{} Spanish for Beginners",
    u"Language Learning – {}",      u"{}: Vocabulary Flashcards",  u"Learn Japanese & Kanji: {}",
    u"{}: Translator & Dictionary", u"Learn Korean – {} Hangul",   u"{} French Lessons",
    u"Grammar Trainer: {}",         u"Language Exchange: {}",      u"{}: German A1 to C1",
    u"Sign Language: {}",           u"{} Italian Phrasebook",      u"Learn Arabic Alphabet: {}",
    u"{}: Word of the Day",
};

constexpr QStringView languagesTopics[] = {
    u"learn languages, language learning, language lessons, speaking",
    u"learn english, english grammar, vocabulary, pronunciation",
    u"learn spanish, learn french, learn german, learn italian",
    u"learn japanese, kanji, hiragana, learn korean, hangul",
    u"translator, dictionary, phrasebook, offline translation",
    u"flashcards, memory, word of the day, spaced repetition",
    u"language exchange, talk, tutor, conversation",
};

} // namespace

Theme journalTheme()
{
    return {.id = ThemeId::Journal,
            .primary = Genre::Lifestyle,
            .secondary = Genre::Productivity,
            .glyph = Glyph::Book,
            .topRatings = 5.25,
            .paidShare = 0.12,
            .names = journalNames,
            .topics = journalTopics};
}

Theme meditationTheme()
{
    return {.id = ThemeId::Meditation,
            .primary = Genre::HealthAndFitness,
            .secondary = Genre::Lifestyle,
            .glyph = Glyph::Lotus,
            .topRatings = 6.0,
            .paidShare = 0.06,
            .names = meditationNames,
            .topics = meditationTopics};
}

Theme languagesTheme()
{
    return {.id = ThemeId::Languages,
            .primary = Genre::Education,
            .secondary = Genre::Travel,
            .glyph = Glyph::Speech,
            .topRatings = 6.3,
            .paidShare = 0.1,
            .names = languagesNames,
            .topics = languagesTopics};
}

} // namespace veltrix::sample
