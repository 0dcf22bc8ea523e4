// SPDX-License-Identifier: GPL-3.0-or-later
// Loads icons and screenshots: few at once, each once, from disk when it can.
#pragma once

#include "clients/artwork_cache.h"
#include "clients/http.h"
#include "effects/artwork_loading.h"
#include "effects/clock.h"
#include "effects/shared_task.h"

#include <QHash>

#include <deque>
#include <memory>

namespace veltrix
{

/// Images by address, over http and https. At most six requests run at once and they start a little
/// apart; requests for one address share one transfer, which stops when nobody waits for it any
/// more. An address that failed is not asked for again for some minutes.
class ArtworkLoader final : public ArtworkLoading
{
public:
    static constexpr int mostAtOnce = 6;
    /// Least time between the starts of two requests.
    static constexpr Seconds startSpacing{0.05};
    /// How long a failure is remembered.
    static constexpr Seconds failureMemory{300};
    /// Largest image, in bytes.
    static constexpr qint64 bodyLimit = 8LL * 1024 * 1024;
    /// Size of the cache on disk, in bytes.
    static constexpr qint64 defaultCacheLimit = 64LL * 1024 * 1024;

    struct Arguments {
        HttpSend send;
        std::shared_ptr<Clock> clock;
        /// Empty: nothing is kept on disk.
        QString cacheFolder;
        qint64 cacheLimit = defaultCacheLimit;
    };

    explicit ArtworkLoader(Arguments arguments);

    /// Throws TransportError, BadServerResponseError, BadUrlError or Cancelled; the latter also
    /// when the loader goes first.
    Task<QByteArray> load(Url url, std::stop_token callersStop) override;

private:
    struct Failure {
        Date until;
        std::exception_ptr error;
    };
    class Slot;

    Task<QByteArray> fetchAndKeep(QString url, std::stop_token stop);
    Task<QByteArray> fetch(QString url, std::stop_token stop);
    Task<void> acquireSlot(std::stop_token stop);
    void releaseSlot();
    [[nodiscard]] std::exception_ptr rememberedFailure(const QString &url);
    void rememberFailure(const QString &url, std::exception_ptr error);

    HttpSend m_send;
    std::shared_ptr<Clock> m_clock;
    ArtworkCache m_cache;
    QHash<QString, Failure> m_failures;
    int m_active = 0;
    std::deque<OneShot<Done>> m_waitingForSlot;
    std::optional<Date> m_nextStart;
    /// By address.
    SharedTasks<QString, QByteArray> m_transfers;
    TaskScope m_tasks;
};

} // namespace veltrix
