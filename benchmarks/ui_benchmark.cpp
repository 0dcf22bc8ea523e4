// SPDX-License-Identifier: GPL-3.0-or-later
// The window at scale: start-up with a large state beside an empty window, and what sorting,
// filtering, measuring and repainting cost with 10,000 keywords. Offscreen, so the figures are the
// program's own and not a display's.
#include "clients/artwork_loading.h"
#include "effects/atomic_file.h"
#include "effects/system_clock.h"
#include "generated_state.h"
#include "memory_use.h"
#include "model/json_writer.h"
#include "ratio.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/shell/main_window.h"
#include "ui/shell/preferences.h"
#include "ui/theme/theme_controller.h"
#include "ui/widgets/artwork_images.h"
#include "ui/widgets/file_exchange.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace veltrix;

constexpr double milliseconds = 1e3;
constexpr double megabyte = 1e6;
constexpr double frame = 16;

void require(bool right, const char *what)
{
    if (!right) {
        std::fprintf(stderr, "Wrong result: %s\n", what);
        std::exit(1);
    }
}

class NoArtwork final : public ArtworkLoading
{
public:
    Task<QByteArray> load(Url, std::stop_token) override { throw Error(QStringLiteral("none")); }
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
    Task<PopularityAssessment> assess(QString, QString, QList<ITunesAppResult>,
                                      std::stop_token) override
    {
        throw Error(QStringLiteral("none"));
    }
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
    FileDialogs files{{}, {}};
    std::unique_ptr<MainWindow> window;

    explicit Program(const QString &path)
    {
        store = std::make_unique<ASOStore>(ASOStore::Arguments{
            path, services, KeywordPipeline{services, services, clock}, services, clock, nullptr});
        window = std::make_unique<MainWindow>(
            MainWindow::Collaborators{*store, artwork, preferences, files, {}, nullptr, {}, {}});
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

void startUp(const QString &path)
{
    const double empty = medianSeconds(
        [] {
            QWidget window;
            window.resize(1280, 800);
            firstFrame(window);
        },
        9);
    const double whole = medianSeconds(
        [&] {
            Program program(path);
            firstFrame(*program.window);
            require(program.window->dashboard().model().rowCount() > 0, "keywords are shown");
        },
        9);
    const double loading = medianSeconds(
        [&] {
            const auto services = std::make_shared<NoServices>();
            const auto clock = std::make_shared<SystemClock>();
            const ASOStore store({path, services, KeywordPipeline{services, services, clock},
                                  services, clock, nullptr});
        },
        9);
    std::printf("first painted window, 5,000 snapshots: %.1f ms (of it the state file %.1f ms); an "
                "empty window: %.1f ms; ratio without the process: %.2f\n",
                whole * milliseconds, loading * milliseconds, empty * milliseconds, whole / empty);
}

void largeTable(const QString &path)
{
    resetPeakResident();
    const double before = residentBytes();
    Program program(path);
    firstFrame(*program.window);
    const double memory = residentBytes() - before;
    KeywordTableModel &model = program.window->dashboard().model();
    KeywordTableView &table = program.window->dashboard().table();
    require(model.rowCount() == 10'000, "10,000 rows");
    std::printf("10,000 keywords: %.1f MB resident with store and window\n", memory / megabyte);

    QImage picture = pictureFor(table);
    const double repaint = medianSeconds([&] { paint(table, picture); }, 21);
    QTableView empty;
    empty.resize(table.size());
    const double reference = medianSeconds([&] { paint(empty, picture); }, 21);
    std::printf("full repaint: %.2f ms (goal %.0f), empty table %.2f ms, ratio %.1f\n",
                repaint * milliseconds, frame, reference * milliseconds, repaint / reference);

    bool up = false;
    const double sorting = medianSeconds(
        [&] {
            up = !up;
            model.sort(int(KeywordColumn::Difficulty),
                       up ? Qt::AscendingOrder : Qt::DescendingOrder);
            paint(table, picture);
        },
        21);
    const double byName = medianSeconds(
        [&] {
            up = !up;
            model.sort(int(KeywordColumn::Keyword), up ? Qt::AscendingOrder : Qt::DescendingOrder);
            paint(table, picture);
        },
        21);
    std::printf("sort and repaint: by figure %.2f ms, by keyword %.2f ms (goal %.0f), %.1f and "
                "%.1f empty repaints\n",
                sorting * milliseconds, byName * milliseconds, frame, sorting / reference,
                byName / reference);

    bool narrow = false;
    const double filtering = medianSeconds(
        [&] {
            narrow = !narrow;
            model.setSearch(narrow ? QStringLiteral("1") : QString());
            paint(table, picture);
        },
        21);
    model.setSearch(QString());
    require(model.rowCount() == 10'000, "all rows again");
    std::printf("filter and repaint: %.2f ms (goal %.0f), %.1f empty repaints\n",
                filtering * milliseconds, frame, filtering / reference);

    const QUuid some = model.entryAt(5'000).row.id;
    const double change = medianSeconds(
        [&] {
            Q_EMIT program.store->keywordChanged(some);
            QCoreApplication::processEvents();
        },
        21);
    std::printf("one measured keyword: %.2f ms (goal %.0f)\n", change * milliseconds, frame);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    LightScheme scheme;
    const ThemeController theme(scheme);
    const QTemporaryDir folder;
    const QString medium = folder.filePath(QStringLiteral("medium.json"));
    const QString large = folder.filePath(QStringLiteral("large.json"));
    writeFileAtomically(medium, toJson(generatedState(50, 100)));
    PersistedState state = generatedState(10'000, 1);
    for (TrackedKeyword &keyword : state.trackedKeywords)
        keyword.appId = state.apps.first().id;
    writeFileAtomically(large, toJson(state));
    startUp(medium);
    largeTable(large);
    return 0;
}
