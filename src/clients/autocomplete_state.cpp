// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/autocomplete_state.h"

#include "effects/kept_copy.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QtDebug>

namespace veltrix
{

AutocompleteState AutocompleteStateFile::load()
{
    m_content = Content::Known;
    if (m_path.isEmpty())
        return {};
    const FileLook look = lookAtFile(m_path);
    if (std::holds_alternative<NoFile>(look))
        return {};
    try {
        return fromJson<AutocompleteState>(readWholeFile(m_path));
    } catch (const DecodingError &error) {
        m_content = Content::Damaged;
        qWarning("The suggestions’ history in %s is set aside: %s", qUtf8Printable(m_path),
                 error.what());
    } catch (const std::exception &error) {
        m_content = Content::Unknown;
        qWarning("The suggestions’ history stays as it is: %s", error.what());
    }
    return {};
}

void AutocompleteStateFile::save(const AutocompleteState &state, Date now)
{
    if (m_path.isEmpty())
        return;
    if (m_content == Content::Unknown && std::holds_alternative<NoFile>(lookAtFile(m_path)))
        m_content = Content::Known;
    if (m_content == Content::Unknown)
        return;
    try {
        if (m_content == Content::Damaged)
            keepUnderDatedName(m_path, u"unreadable", now);
        m_content = Content::Known;
        writeFileAtomically(m_path, toJson(state));
    } catch (const Error &) {
        // What is in memory stays; the next request tries again.
    }
}

} // namespace veltrix
