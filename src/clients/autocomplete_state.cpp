// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/autocomplete_state.h"

#include "effects/atomic_file.h"
#include "model/json_reader.h"
#include "model/json_writer.h"

#include <QDir>
#include <QFileInfo>

namespace veltrix
{

AutocompleteState loadAutocompleteState(const QString &path)
{
    try {
        return fromJson<AutocompleteState>(readWholeFile(path));
    } catch (const Error &) {
        return {};
    }
}

void saveAutocompleteState(const QString &path, const AutocompleteState &state)
{
    try {
        QDir().mkpath(QFileInfo(path).path());
        writeFileAtomically(path, toJson(state));
    } catch (const Error &) {
        // What is in memory stays; the next request tries again.
    }
}

} // namespace veltrix
