// SPDX-License-Identifier: GPL-3.0-or-later
// A window's surroundings for tests and pictures: a store with apps, keywords and a history,
// made-up artwork, preferences and files in memory.
#pragma once

#include "effects/artwork_loading.h"
#include "effects/autocomplete_suggesting.h"
#include "effects/daily_timer.h"
#include "effects/one_shot.h"
#include "store/store_fixture.h"
#include "ui/preferences/preferences.h"
#include "ui/settings/updater_interface.h"
#include "ui/shell/main_window.h"
#include "ui_kit/theme/color_scheme_source.h"
#include "ui_kit/widgets/file_exchange.h"

#include <QHash>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace veltrix
{

/// Gradients in place of icons, the same for the same address.
class FakeArtwork final : public ArtworkLoading
{
public:
    Task<QByteArray> load(Url url, std::stop_token stop) override;

    QStringList asked;
    bool fails = false;
};

/// Suggestions out of a list.
class FakeSuggestions final : public AutocompleteSuggesting
{
public:
    Task<std::optional<QStringList>> suggest(QString prefix, QString country,
                                             std::stop_token stop) override;
    /// Lets every held call go on.
    void release();

    /// "photo ca/US" of each call.
    QStringList asked;
    /// By prefix; of others it suggests nothing.
    QHash<QString, QStringList> terms;
    bool fails = false;
    /// Does not answer until it is let.
    bool holds = false;
    /// Calls under way now, and the most that ever were.
    int inFlight = 0;
    int mostInFlight = 0;

private:
    std::vector<OneShot<Done>> m_held;
};

class FakePreferences final : public Preferences
{
public:
    [[nodiscard]] QString preferredStorefrontCountry() const override { return storefront; }
    void setPreferredStorefrontCountry(const QString &code) override { storefront = code; }
    [[nodiscard]] QString keywordTableColumns() const override { return columns; }
    void setKeywordTableColumns(const QString &text) override { columns = text; }
    [[nodiscard]] QByteArray windowGeometry() const override { return geometry; }
    void setWindowGeometry(const QByteArray &bytes) override { geometry = bytes; }
    [[nodiscard]] ThemeChoice theme() const override { return chosenTheme; }
    void setTheme(ThemeChoice theme) override { chosenTheme = theme; }
    [[nodiscard]] DigestChoice digestChoice() const override { return digest; }
    void setDigestChoice(const DigestChoice &choice) override { digest = choice; }

    QString storefront = QStringLiteral("US");
    QString columns;
    QByteArray geometry;
    ThemeChoice chosenTheme = ThemeChoice::System;
    DigestChoice digest;
};

/// A service manager in memory.
class FakeTiming final : public DailyTiming
{
public:
    [[nodiscard]] Task<DailyTimerState> state(std::stop_token stop) override;
    Task<void> turnOn(DailyPlan plan, std::stop_token stop) override;
    Task<void> turnOff(std::stop_token stop) override;

    DailyTimerState known;
    /// What it says to any change.
    QString refusal;
    /// Does not answer until it is let.
    bool holds = false;
    void release() { m_held.resolve({}); }

private:
    OneShot<Done> m_held;
};

/// Dialogs that are answered before they are asked.
class FakeFiles final : public FileExchange
{
public:
    void choosePlace(QWidget *parent, const Request &request, Chosen chosen) override;
    void open(QWidget *parent, const Request &request,
              std::function<void(const OpenedFile &file)> done) override;
    OpenedFile read(const QString &path) override;

    /// What the user picks or drops; nothing cancels the dialog.
    std::optional<QByteArray> opened;
    bool cancels = false;
    std::optional<QString> error;
    QList<Request> requests;
    /// The last file that was put in place.
    QByteArray saved;
    /// Pieces of a file wait for release().
    bool holds = false;
    void release();

private:
    class Output;
    std::vector<OneShot<Done>> m_held;
};

class FakeUpdater final : public UpdaterInterface
{
public:
    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return automatic; }
    void setAutomaticallyChecksForUpdates(bool on) override { automatic = on; }
    [[nodiscard]] bool canCheckForUpdates() const override { return canCheck; }
    void checkForUpdates() override { ++checks; }
    [[nodiscard]] UpdaterStatus status() const override { return shown; }
    void stop() override { ++stops; }
    void performAction() override { ++actions; }
    void dismiss() override
    {
        ++dismissals;
        set({});
    }
    void set(const UpdaterStatus &status)
    {
        shown = status;
        Q_EMIT changed();
    }

    bool automatic = true;
    bool canCheck = true;
    int checks = 0;
    int stops = 0;
    int actions = 0;
    int dismissals = 0;
    UpdaterStatus shown;
};

/// A desktop whose scheme the test chooses.
class FakeColorScheme final : public ColorSchemeSource
{
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return scheme; }
    void set(ColorScheme wanted)
    {
        scheme = wanted;
        Q_EMIT colorSchemeChanged();
    }

    ColorScheme scheme = ColorScheme::Light;
};

/// One keyword of the sample: what the table shows for it.
struct SampleKeyword {
    const char *keyword;
    const char *country;
    double minutesAgo;
    /// Empty: no assessment.
    const char *label;
    int popularity;
    int difficulty;
    /// 0: not ranked. -1: never measured.
    int position;
    /// Position of the day before; 0 not ranked, -1 none.
    int before;
};

/// The state behind most pictures: three apps, eleven keywords of the first.
PersistedState sampleState(Date now, const QString &popularityVersion);
const std::vector<SampleKeyword> &sampleKeywords();

/// Everything a MainWindow needs. The store starts with `state`.
class UiWorld
{
public:
    explicit UiWorld(const PersistedState &state = {});
    virtual ~UiWorld();

    /// A world with the sample state.
    static std::unique_ptr<UiWorld> sample();

    [[nodiscard]] MainWindow::Collaborators collaborators();
    [[nodiscard]] ASOStore::Arguments storeArguments() const;
    /// The store again, from what it saved.
    void restartStore();

    QTemporaryDir folder;
    std::shared_ptr<VirtualClock> clock = std::make_shared<VirtualClock>();
    std::shared_ptr<FakeITunesClient> client = std::make_shared<FakeITunesClient>();
    std::shared_ptr<FakeITunesClient> discovery = std::make_shared<FakeITunesClient>();
    std::shared_ptr<FakePopularity> popularity = std::make_shared<FakePopularity>();
    std::unique_ptr<ASOStore> store;
    std::shared_ptr<FakeSuggestions> suggestions = std::make_shared<FakeSuggestions>();
    FakeArtwork artwork;
    FakePreferences preferences;
    FakeFiles files;
    FakeTiming timing;
    FakeUpdater updater;
    bool hasUpdater = false;
    AppInformation information;
    QList<QUrl> openedUrls;
    QList<ThemeChoice> appliedThemes;
    int dataFolderShown = 0;
};

/// Search results with everything in them.
QList<ITunesAppResult> sampleResults();

} // namespace veltrix
