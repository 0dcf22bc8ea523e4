// SPDX-License-Identifier: GPL-3.0-or-later
// What the research service answers: a standing, or a refusal, as status, headers and JSON.
#pragma once

#include "sample/research_question.h"
#include "sample/research_queue.h"

#include <QByteArray>

#include <httplib.h>

namespace veltrix::sample
{

/// {"status":"ready",…} as it is sent.
QByteArray readyBody(const Ready &ready);

/// Waits are rounded up to whole seconds and said twice: in Retry-After and in the body.
void replyStanding(const httplib::Request &request, httplib::Response &response,
                   const Standing &standing);

void replyRefusal(const httplib::Request &request, httplib::Response &response,
                  const Refusal &refusal);

} // namespace veltrix::sample
