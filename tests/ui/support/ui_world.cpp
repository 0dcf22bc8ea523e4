// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_world.h"

#include "effects/atomic_file.h"
#include "json/json_writer.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace veltrix
{

namespace
{

const std::vector<std::pair<QRgb, QRgb>> &gradients()
{
    static const std::vector<std::pair<QRgb, QRgb>> colors{
        {0xFFFF8A65, 0xFFF4511E}, {0xFF4FC3F7, 0xFF1976D2}, {0xFF9CCC65, 0xFF558B2F},
        {0xFFBA68C8, 0xFF7B1FA2}, {0xFFFFD54F, 0xFFFF9800}, {0xFF4DB6AC, 0xFF00796B},
        {0xFFF06292, 0xFFC2185B}, {0xFF90A4AE, 0xFF455A64}};
    return colors;
}

QByteArray gradientPng(const QString &url)
{
    const auto &[from, to] = gradients()[qChecksum(url.toUtf8()) % gradients().size()];
    // Screenshots are upright.
    const bool isScreenshot = url.contains(QLatin1String("screens.example"));
    QImage image(100, isScreenshot ? 217 : 100, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, image.width(), image.height());
    gradient.setColorAt(0, QColor::fromRgb(from));
    gradient.setColorAt(1, QColor::fromRgb(to));
    painter.fillRect(image.rect(), gradient);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

Url icon(const QString &name)
{
    return *Url::fromText(QStringLiteral("https://icons.example/%1.png").arg(name));
}

AppProfile app(std::int64_t trackId, const char *name, const char *country)
{
    AppProfile profile;
    profile.id = QUuid(quint32(trackId), 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 1);
    profile.trackId = trackId;
    profile.appName = text(name);
    profile.platform = QStringLiteral("iPhone");
    profile.country = text(country);
    profile.iconURL = icon(profile.appName);
    return profile;
}

KeywordSnapshot snapshot(const TrackedKeyword &keyword, const SampleKeyword &sample, int position,
                         Date fetchedAt, const QString &popularityVersion)
{
    KeywordSnapshot made;
    made.id = QUuid::createUuid();
    made.trackedKeywordId = keyword.id;
    made.keyword = keyword.keyword;
    made.country = keyword.country;
    made.fetchedAt = fetchedAt;
    made.difficultyScore = sample.difficulty;
    made.difficultyComponents.sampledAppCount = 10;
    if (position > 0)
        made.position = position;
    if (sample.popularity > 0)
        made.popularityMeasurement =
            PopularityMeasurement{sample.popularity,
                                  QString(popularity_source::quorvinCalibratedEstimate),
                                  popularityVersion,
                                  25,
                                  11,
                                  318.5};
    made.popularityStatus =
        sample.popularity > 0
            ? text("Estimated popularity using Quorvin v2.")
            : text("Popularity unavailable. Rankings were saved; try popularity again later.");
    made.popularityModelVersion = popularityVersion;
    made.scoringModelVersion = QString(currentScoringModelVersion);
    if (*sample.label)
        made.opportunity = OpportunityAssessment{62, text(sample.label), QString(), 40, false};
    for (int i = 0; i < 5; ++i)
        made.competitorIcons.append(icon(keyword.keyword + QString::number(i)));
    return made;
}

} // namespace

Task<QByteArray> FakeArtwork::load(Url url, std::stop_token stop)
{
    throwIfStopped(stop);
    asked.append(url.text());
    if (fails)
        throw FakeFailure();
    co_return gradientPng(url.text());
}

Task<DailyTimerState> FakeTiming::state(std::stop_token stop)
{
    throwIfStopped(stop);
    if (holds)
        co_await m_held.wait(stop);
    co_return known;
}

Task<void> FakeTiming::turnOn(DailyPlan plan, std::stop_token stop)
{
    throwIfStopped(stop);
    if (!refusal.isEmpty())
        throw DailyTimerError(refusal);
    known = DailyTimerState();
    known.isOn = true;
    known.plan = plan;
    co_return;
}

Task<void> FakeTiming::turnOff(std::stop_token stop)
{
    throwIfStopped(stop);
    if (!refusal.isEmpty())
        throw DailyTimerError(refusal);
    known = DailyTimerState();
    co_return;
}

/// A file in memory.
class FakeFiles::Output final : public FileOutput
{
public:
    explicit Output(FakeFiles &files) : m_files(files) {}

    Task<void> write(Piece piece, std::stop_token stop) override
    {
        throwIfStopped(stop);
        m_content += piece();
        if (!m_files.holds)
            co_return;
        const OneShot<Done> gate;
        m_files.m_held.push_back(gate);
        co_await gate.wait(stop);
    }
    Task<void> place(std::stop_token stop) override
    {
        throwIfStopped(stop);
        if (m_files.error)
            throw FileError(*m_files.error);
        m_files.saved = m_content;
        co_return;
    }

private:
    FakeFiles &m_files;
    QByteArray m_content;
};

void FakeFiles::choosePlace(QWidget *, const Request &request, Chosen chosen)
{
    requests.append(request);
    if (!cancels)
        chosen(QStringLiteral("/home/user/") + request.suggestedName,
               std::make_shared<Output>(*this));
}

void FakeFiles::release()
{
    for (const OneShot<Done> &gate : std::exchange(m_held, {}))
        gate.resolve({});
}

void FakeFiles::open(QWidget *, const Request &request,
                     std::function<void(const OpenedFile &)> done)
{
    requests.append(request);
    if (error || opened)
        done(read(QStringLiteral("/home/user/keywords.csv")));
}

FileExchange::OpenedFile FakeFiles::read(const QString &path)
{
    return {path.section(u'/', -1), error ? QByteArray() : opened.value_or(QByteArray()), error};
}

const std::vector<SampleKeyword> &sampleKeywords()
{
    static const std::vector<SampleKeyword> keywords{
        {"photo editor", "US", 0.2, "Worth Climbing", 78, 81, 37, 40},
        {"collage maker", "US", 4, "Good Target", 61, 44, 9, 11},
        {"film camera filter", "US", 4, "Sweet Spot", 67, 29, 2, -1},
        {"remove background", "US", 5, "Supporting", 42, 58, 21, 17},
        {"retro photo", "US", 5, "Good Target", 48, 33, 4, 4},
        {"passport photo booth", "US", 6, "Low Volume", 14, 21, 0, 48},
        {"light leak effect", "US", 6, "Sweet Spot", 55, 18, 1, 0},
        {"bildbearbeitung", "DE", 130, "Supporting", 37, 47, 18, 19},
        {"photo journal", "US", 131, "", 0, 35, 12, -1},
        {"polaroid frame", "US", 0, "", 0, 0, -1, -1},
        {"grain filter", "US", 0, "", 0, 0, -1, -1}};
    return keywords;
}

PersistedState sampleState(Date now, const QString &popularityVersion)
{
    PersistedState state;
    state.apps = {app(101, "Lumen Photo Editor", "US"), app(102, "Tidewater Journal", "GB"),
                  app(103, "Orchard Budget", "DE")};
    quint32 number = 0;
    for (const SampleKeyword &sample : sampleKeywords()) {
        TrackedKeyword keyword;
        keyword.id = QUuid(++number, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 2);
        keyword.appId = state.apps.first().id;
        keyword.keyword = text(sample.keyword);
        keyword.country = text(sample.country);
        keyword.createdAt = now - Seconds(3 * secondsPerDay);
        state.trackedKeywords.append(keyword);
        const auto add = [&](int position, Date fetchedAt) {
            state.snapshots.push_back(std::make_shared<const KeywordSnapshot>(
                snapshot(keyword, sample, position, fetchedAt, popularityVersion)));
        };
        if (sample.before >= 0)
            add(sample.before, now - Seconds(secondsPerDay));
        if (sample.position >= 0)
            add(sample.position, now - Seconds(60 * sample.minutesAgo));
    }
    for (int i = 0; i < 5; ++i) {
        TrackedCompetitor competitor;
        competitor.id = QUuid(quint32(i + 1), 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 3);
        competitor.appId = state.apps.first().id;
        competitor.trackId = 900 + i;
        competitor.name = QStringLiteral("Rival %1").arg(i + 1);
        competitor.country = QStringLiteral("US");
        state.competitors.append(competitor);
    }
    return state;
}

UiWorld::UiWorld(const PersistedState &state)
{
    writeFileAtomically(folder.filePath(QStringLiteral("state.json")), toJson(state));
    information.versionText = QStringLiteral("1.4 (27)");
    information.supportEmail = QStringLiteral("support@veltrix.example");
    information.privacyPolicy = QUrl(QStringLiteral("https://veltrix.example/privacy"));
    information.termsOfUse = QUrl(QStringLiteral("https://veltrix.example/terms"));
    restartStore();
}

UiWorld::~UiWorld() = default;

std::unique_ptr<UiWorld> UiWorld::sample()
{
    const VirtualClock start;
    return std::make_unique<UiWorld>(sampleState(start.now(), FakePopularity().version));
}

ASOStore::Arguments UiWorld::storeArguments() const
{
    return {folder.filePath(QStringLiteral("state.json")),
            client,
            KeywordPipeline{popularity, client, clock},
            discovery,
            clock,
            nullptr};
}

void UiWorld::restartStore()
{
    store.reset();
    store = std::make_unique<ASOStore>(storeArguments());
}

Task<std::optional<QStringList>> FakeSuggestions::suggest(QString prefix, QString country,
                                                          std::stop_token stop)
{
    asked.append(prefix + u'/' + country);
    mostInFlight = std::max(mostInFlight, ++inFlight);
    const auto atEnd = qScopeGuard([this] { --inFlight; });
    if (holds) {
        const OneShot<Done> held;
        m_held.push_back(held);
        co_await held.wait(stop);
    }
    if (fails)
        co_return std::nullopt;
    co_return terms.value(prefix);
}

void FakeSuggestions::release()
{
    for (const OneShot<Done> &held : std::exchange(m_held, {}))
        held.resolve({});
}

MainWindow::Collaborators UiWorld::collaborators()
{
    return {*store,
            artwork,
            preferences,
            files,
            information,
            timing,
            hasUpdater ? &updater : nullptr,
            [this](const QUrl &url) { openedUrls.append(url); },
            QUrl(QStringLiteral("https://apps.apple.com")),
            [this](ThemeChoice choice) { appliedThemes.append(choice); },
            [this] { ++dataFolderShown; },
            suggestions};
}

QList<ITunesAppResult> sampleResults()
{
    struct Line {
        std::int64_t id;
        const char *name;
        const char *seller;
        double stars;
        std::int64_t ratings;
        const char *updated;
    };
    const std::vector<Line> lines{
        {101, "Lumen Photo Editor", "Lumen Works", 4.8, 128402, "2026-11-12T08:00:00Z"},
        {201, "Foxglove Film Camera", "Brass Lens Studio", 4.7, 54120, "2026-10-30T08:00:00Z"},
        {202, "Grainy", "Northlight Labs", 4.6, 9120, "2026-09-02T08:00:00Z"},
        {203, "Dovetail Cam – Analog Photos and Retro Filters", "Pocket Optics", 4.8, 21987,
         "2026-11-01T08:00:00Z"},
        {204, "Quiet Aperture", "", 4.4, 1, ""},
        {205, "写真レトロ", "光学スタジオ", 3.9, 842, "2026-03-14T08:00:00Z"},
    };
    QList<ITunesAppResult> results;
    for (const Line &line : lines) {
        ITunesAppResult result;
        result.trackId = line.id;
        result.trackName = text(line.name);
        if (*line.seller)
            result.sellerName = text(line.seller);
        result.averageUserRating = line.stars;
        result.userRatingCount = line.ratings;
        if (*line.updated)
            result.currentVersionReleaseDate = text(line.updated);
        result.artworkUrl100 = icon(text(line.name)).text();
        results.append(result);
    }
    ITunesAppResult nameless;
    nameless.trackId = 206;
    results.append(nameless);
    return results;
}

} // namespace veltrix
