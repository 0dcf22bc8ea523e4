// SPDX-License-Identifier: GPL-3.0-or-later
// The search-hints service.
#include "sample/hints_service.h"

#include "sample/command_term.h"
#include "sample/dice.h"
#include "sample/hints_body.h"
#include "sample/http_reply.h"
#include "sample/text_folding.h"

#include <functional>

namespace veltrix::sample
{

namespace
{

const char *const listType = "text/xml; charset=UTF-8";

/// The storefront of "143441-1,29"; none without the header or for an unknown number.
const Storefront *storefrontOf(const httplib::Request &request)
{
    const QString header = QString::fromStdString(request.get_header_value("X-Apple-Store-Front"));
    return findStorefrontByHintsId(header.section(QLatin1Char('-'), 0, 0).toInt());
}

/// About one prefix in four is answered in the older form, always the same ones.
HintsForm formFor(const QString &prefix)
{
    const bool older = stableTextHash(folded(prefix).toUtf8()) % 4 == 0;
    return older ? HintsForm::Older : HintsForm::Newer;
}

/// The status of a refusing command, or 0.
int refusal(const QString &command)
{
    if (command == QLatin1String("throttled"))
        return 403;
    if (command == QLatin1String("limited"))
        return 429;
    if (command == QLatin1String("unavailable"))
        return 503;
    if (command == QLatin1String("error"))
        return 500;
    return 0;
}

} // namespace

HintsService::HintsService(const HintIndex &index, Pause &pause) : m_index(index), m_pause(pause) {}

void HintsService::install(httplib::Server &server)
{
    server.Get(hintsPath, std::bind_front(&HintsService::hints, this));
}

void HintsService::hints(const httplib::Request &request, httplib::Response &response)
{
    const auto [command, prefix] =
        commandTerm(QString::fromStdString(request.get_param_value("term")));
    if (const int status = refusal(command))
        return replyEmpty(response, status);
    if (command == QLatin1String("garbage"))
        return replyGarbage(response);
    if (command == QLatin1String("slow"))
        m_pause.wait(Pause::slowness);
    const Storefront *storefront = storefrontOf(request);
    const bool forApps = request.get_param_value("clientApplication") == "Software";
    std::vector<Hint> found;
    if (storefront && forApps)
        found = m_index.hintsFor(prefix, storefront->language);
    const QByteArray body = hintsBody(found, formFor(prefix));
    if (command == QLatin1String("cut"))
        return replyCut(response, body, listType);
    replyText(request, response, body, listType);
}

} // namespace veltrix::sample
