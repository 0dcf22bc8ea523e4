// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as an answer of the search-hints service: refused, or suggestions that can be shown.
#include "clients/autocomplete_client.h"
#include "fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QByteArray body = fuzz::bytesOf(data, size);
    QStringList terms;
    if (fuzz::isAccepted([&] { terms = parseSearchHints(body); })) {
        for (const QString &term : terms)
            fuzz::require(!term.isEmpty(), "a suggestion has a text");
        fuzz::require(terms.size() * qsizetype(sizeof "<string/>") <= body.size(),
                      "there are no more suggestions than were sent");
    }
    return 0;
}
