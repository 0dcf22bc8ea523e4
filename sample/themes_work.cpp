// SPDX-License-Identifier: GPL-3.0-or-later
// Apps for work and for the tools of every day.
#include "sample/themes_english.h"

namespace veltrix::sample
{

namespace
{

constexpr QStringView calendarNames[] = {
    u"{} Calendar: Daily Planner", u"Shared Family Calendar: {}", u"{}: To Do List & Tasks",
    u"Calendar Widget – {}",       u"{} Day Planner & Schedule",  u"Shift Work Calendar: {}",
    u"{}: Habit Tracker",          u"Countdown & Events: {}",     u"{} Study Planner",
    u"Moon Calendar: {}",          u"{}: Time Blocking Planner",  u"Appointment Book – {}",
    u"{} School Timetable",        u"Reminders & Birthdays: {}",
};

constexpr QStringView calendarTopics[] = {
    u"calendar, shared calendar, family calendar, agenda",
    u"planner, daily planner, day planner, schedule",
    u"to do list, tasks, reminders, checklist",
    u"habit tracker, routines, goals, focus timer",
    u"shift work, roster, timetable, study planner",
    u"countdown, birthdays, events, widget, moon calendar",
};

constexpr QStringView notesNames[] = {
    u"{}: Notes & Notebook",
    u"PDF Scanner: {} Documents",
    u"{} Handwriting Notes",
    u"Voice Recorder & Notes – {}",
    u"{}: Sticky Notes Widget",
    u"Document Scanner: {}",
    u"{} Markdown Notes",
    u"Sign PDF Documents: {}",
    u"{}: Mind Map",
    u"Voice to Text – {}",
    u"{} Whiteboard",
    u"Private Notes with Lock: {}",
    u"{}: Word Counter & Writer",
    u"Meeting Minutes: {}",
    u"{} Outline & Lists",
    u"Spreadsheet Viewer: {}",
};

constexpr QStringView notesTopics[] = {
    u"notes, notebook, note taking, notepad",
    u"scanner, document scanner, pdf scanner, scan documents",
    u"sign pdf, pdf editor, documents, files",
    u"handwriting, whiteboard, sketch notes, drawing",
    u"voice recorder, voice to text, dictation, transcribe, meeting",
    u"sticky notes, widget, lists, outline, markdown, mind map",
    u"private notes, lock, password, writing",
};

constexpr QStringView privateNetworkNames[] = {
    u"{} VPN: Private Network", u"Fast VPN – {} Proxy",      u"{}: Private Browser & VPN",
    u"Unlimited VPN by {}",     u"{} Secure Wi-Fi VPN",      u"Private Network: {}",
    u"{}: Ad Blocker",          u"Password Manager – {}",    u"{} Authenticator: 2FA Codes",
    u"VPN Shield: {}",          u"{}: Photo Vault & Locker", u"DNS Changer: {}",
    u"{} Wi-Fi Analyzer",       u"Encrypted Messages: {}",
};

constexpr QStringView privateNetworkTopics[] = {
    u"vpn, fast vpn, free vpn, unlimited vpn, proxy",
    u"private network, secure wifi, online privacy, hotspot",
    u"private browser, ad blocker, block ads, dns",
    u"password manager, authenticator, two factor, passkeys",
    u"photo vault, hide photos, app lock, encrypted",
    u"wifi analyzer, speed test, network scanner",
};

} // namespace

Theme calendarTheme()
{
    return {.id = ThemeId::Calendar,
            .primary = Genre::Productivity,
            .secondary = Genre::Lifestyle,
            .glyph = Glyph::Grid,
            .topRatings = 5.4,
            .paidShare = 0.14,
            .names = calendarNames,
            .topics = calendarTopics};
}

Theme notesTheme()
{
    return {.id = ThemeId::Notes,
            .primary = Genre::Productivity,
            .secondary = Genre::Business,
            .glyph = Glyph::Page,
            .topRatings = 5.9,
            .paidShare = 0.14,
            .names = notesNames,
            .topics = notesTopics};
}

Theme privateNetworkTheme()
{
    return {.id = ThemeId::PrivateNetwork,
            .primary = Genre::Utilities,
            .secondary = Genre::Productivity,
            .glyph = Glyph::Shield,
            .topRatings = 6.42,
            .paidShare = 0.03,
            .names = privateNetworkNames,
            .topics = privateNetworkTopics};
}

} // namespace veltrix::sample
