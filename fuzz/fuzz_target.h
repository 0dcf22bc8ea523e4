// SPDX-License-Identifier: GPL-3.0-or-later
// What all targets share: a target takes any bytes and checks a property of what reads them.
#pragma once

#include "model/error.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace veltrix::fuzz
{

/// Ends the program, which is a finding, unless the property holds.
inline void require(bool holds, const char *property)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", property);
    std::abort();
}

/// Runs what may refuse its input. Only an Error with a text is a refusal; anything else that is
/// thrown is a finding, as nobody catches it. True when nothing was refused.
template <class Read>
bool isAccepted(Read &&read)
{
    try {
        std::forward<Read>(read)();
        return true;
    } catch (const Error &error) {
        require(!error.description().isEmpty(), "a refusal has a description");
        return false;
    }
}

/// The input in memory of just its size, so that reading behind it shows.
inline QByteArray bytesOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

/// Lets the program's own warnings go unsaid: there would be one for most inputs.
void muteWarnings();

/// A file of this process under that name, for what reads files; removed at the end.
QString scratchPath(const QString &name);
/// The same, written anew with this content.
QString scratchFile(const QString &name, const QByteArray &content);

/// `base` with bytes replaced as the input says: three bytes of a place, one of a value. An input
/// that begins as `base` does is taken whole in its stead. So a small input reaches deep into a
/// large file that is otherwise sound.
QByteArray patched(const QByteArray &base, const QByteArray &input);

} // namespace veltrix::fuzz
