// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/services.h"

#include "clients/autocomplete_client.h"
#include "clients/itunes_client.h"
#include "clients/ranked_apps_keeper.h"
#include "clients/research_client.h"
#include "clients/supabase_configuration.h"
#include "clients/update/stored_update_settings.h"
#include "scoring/autocomplete_popularity_provider.h"
#include "scoring/quorvin_popularity_provider.h"

#include <QDesktopServices>
#include <QSysInfo>

namespace veltrix
{

namespace
{

/// An address of the information dictionary, or the public service's.
QUrl address(const Bundle &bundle, const QString &key, const QUrl &publicService)
{
    const auto text = bundle.information(key);
    return text && !text->isEmpty() ? QUrl(*text) : publicService;
}

/// Which service keyword searches use, for the settings.
ResearchServiceInformation researchService(const Bundle &bundle)
{
    if (!SupabaseConfiguration::exists(bundle.folder()))
        return {};
    try {
        const auto configuration = SupabaseConfiguration::load(bundle.folder());
        return {ResearchServiceInformation::Kind::Research, configuration.projectURL.host()};
    } catch (const Error &error) {
        return {ResearchServiceInformation::Kind::Misconfigured, error.description()};
    }
}

AppInformation informationOf(const Bundle &bundle)
{
    const auto url = [&](const char *key) {
        return QUrl(bundle.information(QString::fromLatin1(key)).value_or(QString()));
    };
    return {
        .versionText = bundle.versionText(),
        .supportEmail =
            bundle.information(QStringLiteral("VeltrixSupportEmail")).value_or(QString()),
        .privacyPolicy = url("VeltrixPrivacyURL"),
        .termsOfUse = url("VeltrixTermsURL"),
        .research = researchService(bundle),
    };
}

} // namespace

QString stateFilePath(const QString &stateFolder)
{
    return stateFolder + QStringLiteral("/aso_store_state.json");
}

Services::Services(const Bundle &bundle, const DataPlaces &data,
                   std::shared_ptr<SettingsFile> preferences)
    : m_clock(std::make_shared<SystemClock>()), m_information(informationOf(bundle))
{
    NetworkHttp::Options options;
    options.version = bundle.information(QStringLiteral("CFBundleShortVersionString"))
                          .value_or(QStringLiteral("0"));
    options.trustedCertificatesPath = bundle.path(QStringLiteral("TrustedCertificates.pem"));
    m_http = std::make_unique<NetworkHttp>(options);
    m_artwork = std::make_unique<ArtworkLoader>(ArtworkLoader::Arguments{
        .send = m_http->sender(),
        .clock = m_clock,
        .cacheFolder = data.cacheFolder + QStringLiteral("/artwork"),
    });
    m_appStoreUrl = bundle.information(QStringLiteral("VeltrixAppStoreURL"))
                        .value_or(QStringLiteral("https://apps.apple.com"));
    while (m_appStoreUrl.endsWith(u'/'))
        m_appStoreUrl.chop(1);
    buildStore(bundle, data);
    buildUpdater(bundle, data.cacheFolder, std::move(preferences));
}

void Services::buildStore(const Bundle &bundle, const DataPlaces &data)
{
    const QString &stateFolder = data.stateFolder;
    const auto direct = std::make_shared<ITunesClient>(ITunesClient::Arguments{
        .baseURL =
            address(bundle, QStringLiteral("VeltrixITunesBaseURL"), ITunesClient::defaultBaseURL()),
        .send = m_http->sender(),
        .traffic = std::make_shared<ITunesTrafficController>(m_clock),
    });

    const RankedAppsCache::Arguments rankedAppsCache{
        .path = stateFolder + QStringLiteral("/ranked_apps_cache_v1.json"),
        .files = m_files,
        .lock = data.folderLock,
    };
    std::shared_ptr<ITunesClientProtocol> keywordClient;
    std::shared_ptr<RankedAppsSaving> rankedApps;
    if (m_information.research.kind != ResearchServiceInformation::Kind::Direct) {
        const auto research = std::make_shared<ResearchClient>(ResearchClient::Arguments{
            .configuration = [folder =
                                  bundle.folder()] { return SupabaseConfiguration::load(folder); },
            .send = m_http->sender(),
            .clock = m_clock,
            .lookup = direct,
            .cache = rankedAppsCache,
        });
        keywordClient = research;
        rankedApps = research;
    } else {
        const auto keeper = std::make_shared<RankedAppsKeeper>(
            RankedAppsKeeper::Arguments{direct, m_clock, rankedAppsCache});
        keywordClient = keeper;
        rankedApps = keeper;
    }

    const auto autocomplete = std::make_shared<AutocompleteClient>(AutocompleteClient::Arguments{
        .send = m_http->sender(),
        .clock = m_clock,
        .persistencePath = stateFolder + QStringLiteral("/autocomplete_visibility_v2.json"),
        .hintsURL = address(bundle, QStringLiteral("VeltrixSearchHintsURL"),
                            AutocompleteClient::defaultHintsURL()),
        .files = m_files,
    });
    m_suggestions = autocomplete;
    const auto popularity = std::make_shared<AutocompletePopularityProvider>(
        std::make_shared<QuorvinPopularityProvider>(), autocomplete);

    m_store = std::make_unique<ASOStore>(ASOStore::Arguments{
        .persistenceURL = stateFilePath(stateFolder),
        .iTunesClient = keywordClient,
        .pipeline = KeywordPipeline{popularity, keywordClient, m_clock},
        .discoveryClient = direct,
        .clock = m_clock,
        .rankedAppsCache = rankedApps,
        .folderLock = data.folderLock,
        .opening = ASOStore::Opening::Later,
    });
}

void Services::buildUpdater(const Bundle &bundle, const QString &cacheFolder,
                            std::shared_ptr<SettingsFile> preferences)
{
    m_updater = std::make_unique<AppUpdater>(
        bundle.information(QStringLiteral("SUFeedURL")),
        bundle.information(QStringLiteral("SUPublicEDKey")),
        UpdaterEnvironment{
            .send = m_http->sender(),
            .download = m_http->downloader(),
            .clock = m_clock,
            .settings = std::make_shared<StoredUpdateSettings>(std::move(preferences)),
            .openPackage =
                [](QString path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); },
            .installedVersion =
                bundle.information(QStringLiteral("CFBundleVersion")).value_or(QString()),
            .systemVersion = QSysInfo::kernelVersion(),
            .downloadFolder = cacheFolder + QStringLiteral("/updates"),
            .files = m_files,
        });
}

} // namespace veltrix
