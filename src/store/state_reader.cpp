// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/state_reader.h"

#include "json/json_reader.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <vector>

namespace veltrix
{

namespace
{

// Where a file can be cut. Quotes within texts are escaped, so in well-formed JSON each of these
// can only stand between values, never inside a text; that they stand at the right depth shows when
// the pieces are parsed.
constexpr std::string_view beforeSnapshots = R"("snapshots":[)";
constexpr std::string_view firstSnapshot = R"("snapshots":[{"id":")";
constexpr std::string_view betweenSnapshots = R"(},{"id":")";
constexpr std::string_view afterSnapshots = R"(}],"competitors":[)";

/// How much of the beginning and of the end of a file is searched for its snapshots.
constexpr qint64 longestFrame = 16 * 1024 * 1024;

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

/// The place where the first snapshot begins, behind its "["; none when it is not near the start.
std::optional<qint64> findFirstSnapshot(const FileReader &source)
{
    for (qint64 length = 64 * 1024;; length *= 4) {
        const QByteArray head = source.read(0, std::min(length, source.size()));
        const size_t found = viewOf(head).find(firstSnapshot);
        if (found != std::string_view::npos)
            return qint64(found + beforeSnapshots.size());
        if (head.size() == source.size() || length >= longestFrame)
            return std::nullopt;
    }
}

/// The place behind the last snapshot; none when it is not near the end.
std::optional<qint64> findEndOfSnapshots(const FileReader &source)
{
    for (qint64 length = 64 * 1024;; length *= 4) {
        const qint64 start = std::max<qint64>(source.size() - length, 0);
        const QByteArray tail = source.read(start, source.size() - start);
        const size_t found = viewOf(tail).rfind(afterSnapshots);
        if (found != std::string_view::npos)
            return start + qint64(found) + 1;
        if (start == 0 || length >= longestFrame)
            return std::nullopt;
    }
}

/// Parses runs of whole snapshots in a window that moves over the file.
class SnapshotRuns
{
public:
    SnapshotRuns(const FileReader &source, qint64 begin, qint64 end, qsizetype pieceSize)
        : m_source(source), m_next(begin), m_end(end), m_room(pieceSize)
    {
    }

    std::vector<SharedSnapshot> readAll()
    {
        while (m_next < m_end || m_held > 0)
            readRun();
        return std::move(m_snapshots);
    }

private:
    void readRun()
    {
        // One byte before the run becomes "[", the one behind it "]".
        m_window.resize(size_t(m_room + 2) + simdjson::SIMDJSON_PADDING);
        const qint64 count = std::min<qint64>(m_room - m_held, m_end - m_next);
        m_source.read(m_next, m_window.data() + 1 + m_held, count);
        m_next += count;
        m_held += count;

        const std::string_view held(m_window.data() + 1, size_t(m_held));
        size_t length = held.size();
        if (m_next < m_end) {
            length = held.rfind(betweenSnapshots) + 1;
            if (length == 0) {
                m_room *= 2;
                return;
            }
        }
        parse(length);
        // The comma behind the run has become its bracket.
        const size_t used = std::min(length + 1, held.size());
        m_held -= qsizetype(used);
        std::memmove(m_window.data() + 1, m_window.data() + 1 + used, size_t(m_held));
    }

    void parse(size_t length)
    {
        m_window[0] = '[';
        m_window[length + 1] = ']';
        const simdjson::padded_string_view run(m_window.data(), length + 2, m_window.size());
        auto document = json_detail::required(m_parser.iterate(run));
        for (auto result : json_detail::required(document.get_array()))
            readJson(m_reader, json_detail::required(result), m_snapshots.emplace_back());
        json_detail::requireEnd(document);
    }

    const FileReader &m_source;
    /// The part of the file that has not been read.
    qint64 m_next;
    qint64 m_end;
    /// Bytes that the window may hold, and those that wait in it.
    qsizetype m_room;
    qsizetype m_held = 0;
    std::vector<char> m_window;
    simdjson::ondemand::parser m_parser;
    JsonReader m_reader;
    std::vector<SharedSnapshot> m_snapshots;
};

} // namespace

std::optional<PersistedState> readStateInPieces(const FileReader &source, qsizetype pieceSize)
{
    const auto begin = findFirstSnapshot(source);
    const auto end = findEndOfSnapshots(source);
    if (!begin || !end || *begin >= *end)
        return std::nullopt;
    try {
        // What is around the snapshots has to be a state without any.
        const QByteArray frame = source.read(0, *begin) + source.read(*end, source.size() - *end);
        if (frame.count(QByteArrayView(R"("snapshots")")) != 1)
            return std::nullopt;
        auto state = fromJson<PersistedState>(frame);
        state.snapshots = SnapshotRuns(source, *begin, *end, pieceSize).readAll();
        return state;
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

PersistedState readState(const FileReader &file, qsizetype pieceSize)
{
    if (file.size() > 4 * pieceSize) {
        if (auto state = readStateInPieces(file, pieceSize))
            return std::move(*state);
    }
    simdjson::padded_string text(size_t(file.size()));
    if (!text.data())
        throw std::bad_alloc();
    file.read(0, text.data(), file.size());
    return fromJson<PersistedState>(JsonText(std::move(text)));
}

} // namespace veltrix
