// SPDX-License-Identifier: GPL-3.0-or-later
// Reading in pieces gives what reading the whole text gives, for every file there can be.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/numbered_state.h"
#include "store/scratch_folder.h"
#include "store/state_reader.h"
#include "support/generators.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

/// A file that is written and read again and again.
class Scratch
{
public:
    explicit Scratch(const QByteArray &bytes) { writeFileAtomically(path(), bytes); }
    [[nodiscard]] QString path() const { return m_folder->filePath(QStringLiteral("state.json")); }

private:
    std::unique_ptr<QTemporaryDir> m_folder = scratchFolder();
};

/// The state as JSON, or why there is none.
template <class Read>
QByteArray outcomeOf(Read &&read)
{
    try {
        return toJson(read());
    } catch (const DecodingError &error) {
        return error.description().toUtf8();
    }
}

QByteArray readWhole(const QByteArray &bytes)
{
    return outcomeOf([&] { return fromJson<PersistedState>(bytes); });
}

QByteArray readByPieces(const QByteArray &bytes, qsizetype pieceSize)
{
    const Scratch file(bytes);
    return outcomeOf([&] { return readState(FileReader(file.path()), pieceSize); });
}

bool canBeCut(const QByteArray &bytes, qsizetype pieceSize)
{
    const Scratch file(bytes);
    return readStateInPieces(FileReader(file.path()), pieceSize).has_value();
}

TEST(StateReader, ALargeFileOfOurOwnIsReadInPieces)
{
    const QByteArray bytes = toJson(numberedState(7));
    for (const qsizetype pieceSize : {64, 1'000, 4'096, 20'000, 150'000, 10'000'000}) {
        EXPECT_TRUE(canBeCut(bytes, pieceSize)) << pieceSize;
        EXPECT_EQ(readByPieces(bytes, pieceSize), bytes) << pieceSize;
    }
}

TEST(StateReader, OneSnapshotIsAPieceOfItsOwn)
{
    PersistedState state = numberedState(7);
    state.snapshots.resize(1);
    const QByteArray bytes = toJson(state);
    EXPECT_TRUE(canBeCut(bytes, 100));
    EXPECT_EQ(readByPieces(bytes, 100), bytes);
}

TEST(StateReader, OtherFilesAreReadAsOneText)
{
    const QByteArray state = toJson(numberedState(7));
    const auto changed = [&](const char *from, const char *to) {
        QByteArray other = state;
        EXPECT_TRUE(other.contains(from)) << from;
        return other.replace(from, to);
    };
    PersistedState none = numberedState(7);
    none.snapshots.clear();
    const struct {
        const char *what;
        QByteArray bytes;
    } cases[] = {
        {"no snapshots", toJson(none)},
        {"white space", changed(R"("snapshots":[)", "\"snapshots\" : [\n")},
        {"another order of a snapshot's keys",
         changed(R"({"id":"00000000-0000-0000-0000-000000000000","trackedKeywordId")",
                 R"({"new":1,"id":"00000000-0000-0000-0000-000000000000","trackedKeywordId")")},
        {"snapshots twice", changed(R"("snapshots":[)", R"("snapshots":[],"snapshots":[)")},
        {"another key at the end", changed(R"("competitors":[])", R"("competitors":[],"x":[{}])")},
        {"no competitors", changed(R"(,"competitors":[])", "")},
        {"snapshots inside another value", R"({"x":)" + state + "}"},
        {"snapshots inside another value too",
         R"({"x":{"snapshots":[{"id":"1"},{"id":"2"}],"competitors":[]},)" + state.mid(1)},
        {"a list of records inside a snapshot",
         changed(R"("keyword":"keyword 3 of)",
                 R"("new":[{"id":"1"},{"id":"2"},{"id":"3"}],"keyword":"keyword 3 of)")},
        {"cut off", state.left(state.size() / 2)},
        {"a broken snapshot", changed(R"("difficultyScore":0)", R"("difficultyScore":"0")")},
        {"a missing comma", changed(R"(},{"id":)", R"(}{"id":)")},
        {"a bracket too many", changed(R"(},{"id":)", R"(}],{"id":)")},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.what);
        for (const qsizetype pieceSize : {64, 5'000, 100'000})
            EXPECT_EQ(readByPieces(one.bytes, pieceSize), readWhole(one.bytes)) << pieceSize;
    }
}

TEST(StateReader, TextsThatLookLikePlacesToCutAreTexts)
{
    PersistedState state = numberedState(7);
    auto snapshot = std::make_shared<KeywordSnapshot>(*state.snapshots[3]);
    snapshot->keyword = QStringLiteral(R"(x},{"id":"y"}],"competitors":["snapshots":[{"id":")");
    state.snapshots[3] = snapshot;
    state.apps[0].appName = snapshot->keyword;
    const QByteArray bytes = toJson(state);
    EXPECT_TRUE(canBeCut(bytes, 1'000));
    for (const qsizetype pieceSize : {64, 1'000, 10'000})
        EXPECT_EQ(readByPieces(bytes, pieceSize), bytes) << pieceSize;
}

TEST(StateReader, ManyAppsKeywordsAndCompetitorsAroundTheSnapshotsDoNoHarm)
{
    PersistedState state = numberedState(7);
    for (int i = 0; i < 3'000; ++i) {
        state.apps.append(state.apps[0]);
        state.trackedKeywords.append(TrackedKeyword());
        state.competitors.append(TrackedCompetitor());
    }
    const QByteArray bytes = toJson(state);
    EXPECT_TRUE(canBeCut(bytes, 1'000));
    EXPECT_EQ(readByPieces(bytes, 1'000), bytes);
}

TEST(StateReader, AnyBrokenByteHasTheOutcomeThatItHasInTheWholeText)
{
    PersistedState state = numberedState(7);
    state.snapshots.resize(3);
    for (SharedSnapshot &one : state.snapshots) {
        auto shorter = std::make_shared<KeywordSnapshot>(*one);
        shorter->popularityStatus = QStringLiteral("ok");
        one = std::move(shorter);
    }
    const QByteArray bytes = toJson(state);
    ASSERT_LT(bytes.size(), 3'000);
    ASSERT_TRUE(canBeCut(bytes, 100));
    const auto folder = scratchFolder();
    const QString path = folder->filePath(QStringLiteral("state.json"));
    for (qsizetype place = 0; place < bytes.size(); ++place) {
        for (const char byte : {'"', '\\', '{', ']', ',', '\0'}) {
            QByteArray broken = bytes;
            broken[place] = byte;
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(broken);
            file.close();
            ASSERT_EQ(outcomeOf([&] { return readState(FileReader(path), 100); }),
                      readWhole(broken))
                << place << ' ' << byte;
        }
    }
}

RC_GTEST_PROP(StateReader, AnyStateInAnyPiecesIsTheState, ())
{
    PersistedState state;
    state.apps = *rc::gen::arbitrary<QList<AppProfile>>();
    state.trackedKeywords = *rc::gen::arbitrary<QList<TrackedKeyword>>();
    state.competitors = *rc::gen::arbitrary<QList<TrackedCompetitor>>();
    for (const KeywordSnapshot &snapshot :
         *rc::gen::resize(20, rc::gen::arbitrary<std::vector<KeywordSnapshot>>()))
        state.snapshots.push_back(std::make_shared<const KeywordSnapshot>(snapshot));
    const QByteArray bytes = toJson(state);
    const auto pieceSize = *rc::gen::inRange<qsizetype>(1, bytes.size() + 10);
    RC_ASSERT(readByPieces(bytes, pieceSize) == bytes);
    RC_ASSERT(canBeCut(bytes, pieceSize) == !state.snapshots.empty());
}

} // namespace
} // namespace veltrix
