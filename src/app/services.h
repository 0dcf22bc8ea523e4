// SPDX-License-Identifier: GPL-3.0-or-later
// Every collaborator below the windows, chosen and put together.
#pragma once

#include "app/bundle.h"
#include "clients/artwork_loader.h"
#include "clients/network_http.h"
#include "clients/update/app_updater.h"
#include "effects/autocomplete_suggesting.h"
#include "effects/settings_file.h"
#include "effects/system_clock.h"
#include "store/aso_store.h"
#include "ui/settings/app_information.h"

#include <memory>

namespace veltrix
{

/// The file in that folder which holds what is tracked.
[[nodiscard]] QString stateFilePath(const QString &stateFolder);

/// Where the user's data is.
struct DataPlaces {
    /// Both folders exist or are created when written to.
    QString stateFolder;
    QString cacheFolder;
    /// Holds the first and outlives whoever gets it; may be null.
    DataFolderLock *folderLock = nullptr;
};

/// The real network, clock, clients and store of the program, as its bundle configures them:
///
/// - App searches and look-ups go directly to the App Store's search service.
/// - Keyword searches go to the research service when the bundle has "SupabaseDevelopment.plist" (a
///   wrong file shows its error), and directly to the App Store when it has none.
/// - All of it shares one traffic controller and one HTTP session.
class Services
{
public:
    Services(const Bundle &bundle, const DataPlaces &data,
             std::shared_ptr<SettingsFile> preferences);

    /// Not opened yet.
    [[nodiscard]] ASOStore &store() { return *m_store; }
    [[nodiscard]] ArtworkLoading &artwork() { return *m_artwork; }
    /// What is suggested to whoever types, at the pace of measuring.
    [[nodiscard]] const std::shared_ptr<AutocompleteSuggesting> &suggestions() const
    {
        return m_suggestions;
    }
    /// Null when this copy cannot be updated.
    [[nodiscard]] Updater *updater() const { return m_updater->updater(); }
    /// What waits for a disk goes to it.
    [[nodiscard]] const std::shared_ptr<FileThread> &files() const { return m_files; }
    [[nodiscard]] AppInformation information() const { return m_information; }
    /// Web address of App Store pages, without a trailing slash.
    [[nodiscard]] QString appStoreUrl() const { return m_appStoreUrl; }

private:
    void buildStore(const Bundle &bundle, const DataPlaces &data);
    void buildUpdater(const Bundle &bundle, const QString &cacheFolder,
                      std::shared_ptr<SettingsFile> preferences);

    std::shared_ptr<SystemClock> m_clock;
    /// Ends last: what the others leave to be written is written then.
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    std::unique_ptr<NetworkHttp> m_http;
    AppInformation m_information;
    QString m_appStoreUrl;
    std::unique_ptr<ArtworkLoader> m_artwork;
    std::shared_ptr<AutocompleteSuggesting> m_suggestions;
    std::unique_ptr<AppUpdater> m_updater;
    std::unique_ptr<ASOStore> m_store;
};

} // namespace veltrix
