// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a research question.
#include "sample/research_question.h"

#include "sample/storefront.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace veltrix::sample
{

namespace
{

constexpr std::size_t mostBodyBytes = 4'096;
constexpr qsizetype longestKeyword = 100;

Refusal badRequest(QByteArrayView message)
{
    return {400, "\"BAD_REQUEST\"", message};
}

bool isJson(const httplib::Request &request)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^application/json\s*(;\s*charset\s*=\s*"?utf-8"?\s*)?$)"),
        QRegularExpression::CaseInsensitiveOption);
    return form.match(QString::fromStdString(request.get_header_value("Content-Type"))).hasMatch();
}

bool isControl(char32_t character)
{
    return QChar::category(character) == QChar::Other_Control;
}

} // namespace

std::variant<ResearchQuestion, Refusal> readResearchQuestion(const httplib::Request &request)
{
    if (request.get_header_value("apikey") != publishableKey)
        return Refusal{401, "401", "Invalid API key"};
    if (!isJson(request))
        return badRequest("The body is not application/json");
    if (request.body.size() > mostBodyBytes)
        return Refusal{413, "\"BODY_TOO_LARGE\"", "The body is larger than 4096 bytes"};
    QJsonParseError error;
    const auto body = QJsonDocument::fromJson(QByteArray::fromStdString(request.body), &error);
    if (error.error != QJsonParseError::NoError || !body.isObject())
        return badRequest("The body is no JSON object");

    const QString text = body[u"keyword"].toString();
    const QString keyword = text.trimmed().toLower().normalized(QString::NormalizationForm_C);
    const QList<uint> characters = keyword.toUcs4();
    if (characters.isEmpty() || characters.size() > longestKeyword)
        return badRequest("The keyword has not 1 to 100 characters");
    // Half a surrogate pair is no text.
    if (!keyword.isValidUtf16() || std::ranges::any_of(characters, isControl))
        return badRequest("The keyword has control characters");
    const QString country = body[u"country"].toString().toUpper();
    if (!hasAppStore(country))
        return badRequest("The country has no App Store");
    return ResearchQuestion{keyword, country};
}

} // namespace veltrix::sample
