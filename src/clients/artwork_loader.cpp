// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/artwork_loader.h"

#include "clients/image_wholeness.h"
#include "clients/pending_wait.h"

#include <QScopeGuard>

#include <algorithm>

namespace veltrix
{

/// One transfer and everyone who waits for it.
struct ArtworkLoader::Flight {
    QString url;
    std::vector<OneShot<QByteArray>> waiters;
    std::stop_source stop;

    /// Ends the transfer when the last of its waiters has gone.
    void stopIfAbandoned()
    {
        const bool isWanted = std::any_of(waiters.begin(), waiters.end(),
                                          [](const auto &waiter) { return waiter.isOpen(); });
        if (!isWanted)
            stop.request_stop();
    }
};

namespace
{

Task<QByteArray> readyImage(QByteArray image)
{
    co_return image;
}

Task<QByteArray> failedImage(std::exception_ptr error)
{
    std::rethrow_exception(error);
    co_return QByteArray();
}

/// Addresses are remembered for their failures only as long as this many are.
constexpr qsizetype mostFailures = 1000;

} // namespace

ArtworkLoader::ArtworkLoader(Arguments arguments)
    : m_send(std::move(arguments.send)), m_clock(std::move(arguments.clock)),
      m_cache(std::move(arguments.cacheFolder), arguments.cacheLimit)
{
}

ArtworkLoader::~ArtworkLoader() = default;

Task<QByteArray> ArtworkLoader::load(Url url, std::stop_token stop)
{
    const QUrl address = url.toQUrl();
    if (!address.isValid() || address.host().isEmpty() ||
        (address.scheme() != QLatin1String("https") && address.scheme() != QLatin1String("http")))
        return failedImage(std::make_exception_ptr(BadUrlError()));
    if (std::optional<QByteArray> cached = m_cache.find(url.text()))
        return readyImage(*std::move(cached));
    if (const std::exception_ptr failure = rememberedFailure(url.text()))
        return failedImage(failure);

    std::shared_ptr<Flight> flight = m_flights.value(url.text());
    if (flight && !flight->stop.stop_requested())
        return join(flight, std::move(stop));
    flight = std::make_shared<Flight>();
    flight->url = url.text();
    m_flights.insert(url.text(), flight);
    // The waiter is there before the transfer starts: one that ends at once finds it.
    Task<QByteArray> waiter = join(flight, std::move(stop));
    if (!flight->stop.stop_requested())
        m_scope.own(fly(flight, m_scope.token()));
    else
        m_flights.remove(url.text());
    return waiter;
}

Task<QByteArray> ArtworkLoader::join(std::shared_ptr<Flight> flight, std::stop_token stop)
{
    const OneShot<QByteArray> image;
    flight->waiters.push_back(image);
    try {
        co_return co_await image.wait(stop);
    } catch (const Cancelled &) {
        flight->stopIfAbandoned();
        throw;
    }
}

Task<void> ArtworkLoader::fly(std::shared_ptr<Flight> flight, std::stop_token scopeStop)
{
    const auto stopFlight = [flight] {
        flight->stop.request_stop();
    };
    const std::stop_callback onScopeStop(scopeStop, stopFlight);
    const QString url = flight->url;
    QByteArray image;
    std::exception_ptr error;
    bool isStopped = false;
    try {
        image = co_await fetch(url, flight->stop.get_token());
    } catch (const Cancelled &) {
        isStopped = true;
        error = std::current_exception();
    } catch (const std::exception &) {
        error = std::current_exception();
    }
    if (m_flights.value(url) == flight)
        m_flights.remove(url);
    if (error && !isStopped)
        rememberFailure(url, error);
    if (!error)
        m_cache.store(url, image);
    // Last: what a waiter does next may start another transfer of this address.
    for (const OneShot<QByteArray> &waiter : std::exchange(flight->waiters, {})) {
        if (error)
            waiter.fail(error);
        else
            waiter.resolve(image);
    }
}

Task<QByteArray> ArtworkLoader::fetch(QString url, std::stop_token stop)
{
    co_await acquireSlot(stop);
    const auto atEnd = qScopeGuard([this] { releaseSlot(); });
    const Date now = m_clock->now();
    // No more than this many can be ahead in the queue of starts.
    const bool mustWait =
        m_nextStart && isPending(*m_nextStart, now, startSpacing * double(mostAtOnce));
    const Date start = mustWait ? *m_nextStart : now;
    m_nextStart = start + startSpacing;
    co_await m_clock->sleep(start - now, stop);

    HttpRequest request;
    request.url = QUrl(url);
    request.bodyLimit = bodyLimit;
    const HttpResponse response = co_await m_send(request, stop);
    if (!response.isSuccess())
        throw BadServerResponseError(response.status);
    if (response.body.isEmpty() ||
        response.header("Content-Type").value_or(QByteArray()).toLower().startsWith("text/"))
        throw TransportError(QStringLiteral("The server sent no image."));
    // It would stay on disk, half of it, for good.
    if (!isWholeImage(response.body))
        throw TransportError(QStringLiteral("The server sent half of an image."));
    co_return response.body;
}

Task<void> ArtworkLoader::acquireSlot(std::stop_token stop)
{
    throwIfStopped(stop);
    if (m_active < mostAtOnce) {
        ++m_active;
        co_return;
    }
    const OneShot<Done> turn;
    m_waitingForSlot.push_back(turn);
    co_await turn.wait(stop);
}

void ArtworkLoader::releaseSlot()
{
    // The slot is handed on as it is to the first who still waits for one.
    while (!m_waitingForSlot.empty()) {
        const OneShot<Done> next = m_waitingForSlot.front();
        m_waitingForSlot.pop_front();
        if (next.isOpen()) {
            next.resolve({});
            return;
        }
    }
    --m_active;
}

std::exception_ptr ArtworkLoader::rememberedFailure(const QString &url)
{
    const auto failure = m_failures.constFind(url);
    if (failure == m_failures.constEnd())
        return nullptr;
    if (isPending(failure->until, m_clock->now(), failureMemory))
        return failure->error;
    m_failures.erase(failure);
    return nullptr;
}

void ArtworkLoader::rememberFailure(const QString &url, std::exception_ptr error)
{
    if (m_failures.size() >= mostFailures)
        m_failures.clear();
    m_failures.insert(url, {m_clock->now() + failureMemory, std::move(error)});
}

} // namespace veltrix
