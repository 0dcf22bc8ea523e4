// SPDX-License-Identifier: GPL-3.0-or-later
// Starts and saves under every fault of every file call. The first argument names the scene. Each
// fault has a process and a folder of its own; what went wrong is printed, a line each.
#include "effects/data_folder_lock.h"
#include "effects/system_clock.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/aso_store.h"
#include "store/history_database.h"
#include "store/scratch_folder.h"
#include "support/file_faults.h"

#include <QCoreApplication>
#include <QDir>
#include <QThread>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <set>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veltrix
{
namespace
{

constexpr const char *appId = "00000000-0000-0000-0000-000000000001";

PersistedState stateOf(const QStringList &keywords)
{
    PersistedState state;
    AppProfile app;
    app.id = QUuid(QString::fromLatin1(appId));
    app.trackId = 11;
    state.apps.append(app);
    for (const QString &keyword : keywords) {
        TrackedKeyword tracked;
        tracked.id = QUuid::createUuid();
        tracked.appId = app.id;
        tracked.keyword = keyword;
        tracked.country = QStringLiteral("US");
        state.trackedKeywords.append(tracked);
    }
    return state;
}

QByteArray stateWith(const QStringList &keywords)
{
    return toJson(stateOf(keywords));
}

/// The same with so many days of measurements of each.
QByteArray stateWith(const QStringList &keywords, int days)
{
    PersistedState state = stateOf(keywords);
    for (int day = 0; day < days; ++day) {
        for (const TrackedKeyword &keyword : std::as_const(state.trackedKeywords)) {
            auto snapshot = std::make_shared<KeywordSnapshot>();
            snapshot->id = QUuid::createUuid();
            snapshot->trackedKeywordId = keyword.id;
            snapshot->keyword = keyword.keyword;
            snapshot->country = keyword.country;
            snapshot->fetchedAt = startOfUtcDay(9'000 + day);
            state.snapshots.push_back(std::move(snapshot));
        }
    }
    return toJson(state);
}

/// What a child found out; in memory that both share.
struct Verdict {
    int calls;
    char failedCall[32];
    char complaint[4096];
};

/// One process under one fault.
class Trial
{
public:
    Trial(QString folder, Verdict &verdict) : m_folder(std::move(folder)), m_verdict(verdict)
    {
        // What is printed is looked at afterwards.
        m_output = ::memfd_create("output", 0);
        ::dup2(m_output, STDOUT_FILENO);
        ::dup2(m_output, STDERR_FILENO);
    }

    [[nodiscard]] QString path(const char *name) const
    {
        return m_folder + u'/' + QString::fromLatin1(name);
    }
    [[nodiscard]] QString statePath() const { return path("data/state.json"); }

    void put(const QByteArray &content, const char *name = "data/state.json") const
    {
        writeFileAtomically(path(name), content);
    }

    void begin(const FileFault &fault) { beginFileFaults(fault); }
    void end()
    {
        m_verdict.calls = endFileFaults();
        std::strncpy(m_verdict.failedCall, failedFileCall(), sizeof(m_verdict.failedCall) - 1);
    }

    void start()
    {
        lock = std::make_unique<DataFolderLock>(path("data"));
        lock->acquire();
        ASOStore::Arguments arguments;
        arguments.persistenceURL = statePath();
        arguments.clock = std::make_shared<SystemClock>();
        arguments.folderLock = lock.get();
        arguments.stateFileLimit = stateFileLimit;
        store = std::make_unique<ASOStore>(std::move(arguments));
    }

    void add(const char *keyword)
    {
        ITunesAppResult app;
        app.trackId = 11;
        try {
            const QUuid id = store->addApp(app, QStringLiteral("US")).id;
            finishSaving();
            store->addTrackedKeyword(id, QString::fromLatin1(keyword), QStringLiteral("US"));
            finishSaving();
            added = true;
        } catch (const StoreError &) {
            refused = true;
        }
    }

    /// One save after the other, so that the calls have an order. Then this thread has its turn.
    void finishSaving()
    {
        store->waitUntilSaved();
        m_stepsOfSaves = durabilityTrace();
        QCoreApplication::sendPostedEvents();
    }

    /// Until nothing is on the way to the history.
    void finishMoving()
    {
        finishSaving();
        while (store->historyMove()) {
            QThread::msleep(1);
            store->waitUntilSaved();
        }
        m_stepsOfSaves = durabilityTrace();
    }

    /// How many measurements there are, wherever they are; each counts once.
    [[nodiscard]] qsizetype measurements() const
    {
        QSet<QUuid> ids;
        try {
            const auto state = fromJson<PersistedState>(readWholeFile(statePath()));
            for (const SharedSnapshot &snapshot : state.snapshots)
                ids.insert(snapshot->id);
            auto history = HistoryDatabase::open(path("data/history.sqlite"));
            for (const TrackedKeyword &keyword : state.trackedKeywords) {
                for (const SharedSnapshot &snapshot :
                     history ? history->records(keyword.id) : std::vector<SharedSnapshot>())
                    ids.insert(snapshot->id);
            }
        } catch (const Error &) {
            return -1;
        }
        return ids.size();
    }

    void require(bool holds, const char *what)
    {
        if (holds)
            return;
        const auto problem = store->persistenceProblem();
        const size_t length = std::strlen(m_verdict.complaint);
        std::snprintf(m_verdict.complaint + length, sizeof(m_verdict.complaint) - length,
                      "NOT %s [problem: %s]; ", what,
                      qUtf8Printable(problem ? problem->text : QStringLiteral("none")));
    }

    /// Some file in the folders has these very bytes.
    [[nodiscard]] bool isKept(const QByteArray &bytes) const
    {
        for (const char *folder : {"data", "elsewhere"}) {
            const QDir dir(path(folder));
            for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden)) {
                if (readWholeFile(dir.filePath(name)) == bytes)
                    return true;
            }
        }
        return false;
    }

    [[nodiscard]] QStringList savedKeywords() const
    {
        QStringList keywords;
        try {
            const auto state = fromJson<PersistedState>(readWholeFile(statePath()));
            for (const TrackedKeyword &keyword : state.trackedKeywords)
                keywords.append(keyword.keyword);
        } catch (const Error &) {
            keywords.append(QStringLiteral("unreadable"));
        }
        return keywords;
    }

    [[nodiscard]] QStringList keywordsInMemory() const
    {
        QStringList keywords;
        for (const TrackedKeyword &keyword : store->trackedKeywords())
            keywords.append(keyword.keyword);
        return keywords;
    }

    [[nodiscard]] bool hasPrinted(const char *line) const
    {
        std::fflush(stdout);
        std::array<char, 16384> text{};
        const ssize_t length = ::pread(m_output, text.data(), text.size() - 1, 0);
        return QByteArray(text.data(), length).contains(line);
    }

    /// What holds whatever has failed: `before` is what the user had.
    void requireNothingLostNorSilent(const QByteArray &before, const QStringList &keywordsBefore)
    {
        const auto problem = store->persistenceProblem();
        using Remedy = PersistenceProblem::Remedy;
        const bool old = keywordsInMemory().mid(0, keywordsBefore.size()) == keywordsBefore;
        require(isKept(before) || (added && old && savedKeywords() == keywordsInMemory()),
                "everything kept");
        require(old || problem.has_value(), "missing keywords explained");
        require(added || (refused && !store->isStateRead()), "refused only when not read");
        if (!store->isStateRead()) {
            require(problem && problem->remedy == Remedy::TryAgainOrBeginAnew, "offered to read");
            require(hasPrinted("ASOStore load failed: "), "the failed load printed");
            require(keywordsInMemory().isEmpty(), "nothing shown that was not read");
        }
        if (store->hasUnsavedChange()) {
            require(problem && problem->remedy == Remedy::TryAgain, "offered to save again");
            require(hasPrinted("ASOStore save failed: "), "the failed save printed");
        } else if (added) {
            require(savedKeywords() == keywordsInMemory(), "saved what is said to be saved");
            // A move that has failed, and says so, may have ended at a name that was not flushed.
            if (!problem || !problem->text.contains(QStringLiteral("Older measurements")))
                requireLasting();
        }
        require(lock->isHeld() || problem.has_value(), "a missing lock told");
    }

    /// What is said to be saved was flushed, renamed and flushed, and a copy before that.
    void requireLasting()
    {
        const QByteArray &steps = m_stepsOfSaves;
        const qsizetype renamed = steps.lastIndexOf('r');
        const auto flushes = [](const QByteArray &part) {
            return part.contains('f') || part.contains('s');
        };
        require(renamed >= 0 && flushes(steps.left(renamed)) && flushes(steps.mid(renamed)),
                "flushed");
        const qsizetype linked = steps.lastIndexOf('l');
        require(linked < 0 || linked > renamed || flushes(steps.mid(linked, renamed - linked)),
                "the copy flushed");
    }

    /// The fault is gone: all comes right.
    void requireHealed(const QStringList &expected)
    {
        if (store->persistenceProblem())
            store->retryPersistence();
        finishSaving();
        // Where there is no file, only the user can say that there never was one.
        if (!store->isStateRead() && !QFileInfo::exists(statePath()))
            store->beginAnew();
        finishSaving();
        if (refused) {
            refused = false;
            add("harbour");
        }
        const auto problem = store->persistenceProblem();
        require(store->isStateRead() && !store->hasUnsavedChange(), "healed");
        require(!problem || problem->remedy == PersistenceProblem::Remedy::Dismiss,
                "nothing left to do");
        require(savedKeywords() == expected, "all saved in the end");
    }

    std::unique_ptr<DataFolderLock> lock;
    std::unique_ptr<ASOStore> store;
    bool added = false;
    bool refused = false;
    qint64 stateFileLimit = ASOStore::usualStateFileLimit;

private:
    QString m_folder;
    Verdict &m_verdict;
    int m_output;
    QByteArray m_stepsOfSaves;
};

using Scene = std::function<void(Trial &, const FileFault &)>;

const QStringList twoKeywords{QStringLiteral("moon"), QStringLiteral("tide")};
const QStringList threeKeywords = twoKeywords + QStringList{QStringLiteral("harbour")};
const QStringList oneKeyword{QStringLiteral("harbour")};

/// A start on what was saved, and a change.
void startAndSave(Trial &trial, const FileFault &fault)
{
    const QByteArray before = stateWith(twoKeywords);
    trial.put(before);
    trial.begin(fault);
    trial.start();
    trial.add("harbour");
    trial.end();
    trial.requireNothingLostNorSilent(before, twoKeywords);
    trial.requireHealed(threeKeywords);
}

/// The first start of all.
void firstStart(Trial &trial, const FileFault &fault)
{
    trial.put("something of the user's", "data/notes.txt");
    trial.begin(fault);
    trial.start();
    trial.add("harbour");
    trial.end();
    trial.requireNothingLostNorSilent("something of the user's", {});
    trial.requireHealed(oneKeyword);
}

void damagedFile(Trial &trial, const FileFault &fault)
{
    const QByteArray damaged = stateWith(twoKeywords).chopped(20);
    trial.put(damaged);
    trial.begin(fault);
    trial.start();
    trial.add("harbour");
    trial.end();
    trial.requireNothingLostNorSilent(damaged, twoKeywords);
    trial.requireHealed(oneKeyword);
    trial.require(trial.isKept(damaged), "the damaged file kept to the end");
}

/// A backup is restored while the program runs.
void foreignFile(Trial &trial, const FileFault &fault)
{
    trial.put(stateWith({}));
    trial.start();
    const QByteArray restored = stateWith(twoKeywords);
    trial.put(restored);
    trial.begin(fault);
    trial.add("harbour");
    trial.end();
    trial.requireNothingLostNorSilent(restored, {});
    trial.requireHealed(oneKeyword);
    trial.require(trial.isKept(restored), "the restored file kept to the end");
    trial.require(trial.store->persistenceProblem().has_value(), "the restored file told");
}

/// The user gives up a file that cannot be read.
void beginningAnew(Trial &trial, const FileFault &fault)
{
    const QByteArray before = stateWith(twoKeywords);
    trial.put(before);
    trial.begin({1, EIO, FileFault::Lasts::FromThenOn});
    trial.start();
    trial.end();
    trial.require(!trial.store->isStateRead(), "unread at first");
    trial.begin(fault);
    trial.store->beginAnew();
    trial.finishSaving();
    const bool isNew = trial.store->isStateRead();
    trial.end();
    trial.require(trial.isKept(before), "the old file kept");
    if (isNew) {
        if (!trial.store->hasUnsavedChange())
            trial.requireLasting();
        trial.require(trial.savedKeywords().isEmpty(), "begun with nothing");
        trial.add("harbour");
        trial.requireHealed(oneKeyword);
        trial.require(trial.isKept(before), "the old file kept to the end");
    } else {
        trial.require(trial.savedKeywords() == twoKeywords, "the old file in its place");
        trial.require(
            trial.store->persistenceProblem()->text.contains(QStringLiteral("Beginning anew")),
            "told why it did not begin anew");
        trial.refused = true;
        trial.requireHealed(threeKeywords);
    }
}

/// The state file is a link to another folder.
void linkedFile(Trial &trial, const FileFault &fault)
{
    const QByteArray before = stateWith(twoKeywords);
    QDir().mkpath(trial.path("elsewhere"));
    trial.put(before, "elsewhere/real.json");
    QFile::link(trial.path("elsewhere/real.json"), trial.statePath());
    trial.begin(fault);
    trial.start();
    trial.add("harbour");
    trial.end();
    trial.requireNothingLostNorSilent(before, twoKeywords);
    trial.requireHealed(threeKeywords);
    trial.require(QFileInfo(trial.statePath()).isSymLink(), "the link in its place");
}

/// The lock's file is removed while the program runs.
void removedLock(Trial &trial, const FileFault &fault)
{
    const QByteArray before = stateWith(twoKeywords);
    trial.put(before);
    trial.start();
    QFile::remove(trial.path("data/.veltrix.lock"));
    trial.begin(fault);
    trial.add("harbour");
    trial.end();
    trial.requireNothingLostNorSilent(before, twoKeywords);
    trial.requireHealed(threeKeywords);
    trial.add("lantern");
    trial.require(QFileInfo::exists(trial.path("data/.veltrix.lock")), "the lock taken again");
    trial.require(!trial.store->persistenceProblem(), "well in the end");
}

/// The state file is too long, so that its oldest days move to a history that is made for them.
void moving(Trial &trial, const FileFault &fault)
{
    constexpr int days = 12;
    const QByteArray before = stateWith(twoKeywords, days);
    trial.stateFileLimit = before.size() / 2;
    trial.put(before);
    trial.begin(fault);
    trial.start();
    trial.add("harbour");
    trial.finishMoving();
    trial.end();
    trial.require(trial.measurements() == 2 * days, "every measurement there");
    trial.requireNothingLostNorSilent(before, twoKeywords);
    trial.requireHealed(threeKeywords);
    // After a failure it does not try at every save.
    for (int i = 0; i < 4; ++i)
        trial.add(qPrintable(QStringLiteral("keyword %1").arg(i)));
    trial.finishMoving();
    trial.require(trial.measurements() == 2 * days, "every measurement there to the end");
    trial.require(QFileInfo(trial.statePath()).size() <= trial.stateFileLimit, "moved in the end");
}

Scene sceneNamed(const QString &name)
{
    const std::map<QString, Scene> scenes{{QStringLiteral("start-and-save"), startAndSave},
                                          {QStringLiteral("first-start"), firstStart},
                                          {QStringLiteral("damaged"), damagedFile},
                                          {QStringLiteral("foreign"), foreignFile},
                                          {QStringLiteral("begin-anew"), beginningAnew},
                                          {QStringLiteral("linked"), linkedFile},
                                          {QStringLiteral("moving"), moving},
                                          {QStringLiteral("removed-lock"), removedLock}};
    return scenes.at(name);
}

/// Runs the scene in a process of its own. False when that process did not end well.
bool runTrial(const Scene &scene, const FileFault &fault, Verdict &verdict)
{
    verdict = {};
    const auto folder = scratchFolder();
    QDir().mkpath(folder->filePath(QStringLiteral("data")));
    const pid_t child = ::fork();
    if (child == 0) {
        Trial trial(folder->path(), verdict);
        scene(trial, fault);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int runScene(const QString &name)
{
    const Scene scene = sceneNamed(name);
    auto *verdict = static_cast<Verdict *>(::mmap(nullptr, sizeof(Verdict), PROT_READ | PROT_WRITE,
                                                  MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    int trials = 0;
    std::set<std::string> failed;
    // What disks have, and what the code takes for something else than a failure.
    std::vector<int> codes{EIO,     EACCES, ENOENT, ENOSPC,     ENOMEM, ESTALE, EROFS,
                           ENOTDIR, EEXIST, EAGAIN, EOPNOTSUPP, EINVAL, EINTR};
    // A database makes many more calls, and takes every failure for one.
    if (name == u"moving")
        codes = {EIO, ENOSPC, EINTR};
    for (const int code : codes) {
        for (const auto lasts : {FileFault::Lasts::Once, FileFault::Lasts::FromThenOn}) {
            // A call that is interrupted for ever is not a fault of a disk.
            if (code == EINTR && lasts == FileFault::Lasts::FromThenOn)
                continue;
            // Until the fault lies behind the last call.
            for (int call = 0; call == 0 || call <= verdict->calls + 1; ++call) {
                const bool ended = runTrial(scene, {call, code, lasts}, *verdict);
                ++trials;
                failed.insert(verdict->failedCall);
                if (ended && !*verdict->complaint)
                    continue;
                std::printf("%s at call %d (%s), %s: %s%s\n", std::strerror(code), call,
                            verdict->failedCall,
                            lasts == FileFault::Lasts::Once ? "once" : "from then on",
                            ended ? "" : "it crashed; ", verdict->complaint);
            }
        }
    }
    std::printf("trials: %d\nfailed calls:", trials);
    for (const std::string &call : failed)
        std::printf(" %s", call.c_str());
    std::printf("\n");
    return 0;
}

} // namespace
} // namespace veltrix

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return veltrix::runScene(QCoreApplication::arguments().value(1));
}
