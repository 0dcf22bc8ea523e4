// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store in German.
#include "sample/texts.h"

namespace veltrix::sample
{

namespace
{

constexpr LocalTheme themeTexts[] = {
    {ThemeId::Photo, u"Bildbearbeitung|Foto-Editor & Collage|Fotos bearbeiten|Filter & Rahmen",
     u"bildbearbeitung, fotos bearbeiten, foto editor, collage erstellen, hintergrund entfernen, "
     u"passbild, fotofilter, bilderrahmen, analogkamera, fototagebuch"},
    {ThemeId::Video, u"Videobearbeitung|Videos schneiden",
     u"videobearbeitung, videos schneiden, untertitel, zeitlupe, video komprimieren"},
    {ThemeId::Journal, u"Tagebuch|Stimmungstagebuch|Dankbarkeit",
     u"tagebuch, tagebuch mit schloss, stimmung, dankbarkeit, reisetagebuch, fototagebuch"},
    {ThemeId::Budget, u"Haushaltsbuch|Budgetplaner|Ausgaben im Blick",
     u"haushaltsbuch, budget planer, ausgaben, finanzen, sparen, kassenbuch, rechnungen"},
    {ThemeId::Trading, u"Aktien & Optionen|Depot & Börse",
     u"aktien, optionen handeln, börse, depot, etf sparplan, dividenden, kurse"},
    {ThemeId::Meditation, u"Meditation & Schlaf|Achtsamkeit",
     u"meditation, einschlafen, achtsamkeit, atemübungen, schlafgeräusche, entspannung"},
    {ThemeId::PrivateNetwork, u"VPN & Datenschutz|Privates Netz",
     u"vpn, privates netz, werbeblocker, passwörter, sicheres wlan, anonym surfen"},
    {ThemeId::Recipes, u"Rezepte & Kochbuch|Wochenplan",
     u"rezepte, kochen, kochbuch, einkaufsliste, essensplan, backen, vegan"},
    {ThemeId::Running, u"Laufen & Gehen|Schrittzähler|Lauftraining",
     u"laufen, lauf app, schrittzähler, marathon, intervalltimer, wandern, abnehmen"},
    {ThemeId::Languages, u"Sprachen lernen|Vokabeltrainer",
     u"sprachen lernen, englisch lernen, vokabeln, übersetzer, wörterbuch, spanisch"},
    {ThemeId::Calendar, u"Kalender & Planer|Aufgaben",
     u"kalender, familienkalender, tagesplaner, aufgaben, schichtplan, erinnerungen"},
    {ThemeId::Notes, u"Notizen|Dokumente scannen",
     u"notizen, notizbuch, dokumente scannen, unterschreiben, sprachmemo, mindmap"},
    {ThemeId::Weather, u"Wetter & Regenradar|Wetterwarnung",
     u"wetter, regenradar, wettervorhersage, unwetter, pollenflug, wind"},
    {ThemeId::Puzzles, u"Rätsel & Knobeln|Wortspiel",
     u"rätsel, kreuzworträtsel, wortspiel, sudoku, puzzle, knobelspiele"},
    {ThemeId::KidsGames, u"Spiele für Kinder|Lernspiele",
     u"kinderspiele, lernspiele, ausmalen, vorschule, gute nacht geschichten"},
    {ThemeId::Social, u"Chat & Videoanruf|Nachbarn", u"chat, videoanruf, nachbarn, freunde finden"},
    {ThemeId::Travel, u"Reiseplaner|Karten ohne Netz",
     u"reiseplaner, flüge, offline karten, packliste, währungsrechner"},
    {ThemeId::Music, u"Musik & Metronom|Stimmgerät",
     u"stimmgerät, metronom, klavier lernen, radio, musik ohne internet"},
};

constexpr LocalApp localApps[] = {
    {ThemeId::Budget, u"Groschenhüter: Haushaltsbuch"},
    {ThemeId::Recipes, u"Kellenschlag – Rezepte & Wochenplan"},
    {ThemeId::Travel, u"Gleisfuchs: Züge & Verspätung"},
    {ThemeId::Weather, u"Wolkenkauz Regenradar"},
    {ThemeId::Calendar, u"Müllwecker: Abfallkalender"},
    {ThemeId::Photo, u"Lichtschieber: Bildbearbeitung"},
    {ThemeId::Photo, u"Passbild Pult – Fotos für Ausweise"},
    {ThemeId::Journal, u"Abendzeile: Tagebuch"},
    {ThemeId::Running, u"Waldschritt: Wandern & Laufen"},
    {ThemeId::Puzzles, u"Grübelkiste: Kreuzworträtsel"},
    {ThemeId::Trading, u"Depotlupe: Aktien & ETF"},
    {ThemeId::Languages, u"Silbenkoffer: Deutsch für alle"},
};

constexpr QStringView publishers[] = {
    u"Obsthof Software GmbH", u"Kauzbach Apps UG",          u"Nebelkante GmbH",
    u"Fuchsgleis Software",   u"Silbenwerkstatt Röhn GmbH",
};

constexpr QStringView sentences[] = {
    u"%1 ist gemacht für alle, die „%2“ suchen und keine Zeit verlieren wollen.",
    u"• %2 – schnell, klar und ohne Umwege",
    u"Keine Anmeldung, keine Werbung im Weg, keine versteckten Kosten.",
    u"Alles bleibt auf deinem Gerät, bis du es teilst.",
    u"Schreib uns: Jede Nachricht wird gelesen.",
    u"Das Abo verlängert sich, wenn es nicht 24 Stunden vorher gekündigt wird.",
};

} // namespace

const LanguageTexts &germanTexts()
{
    static constexpr LanguageTexts texts{Language::German, u"DE",      themeTexts,
                                         localApps,        publishers, sentences};
    return texts;
}

} // namespace veltrix::sample
