// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store in Spanish.
#include "sample/texts.h"

namespace veltrix::sample
{

namespace
{

constexpr LocalTheme themeTexts[] = {
    {ThemeId::Photo, u"Editor de fotos|Collage y filtros|Editar fotos|Marcos para fotos",
     u"editor de fotos, editar fotos, collage de fotos, quitar fondo, foto carnet, filtros, "
     u"marcos para fotos, cámara retro, diario de fotos"},
    {ThemeId::Video, u"Editor de vídeo|Cortar vídeos",
     u"editor de video, cortar video, subtítulos, cámara lenta, comprimir video"},
    {ThemeId::Journal, u"Diario personal|Estado de ánimo",
     u"diario personal, diario con candado, estado de ánimo, gratitud, diario de viaje"},
    {ThemeId::Budget, u"Presupuesto y gastos|Control de gastos",
     u"presupuesto, control de gastos, gastos, ahorro, finanzas personales, facturas"},
    {ThemeId::Trading, u"Bolsa y opciones|Acciones",
     u"bolsa, acciones, opciones, trading, invertir, cartera, dividendos"},
    {ThemeId::Meditation, u"Meditación y sueño|Respirar",
     u"meditación, dormir, respiración, ruido blanco, relajación, ansiedad"},
    {ThemeId::PrivateNetwork, u"VPN y privacidad|Red privada",
     u"vpn, red privada, bloqueador de anuncios, contraseñas, wifi seguro"},
    {ThemeId::Recipes, u"Recetas y menús|Cocina fácil",
     u"recetas, cocina, menú semanal, lista de la compra, repostería, vegano"},
    {ThemeId::Running, u"Correr y caminar|Contador de pasos",
     u"correr, running, contador de pasos, maratón, caminar, ejercicio en casa"},
    {ThemeId::Languages, u"Aprender idiomas|Vocabulario",
     u"aprender idiomas, aprender inglés, vocabulario, traductor, diccionario"},
    {ThemeId::Calendar, u"Calendario y agenda|Tareas",
     u"calendario, agenda, planificador, tareas, recordatorios, turnos"},
    {ThemeId::Notes, u"Notas y cuaderno|Escáner de documentos",
     u"notas, bloc de notas, escanear documentos, firmar pdf, grabadora"},
    {ThemeId::Weather, u"El tiempo y radar|Aviso de lluvia",
     u"el tiempo, radar de lluvia, pronóstico, tormentas, polen, viento"},
    {ThemeId::Puzzles, u"Juegos de palabras|Rompecabezas",
     u"crucigramas, sopa de letras, rompecabezas, sudoku, juegos de lógica"},
    {ThemeId::KidsGames, u"Juegos para niños|Colorear",
     u"juegos para niños, colorear, aprender a leer, cuentos para dormir"},
    {ThemeId::Social, u"Chat y videollamada|Vecinos", u"chat, videollamada, vecinos, amigos"},
    {ThemeId::Travel, u"Viajes y mapas|Vuelos",
     u"viajes, vuelos baratos, mapas sin conexión, equipaje, conversor de monedas"},
    {ThemeId::Music, u"Música y afinador|Piano fácil",
     u"afinador de guitarra, metrónomo, piano, radio, karaoke"},
};

constexpr LocalApp localApps[] = {
    {ThemeId::Recipes, u"Cucharela: recetas de casa"},
    {ThemeId::Budget, u"Huchita Clara: control de gastos"},
    {ThemeId::Photo, u"Pincelume editor de fotos"},
    {ThemeId::Photo, u"Carnetín: foto carnet"},
    {ThemeId::Journal, u"Hoja de Luna: diario personal"},
    {ThemeId::Weather, u"Nubarela: el tiempo y radar"},
    {ThemeId::Running, u"Zancadilla Sur: correr"},
    {ThemeId::Puzzles, u"Letrasopa: sopa de letras"},
    {ThemeId::KidsGames, u"Pollitela: juegos para niños"},
    {ThemeId::Languages, u"Palabrería Verde: aprender inglés"},
    {ThemeId::Travel, u"Andenil: trenes y retrasos"},
};

constexpr QStringView publishers[] = {
    u"Pincelume S.L.",   u"Nubarela Estudio",       u"Andenil Aplicaciones S.A.",
    u"Zancada Sur S.L.", u"Huerta Digital Alboral",
};

constexpr QStringView sentences[] = {
    u"%1: la forma más sencilla de tener «%2» siempre a mano.",
    u"• %2, rápido y sin complicaciones",
    u"Sin registro y sin anuncios molestos.",
    u"Tus datos se quedan en tu dispositivo.",
    u"¿Dudas o ideas? Escríbenos, ¡leemos todos los mensajes!",
    u"La suscripción se renueva salvo que se cancele 24 horas antes.",
};

} // namespace

const LanguageTexts &spanishTexts()
{
    static constexpr LanguageTexts texts{Language::Spanish, u"ES",      themeTexts,
                                         localApps,         publishers, sentences};
    return texts;
}

} // namespace veltrix::sample
