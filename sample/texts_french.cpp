// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store in French.
#include "sample/texts.h"

namespace veltrix::sample
{

namespace
{

constexpr LocalTheme themeTexts[] = {
    {ThemeId::Photo, u"Retouche photo|Éditeur photo & collage|Montage photo|Filtres & cadres",
     u"retouche photo, éditeur photo, montage photo, collage, photo d'identité, effacer fond, "
     u"filtre photo, cadre photo, appareil argentique, journal photo"},
    {ThemeId::Video, u"Montage vidéo|Éditeur vidéo",
     u"montage vidéo, couper vidéo, sous-titres, ralenti, compresser vidéo"},
    {ThemeId::Journal, u"Journal intime|Humeur & gratitude",
     u"journal intime, journal avec code, humeur, gratitude, carnet de voyage"},
    {ThemeId::Budget, u"Budget & dépenses|Gérer son argent",
     u"budget, dépenses, comptes, gérer son argent, épargne, factures, budget familial"},
    {ThemeId::Trading, u"Bourse & options|Actions en direct",
     u"bourse, actions, options, trading, portefeuille, dividendes, placements"},
    {ThemeId::Meditation, u"Méditation & sommeil|Respiration",
     u"méditation, sommeil, respiration, bruit blanc, relaxation, pleine conscience"},
    {ThemeId::PrivateNetwork, u"VPN & vie privée|Réseau privé",
     u"vpn, réseau privé, bloqueur de pub, mots de passe, wifi sécurisé"},
    {ThemeId::Recipes, u"Recettes & menus|Cuisine facile",
     u"recettes, cuisine, menu de la semaine, liste de courses, pâtisserie, vegan"},
    {ThemeId::Running, u"Course & marche|Podomètre",
     u"course à pied, running, podomètre, marathon, marche, fitness, randonnée"},
    {ThemeId::Languages, u"Apprendre les langues|Vocabulaire",
     u"apprendre les langues, apprendre l'anglais, vocabulaire, traducteur, dictionnaire"},
    {ThemeId::Calendar, u"Agenda & planning|Tâches",
     u"agenda, calendrier partagé, planning, tâches, rappels, emploi du temps"},
    {ThemeId::Notes, u"Notes & carnet|Scanner documents",
     u"notes, bloc-notes, scanner documents, signer pdf, dictaphone, carte mentale"},
    {ThemeId::Weather, u"Météo & radar|Alerte pluie",
     u"météo, radar pluie, prévisions, orage, pollen, vent"},
    {ThemeId::Puzzles, u"Jeux de mots|Casse-tête",
     u"mots croisés, mots fléchés, casse-tête, sudoku, puzzle, jeux de réflexion"},
    {ThemeId::KidsGames, u"Jeux pour enfants|Coloriage",
     u"jeux enfants, coloriage, apprendre à lire, maternelle, histoires du soir"},
    {ThemeId::Social, u"Chat & appel vidéo|Voisins", u"chat, appel vidéo, voisins, rencontres"},
    {ThemeId::Travel, u"Voyages & trains|Cartes hors ligne",
     u"voyage, vols, trains, cartes hors ligne, valise, convertisseur devises"},
    {ThemeId::Music, u"Musique & accordeur|Piano facile",
     u"accordeur guitare, métronome, piano, radio, karaoké"},
};

constexpr LocalApp localApps[] = {
    {ThemeId::Recipes, u"Louchette : recettes de saison"},
    {ThemeId::Budget, u"Tirelou – budget & dépenses"},
    {ThemeId::Weather, u"Giboulou : météo & radar pluie"},
    {ThemeId::Photo, u"Clairlune retouche photo"},
    {ThemeId::Photo, u"Cabine Verlaune : photo d’identité"},
    {ThemeId::Journal, u"Marge Bleue : journal intime"},
    {ThemeId::Puzzles, u"Motsgrille : mots fléchés"},
    {ThemeId::Travel, u"Quai Brumelle : trains & retards"},
    {ThemeId::Running, u"Foulépine : course à pied"},
    {ThemeId::KidsGames, u"Coquillon : jeux pour enfants"},
    {ThemeId::Languages, u"Dictolune : apprendre le français"},
};

constexpr QStringView publishers[] = {
    u"Atelier Verlaune SARL", u"Éditions Coquillon",    u"Lune Claire Numérique SAS",
    u"Studio Foulépine",      u"Brumelle Applications",
};

constexpr QStringView sentences[] = {
    u"%1, c’est « %2 » en toute simplicité.",
    u"• %2 : rapide, élégant, sans publicité gênante",
    u"Vos données restent sur votre appareil.",
    u"Une question ? Une idée ? Écrivez-nous, nous répondons à tous.",
    u"L’abonnement est reconduit sauf annulation 24 heures avant l’échéance.",
    u"Compatible avec les widgets et le mode sombre.",
};

} // namespace

const LanguageTexts &frenchTexts()
{
    static constexpr LanguageTexts texts{Language::French, u"FR",      themeTexts,
                                         localApps,        publishers, sentences};
    return texts;
}

} // namespace veltrix::sample
