// SPDX-License-Identifier: GPL-3.0-or-later
// The window at scale: what sorting, filtering, changing and repainting cost with 10,000 keywords.
// Offscreen, so the figures are the program's own and not a display's.
#include "app/file_dialogs.h"
#include "effects/artwork_loading.h"
#include "effects/atomic_file.h"
#include "effects/daily_timer.h"
#include "effects/system_clock.h"
#include "generated_state.h"
#include "json/json_writer.h"
#include "memory_use.h"
#include "own_process.h"
#include "ratio.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/preferences/preferences.h"
#include "ui/shell/main_window.h"
#include "ui_kit/theme/theme_controller.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <string_view>

namespace
{

using namespace veltrix;

constexpr double megabyte = 1e6;
/// What a change may take to be seen without a visible delay, in seconds.
constexpr double frame = 0.016;

class NoArtwork final : public ArtworkLoading
{
public:
    Task<QByteArray> load(Url, std::stop_token) override { throw Error(QStringLiteral("none")); }
};

class NoTiming final : public DailyTiming
{
public:
    [[nodiscard]] Task<DailyTimerState> state(std::stop_token) override
    {
        co_return DailyTimerState();
    }
    Task<void> turnOn(DailyPlan, std::stop_token) override { co_return; }
    Task<void> turnOff(std::stop_token) override { co_return; }
};

class NoPreferences final : public Preferences
{
public:
    [[nodiscard]] QString preferredStorefrontCountry() const override
    {
        return QStringLiteral("US");
    }
    void setPreferredStorefrontCountry(const QString &) override {}
    [[nodiscard]] QString keywordTableColumns() const override { return {}; }
    void setKeywordTableColumns(const QString &) override {}
    [[nodiscard]] QByteArray windowGeometry() const override { return {}; }
    void setWindowGeometry(const QByteArray &) override {}
    [[nodiscard]] ThemeChoice theme() const override { return ThemeChoice::System; }
    void setTheme(ThemeChoice) override {}
    [[nodiscard]] DigestChoice digestChoice() const override { return {}; }
    void setDigestChoice(const DigestChoice &) override {}
};

class NoServices final : public ITunesClientProtocol, public PopularityProviding
{
public:
    Task<QList<ITunesAppResult>> search(QString, QString, std::int64_t, std::stop_token) override
    {
        throw Error(QStringLiteral("none"));
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t, QString, std::stop_token) override
    {
        throw Error(QStringLiteral("none"));
    }
    [[nodiscard]] QString modelVersion() const override { return QStringLiteral("none"); }
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey>, QString,
                                      std::stop_token) override
    {
        throw Error(QStringLiteral("none"));
    }
};

class NoFiles final : public FileExchange
{
public:
    void choosePlace(QWidget *, const Request &, Chosen) override {}
    void open(QWidget *, const Request &, std::function<void(const OpenedFile &)>) override {}
    OpenedFile read(const QString &) override { return {}; }
};

class LightScheme final : public ColorSchemeSource
{
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return ColorScheme::Light; }
};

/// Store and window over a state file.
struct Program {
    std::shared_ptr<NoServices> services = std::make_shared<NoServices>();
    std::shared_ptr<Clock> clock = std::make_shared<SystemClock>();
    std::unique_ptr<ASOStore> store;
    NoArtwork artwork;
    NoPreferences preferences;
    NoFiles files;
    NoTiming timing;
    std::unique_ptr<MainWindow> window;

    explicit Program(const QString &path)
    {
        store = std::make_unique<ASOStore>(ASOStore::Arguments{
            path, services, KeywordPipeline{services, services, clock}, services, clock, nullptr});
        window = std::make_unique<MainWindow>(MainWindow::Collaborators{
            *store, artwork, preferences, files, {}, timing, nullptr, {}, {}});
    }
};

void paint(QWidget &widget, QImage &picture)
{
    QPainter painter(&picture);
    widget.render(&painter);
}

QImage pictureFor(const QWidget &widget)
{
    return QImage(widget.size(), QImage::Format_RGB32);
}

/// Shows and paints a window once, as the first frame of a start does.
void firstFrame(QWidget &window)
{
    window.show();
    QCoreApplication::processEvents();
    QImage picture = pictureFor(window);
    paint(window, picture);
}

/// In a process of its own: prints by how much a window with the state's keywords has grown memory.
void showAndMeasure(const QString &path)
{
    resetPeakResident();
    const double before = residentBytes();
    Program program(path);
    firstFrame(*program.window);
    require(program.window->dashboard().model().rowCount() == 10'000, "10,000 rows");
    std::printf("%.0f\n", residentBytes() - before);
}

/// Turns a filter that leaves scattered rows on or off and paints the table.
void filter(Program &program, bool &isNarrow, QImage &picture)
{
    KeywordTableModel &model = program.window->dashboard().model();
    isNarrow = !isNarrow;
    model.setSearch(isNarrow ? QStringLiteral("1") : QString());
    QCoreApplication::processEvents();
    paint(program.window->dashboard().table(), picture);
    require((model.rowCount() < model.keywordCount()) == isNarrow, "the filter filters");
}

/// The same with a quick filter.
void filterQuickly(Program &program, bool &isNarrow, QImage &picture)
{
    KeywordTableModel &model = program.window->dashboard().model();
    isNarrow = !isNarrow;
    program.window->dashboard().showOnly(isNarrow ? QuickFilter::Top10 : QuickFilter::All);
    QCoreApplication::processEvents();
    paint(program.window->dashboard().table(), picture);
    require((model.rowCount() < model.keywordCount()) == isNarrow, "the quick filter filters");
}

/// A keyword that was measured, with the counts of the quick filters.
void changeOne(Program &program)
{
    const KeywordTableModel &model = program.window->dashboard().model();
    Q_EMIT program.store->keywordChanged(model.entryAt(2).row.id);
    QCoreApplication::processEvents();
}

/// What it takes to remove scattered keywords that are selected, in seconds of processor time. They
/// are there again afterwards.
struct RemovalTimes {
    /// The store's removal with the save, the table, and its next picture.
    double whole = 0;
    /// Of it what follows the store.
    double shown = 0;
    /// To put all of them back.
    double undone = 0;
};

RemovalTimes timesToRemove(Program &program, int count, QImage &picture)
{
    KeywordTableModel &model = program.window->dashboard().model();
    KeywordTableView &table = program.window->dashboard().table();
    const int before = model.rowCount();
    QItemSelection chosen;
    for (int i = 0; i < count; ++i) {
        const int row = int(qint64(i) * before / count);
        chosen.select(model.index(row, 0), model.index(row, model.columnCount() - 1));
    }
    table.selectionModel()->select(chosen, QItemSelectionModel::ClearAndSelect);
    const QList<QUuid> ids = table.selectedIds();
    require(ids.size() == count, "they are selected");
    const auto showRows = [&] {
        QCoreApplication::processEvents();
        paint(table, picture);
    };
    RemovalTimes times;
    RemovedTracking removed;
    times.whole = secondsOf([&] { removed = program.store->removeKeywords(ids); });
    times.shown = secondsOf(showRows);
    times.whole += times.shown;
    require(model.rowCount() == before - count, "they are gone");
    times.undone = secondsOf([&] {
        program.store->restore(std::move(removed));
        showRows();
    });
    require(model.rowCount() == before, "they are back");
    return times;
}

void largeTable(const QString &path)
{
    constexpr int rounds = 41;
    std::vector<double> memory;
    for (int i = 0; i < 5; ++i)
        memory.push_back(numbersFromSelf({QStringLiteral("show-and-measure"), path}, size_t(1))[0] /
                         megabyte);
    reportDetail("memory for window and store with 10,000 keywords", spreadOf(memory), "MB");
    reportDetail("size of their state file", spreadOf({double(QFile(path).size()) / megabyte}),
                 "MB");

    Program program(path);
    firstFrame(*program.window);
    KeywordTableModel &model = program.window->dashboard().model();
    KeywordTableView &table = program.window->dashboard().table();
    require(model.rowCount() == 10'000, "10,000 rows");

    QImage picture = pictureFor(table);
    QTableView empty;
    empty.resize(table.size());
    const auto paintEmpty = [&] {
        paint(empty, picture);
    };
    const auto change = [&](const char *what, auto &&make) {
        const Spread once = seconds(make, rounds);
        report((std::string(what) + ", frames of 16 ms").c_str(), sharesOf(once, frame), atMost(1),
               inWords(once.median, Unit::Time) + " of 16 ms");
        reportDetail("the same beside an empty table's repaint",
                     timesAsLong(make, paintEmpty, rounds));
    };
    change("full repaint of a table of 10,000 keywords", [&] { paint(table, picture); });

    bool up = false;
    const auto sortBy = [&](KeywordColumn column) {
        up = !up;
        const QUuid first = model.entryAt(0).row.id;
        model.sort(int(column), up ? Qt::AscendingOrder : Qt::DescendingOrder);
        paint(table, picture);
        require(model.entryAt(0).row.id != first, "the other end comes first");
    };
    sortBy(KeywordColumn::Difficulty);
    change("sorting them by a figure and repainting", [&] { sortBy(KeywordColumn::Difficulty); });
    sortBy(KeywordColumn::Keyword);
    change("sorting them by keyword and repainting", [&] { sortBy(KeywordColumn::Keyword); });

    bool narrow = false;
    change("filtering them and repainting", [&] { filter(program, narrow, picture); });
    model.setSearch(QString());
    QCoreApplication::processEvents();

    bool isQuick = false;
    change("choosing a quick filter and repainting",
           [&] { filterQuickly(program, isQuick, picture); });
    program.window->dashboard().showOnly(QuickFilter::All);
    QCoreApplication::processEvents();

    change("changing one visible keyword", [&] { changeOne(program); });
}

/// What a table of 10,000 keywords costs beside one of 100.
void growth(const QString &largePath, const QString &smallPath)
{
    constexpr int rounds = 11;
    Program large(largePath);
    Program small(smallPath);
    firstFrame(*large.window);
    firstFrame(*small.window);
    require(large.window->dashboard().model().rowCount() == 10'000, "10,000 rows");
    require(small.window->dashboard().model().rowCount() == 100, "100 rows");
    QImage picture = pictureFor(large.window->dashboard().table());

    std::vector<RemovalTimes> many;
    std::vector<RemovalTimes> few;
    const auto shown = quotients(
        [&] { return many.emplace_back(timesToRemove(large, 2'000, picture)).shown; },
        [&] { return few.emplace_back(timesToRemove(small, 30, picture)).shown; }, rounds);
    const auto spreadOfAll = [](const std::vector<RemovalTimes> &all, double RemovalTimes::*part) {
        std::vector<double> values;
        for (const RemovalTimes &times : all)
            values.push_back(times.*part);
        return spreadOf(values);
    };
    const Spread removing = spreadOfAll(many, &RemovalTimes::whole);
    report("removing 2,000 of 10,000 keywords, with store and save, times 100 ms",
           sharesOf(removing, 0.1), atMost(1), inWords(removing.median, Unit::Time) + " of 100 ms");
    reportDetail("the same for 30 of 100", inMilliseconds(spreadOfAll(few, &RemovalTimes::whole)),
                 "ms of processor");
    reportDetail("putting the 2,000 back", inMilliseconds(spreadOfAll(many, &RemovalTimes::undone)),
                 "ms of processor");
    report("showing that they are gone, times as long as for 30 of 100", shown, atMost(10));
    reportDetail("of it: 2,000 of 10,000", inMilliseconds(spreadOfAll(many, &RemovalTimes::shown)),
                 "ms of processor");

    bool isLargeNarrow = false;
    bool isSmallNarrow = false;
    report("filtering 10,000 rows, times as long as 100",
           timesAsLong([&] { filter(large, isLargeNarrow, picture); },
                       [&] { filter(small, isSmallNarrow, picture); }, rounds),
           atMost(5));
    large.window->dashboard().model().setSearch(QString());
    small.window->dashboard().model().setSearch(QString());
    QCoreApplication::processEvents();
    report("changing one of 10,000 keywords with the filters' counts, times as long as of 100",
           timesAsLong([&] { changeOne(large); }, [&] { changeOne(small); }, 41), atMost(2));
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QApplication application(argc, argv);
    LightScheme scheme;
    const ThemeController theme(scheme);
    if (argc == 3) {
        require(std::string_view(argv[1]) == "show-and-measure", "a known measurement");
        showAndMeasure(QFile::decodeName(argv[2]));
        return 0;
    }
    const QTemporaryDir folder;
    const auto savedWith = [&](int keywords) {
        PersistedState state = generatedState(keywords, 1);
        for (TrackedKeyword &keyword : state.trackedKeywords)
            keyword.appId = state.apps.first().id;
        const QString path = folder.filePath(QStringLiteral("%1.json").arg(keywords));
        writeFileAtomically(path, toJson(state));
        return path;
    };
    const QString large = savedWith(10'000);
    largeTable(large);
    growth(large, savedWith(100));
    return 0;
}
