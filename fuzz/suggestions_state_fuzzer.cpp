// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as the file of suggestions: an empty state, or one that is still there once it was
// saved. What its scores say stays within bounds.
#include "clients/autocomplete_score.h"
#include "read_and_write.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    fuzz::muteWarnings();
    const QByteArray content = fuzz::bytesOf(data, size);
    const auto whole = fuzz::readAndWrite<AutocompleteState>(content);
    const QString path = fuzz::scratchFile(QStringLiteral("suggestions.json"), content);
    AutocompleteStateFile file(path);
    AutocompleteState state = file.load();
    fuzz::require(state == whole.value_or(AutocompleteState{}), "the file holds what it says");
    constexpr std::int64_t today = 20'000;
    for (const auto &[key, scores] : state.history) {
        const VisibilityReport report = reportVisibility(scores, today);
        fuzz::require(report.observedDays >= 0 && report.observedDays <= medianWindowDays,
                      "a week has seven days");
    }
    dropUnreadScores(state.history, today);
    if (whole) {
        file.save(state, startOfUtcDay(today));
        fuzz::require(AutocompleteStateFile(path).load() == state, "what was saved is there");
    }
    return 0;
}
