// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as an answer of the research service: refused, or an envelope with no more results
// than are kept.
#include "clients/research_client.h"
#include "clients/research_envelope.h"
#include "read_and_write.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const auto envelope = fuzz::readAndWrite<ResearchEnvelope>(
        fuzz::bytesOf(data, size), ListLimit{size_t(ResearchClient::mostResults)});
    if (envelope && envelope->results)
        fuzz::require(envelope->results->size() <= ResearchClient::mostResults,
                      "no more results come than are kept");
    return 0;
}
