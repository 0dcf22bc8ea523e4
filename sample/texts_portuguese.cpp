// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store in Portuguese.
#include "sample/texts.h"

namespace veltrix::sample
{

namespace
{

constexpr LocalTheme themeTexts[] = {
    {ThemeId::Photo, u"Editor de fotos|Colagem e filtros|Editar fotos|Molduras",
     u"editor de fotos, editar fotos, colagem de fotos, remover fundo, foto 3x4, filtros, "
     u"molduras, câmera retrô, diário de fotos"},
    {ThemeId::Video, u"Editor de vídeo|Cortar vídeos",
     u"editor de vídeo, cortar vídeo, legendas, câmera lenta, comprimir vídeo"},
    {ThemeId::Journal, u"Diário pessoal|Humor e gratidão",
     u"diário, diário com senha, humor, gratidão, diário de viagem"},
    {ThemeId::Budget, u"Controle de gastos|Finanças pessoais",
     u"controle de gastos, orçamento, finanças pessoais, economizar, contas a pagar"},
    {ThemeId::Trading, u"Bolsa e opções|Ações",
     u"bolsa de valores, ações, opções, investir, carteira, dividendos"},
    {ThemeId::Meditation, u"Meditação e sono|Respirar",
     u"meditação, dormir, respiração, ruído branco, relaxar, ansiedade"},
    {ThemeId::PrivateNetwork, u"VPN e privacidade|Rede privada",
     u"vpn, rede privada, bloqueador de anúncios, senhas, wifi seguro"},
    {ThemeId::Recipes, u"Receitas e cardápio|Cozinha fácil",
     u"receitas, cozinha, cardápio da semana, lista de compras, bolos, vegano"},
    {ThemeId::Running, u"Corrida e caminhada|Contador de passos",
     u"corrida, correr, contador de passos, maratona, caminhada, treino em casa"},
    {ThemeId::Languages, u"Aprender idiomas|Vocabulário",
     u"aprender idiomas, aprender inglês, vocabulário, tradutor, dicionário"},
    {ThemeId::Calendar, u"Calendário e agenda|Tarefas",
     u"calendário, agenda, planejador, tarefas, lembretes, escala de trabalho"},
    {ThemeId::Notes, u"Notas e caderno|Scanner de documentos",
     u"notas, bloco de notas, digitalizar documentos, assinar pdf, gravador"},
    {ThemeId::Weather, u"Previsão do tempo|Alerta de chuva",
     u"previsão do tempo, clima, radar de chuva, tempestade, vento"},
    {ThemeId::Puzzles, u"Jogos de palavras|Quebra-cabeça",
     u"caça palavras, palavras cruzadas, quebra cabeça, sudoku, jogos de lógica"},
    {ThemeId::KidsGames, u"Jogos para crianças|Colorir",
     u"jogos para crianças, colorir, aprender a ler, histórias para dormir"},
    {ThemeId::Social, u"Chat e chamada de vídeo|Vizinhos",
     u"bate papo, chamada de vídeo, vizinhos, amigos"},
    {ThemeId::Travel, u"Viagens e mapas|Passagens",
     u"viagem, passagens baratas, mapas offline, mala, conversor de moedas"},
    {ThemeId::Music, u"Música e afinador|Piano fácil",
     u"afinador de violão, metrônomo, piano, rádio, karaokê"},
};

constexpr LocalApp localApps[] = {
    {ThemeId::Budget, u"Cofrinhal: controle de gastos"},
    {ThemeId::Photo, u"Retratim: editor de fotos"},
    {ThemeId::Photo, u"Três por Quatro Já: foto 3x4"},
    {ThemeId::Recipes, u"Panelúcia: receitas fáceis"},
    {ThemeId::Journal, u"Varanda Azul: diário pessoal"},
    {ThemeId::Weather, u"Garoal: previsão do tempo"},
    {ThemeId::Running, u"Passadim: corrida e caminhada"},
    {ThemeId::Puzzles, u"Letracaça: caça palavras"},
    {ThemeId::Social, u"Papobom Vizinhança"},
    {ThemeId::Travel, u"Rodovial Noturno: viagens"},
    {ThemeId::Music, u"Violinha Afinada: afinador"},
};

constexpr QStringView publishers[] = {
    u"Varanda Azul Tecnologia Ltda",
    u"Retratim Apps",
    u"Garoal Sistemas Ltda",
    u"Jandaíra Digital",
    u"Estúdio Passadim",
};

constexpr QStringView sentences[] = {
    u"%1 é o jeito mais fácil de ter “%2” no seu bolso.",
    u"• %2: rápido, leve e bonito",
    u"Sem cadastro e sem propaganda no caminho.",
    u"Seus dados ficam no seu aparelho.",
    u"Dúvidas ou ideias? Fale com a gente!",
    u"A assinatura é renovada, a não ser que seja cancelada 24 horas antes.",
};

} // namespace

const LanguageTexts &portugueseTexts()
{
    static constexpr LanguageTexts texts{Language::Portuguese, u"BR",    themeTexts, localApps,
                                         publishers,           sentences};
    return texts;
}

} // namespace veltrix::sample
