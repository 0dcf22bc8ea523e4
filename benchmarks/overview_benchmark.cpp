// SPDX-License-Identifier: GPL-3.0-or-later
// The Overview of 100 apps with 60 keywords each and a year of days, beside that of one app: from
// the start of store and window to the painted page, and a step of its filter.
#include "effects/atomic_file.h"
#include "effects/sqlite_database.h"
#include "effects/system_clock.h"
#include "json/json_writer.h"
#include "own_process.h"
#include "ratio.h"
#include "store/aso_store.h"
#include "store/history_database.h"
#include "ui/measuring/measuring_status.h"
#include "ui/overview/movers_model.h"
#include "ui/overview/overview_page.h"
#include "ui_kit/theme/theme_controller.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/text_field.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <random>

namespace
{

using namespace veltrix;

constexpr int keywordsOfApp = 60;
constexpr int days = 365;
/// What the state file keeps of each keyword.
constexpr int daysInFile = 2;
/// What a change may take to be seen without a visible delay, in seconds.
constexpr double frame = 0.016;
constexpr QSize pageSize{1032, 760};

class NoArtwork final : public ArtworkLoading
{
public:
    Task<QByteArray> load(Url, std::stop_token) override { throw Error(QStringLiteral("none")); }
};

class LightScheme final : public ColorSchemeSource
{
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return ColorScheme::Light; }
};

QUuid numbered(int number, ushort kind)
{
    return {uint(number), kind, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

/// Ranks that wander a few places a day.
class Ranks
{
public:
    explicit Ranks(int keyword) : m_random(unsigned(keyword)), m_rank(1 + keyword % 90) {}
    int next()
    {
        m_rank = std::clamp(m_rank + int(m_random() % 5) - 2, 1, 100);
        return m_rank;
    }

private:
    std::minstd_rand m_random;
    int m_rank;
};

/// A data folder of so many apps: the newest days in the state file, the others in the history,
/// where the disk is not waited for.
void fill(const QString &folder, int apps, Date now)
{
    QDir().mkpath(folder);
    const QString path = folder + QStringLiteral("/history.sqlite");
    HistoryDatabase::openOrCreate(path);
    SqliteDatabase database(path);
    database.execute("PRAGMA synchronous = OFF; BEGIN");
    SqliteStatement number = database.prepare("INSERT INTO keyword VALUES (?1, ?2)");
    SqliteStatement observation =
        database.prepare("INSERT INTO observation VALUES (?1, ?2, ?3, ?4)");
    PersistedState state;
    for (int i = 0; i < apps; ++i) {
        AppProfile app;
        app.id = numbered(i, 1);
        app.trackId = 1 + i;
        app.appName = QStringLiteral("Sample App %1").arg(i + 1);
        app.country = QStringLiteral("US");
        app.sortOrder = i;
        state.apps.append(app);
    }
    for (int k = 0; k < apps * keywordsOfApp; ++k) {
        TrackedKeyword keyword;
        keyword.id = numbered(k, 2);
        keyword.appId = numbered(k / keywordsOfApp, 1);
        keyword.keyword = QStringLiteral("keyword %1").arg(k);
        keyword.country = QStringLiteral("US");
        keyword.createdAt = now - Seconds(days * secondsPerDay);
        state.trackedKeywords.append(keyword);
        number.bind(1, std::int64_t(k));
        number.bind(2, keyword.id.toRfc4122());
        number.run();
        Ranks ranks(k);
        for (int ago = days - 1; ago >= 0; --ago) {
            const Date at = now - Seconds(60 + ago * secondsPerDay);
            const int rank = ranks.next();
            if (ago < daysInFile) {
                auto made = std::make_shared<KeywordSnapshot>();
                made->id = numbered(k * days + ago, 3);
                made->trackedKeywordId = keyword.id;
                made->keyword = keyword.keyword;
                made->country = keyword.country;
                made->fetchedAt = at;
                made->position = rank;
                state.snapshots.push_back(std::move(made));
                continue;
            }
            observation.bind(1, std::int64_t(k));
            observation.bind(2, referenceSeconds(at));
            observation.bind(3, numbered(k * days + ago, 3).toRfc4122());
            observation.bind(4, std::int64_t(rank));
            observation.run();
        }
    }
    database.execute("COMMIT");
    writeFileAtomically(folder + QStringLiteral("/state.json"), toJson(state));
}

/// Store and page over a data folder.
struct Program {
    std::unique_ptr<ASOStore> store;
    NoArtwork artwork;
    ArtworkImages images{artwork};
    std::unique_ptr<MeasuringStatus> measuring;
    std::unique_ptr<OverviewPage> page;
    QImage picture{pageSize, QImage::Format_RGB32};

    explicit Program(const QString &folder)
    {
        ASOStore::Arguments arguments;
        arguments.persistenceURL = folder + QStringLiteral("/state.json");
        arguments.clock = std::make_shared<SystemClock>();
        store = std::make_unique<ASOStore>(std::move(arguments));
        measuring = std::make_unique<MeasuringStatus>(store->refreshes());
        page = std::make_unique<OverviewPage>(*store, images, *measuring);
        page->resize(pageSize);
    }
    void paint()
    {
        QCoreApplication::processEvents();
        QPainter painter(&picture);
        page->render(&painter);
    }
    void firstFrame()
    {
        page->show();
        paint();
    }
    void readHistory()
    {
        bool isRead = false;
        TaskScope scope;
        scope.own(wait(*store, isRead, scope.token()));
        while (!isRead)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
    static Task<void> wait(ASOStore &store, bool &isRead, std::stop_token stop)
    {
        co_await store.rankDaysRead(stop);
        isRead = true;
    }
};

/// A field that is narrowed or widened by a step, until cards and movers are painted anew.
void filter(Program &program, bool &isNarrow)
{
    isNarrow = !isNarrow;
    auto *field = program.page->findChild<TextField *>(QStringLiteral("overviewSearch"));
    field->setText(isNarrow ? QStringLiteral("7") : QString());
    Q_EMIT field->returnPressed();
    program.paint();
    const MoversModel &movers = program.page->movers();
    require((movers.rowCount() < movers.entryCount()) == isNarrow, "the filter filters");
}

void measure(const QString &many, const QString &one)
{
    constexpr int rounds = 11;
    const auto start = [](const QString &folder, TimeOf which) {
        return secondsOf(
            [&] {
                Program program(folder);
                program.firstFrame();
                require(program.page->movers().entryCount() > 0, "there are movers");
            },
            which);
    };
    std::vector<double> starts;
    const Ratio quotient =
        quotients([&] { return starts.emplace_back(start(many, TimeOf::Processor)); },
                  [&] { return start(one, TimeOf::Processor); }, rounds);
    const Spread once = spreadOf(starts);
    report("start to painted overview of 100 apps, a year of days, times 500 ms",
           sharesOf(once, 0.5), atMost(1), inWords(once.median, Unit::Time) + " of 500 ms");
    reportDetail("the same beside one app", quotient);

    Program large(many);
    Program small(one);
    large.firstFrame();
    small.firstFrame();
    const double reading = secondsOf([&] { large.readHistory(); }, TimeOf::Wall);
    reportDetail("reading the history of 100 apps beside the window", spreadOf({reading}),
                 "s of the wall");
    small.readHistory();
    require(large.store->rankDays(numbered(7, 2)).isWhole(), "everything is known");
    bool isLargeNarrow = false;
    bool isSmallNarrow = false;
    std::vector<double> steps;
    const Ratio growth = quotients(
        [&] { return steps.emplace_back(secondsOf([&] { filter(large, isLargeNarrow); })); },
        [&] { return secondsOf([&] { filter(small, isSmallNarrow); }); }, 41);
    const Spread step = spreadOf(steps);
    report("a step of the overview's filter with 100 apps, frames of 16 ms", sharesOf(step, frame),
           atMost(1), inWords(step.median, Unit::Time) + " of 16 ms");
    reportDetail("the same beside one app", growth);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QApplication application(argc, argv);
    LightScheme scheme;
    const ThemeController theme(scheme);
    const QTemporaryDir folder;
    const Date now = SystemClock().now();
    fill(folder.filePath(QStringLiteral("many")), 100, now);
    fill(folder.filePath(QStringLiteral("one")), 1, now);
    measure(folder.filePath(QStringLiteral("many")), folder.filePath(QStringLiteral("one")));
    return 0;
}
