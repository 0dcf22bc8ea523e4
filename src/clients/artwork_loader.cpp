// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/artwork_loader.h"

#include "clients/image_wholeness.h"
#include "clients/pending_wait.h"

namespace veltrix
{

/// Gives its slot back at the end of its scope.
class ArtworkLoader::Slot
{
public:
    explicit Slot(ArtworkLoader &loader) : m_loader(loader) {}
    ~Slot() { m_loader.releaseSlot(); }
    Slot(const Slot &) = delete;
    Slot &operator=(const Slot &) = delete;

private:
    ArtworkLoader &m_loader;
};

namespace
{

/// Addresses are remembered for their failures only as long as this many are.
constexpr qsizetype mostFailures = 1000;

} // namespace

ArtworkLoader::ArtworkLoader(Arguments arguments)
    : m_send(std::move(arguments.send)), m_clock(std::move(arguments.clock)),
      m_cache(std::move(arguments.cacheFolder), arguments.cacheLimit)
{
}

Task<QByteArray> ArtworkLoader::load(Url url, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const QUrl address = url.toQUrl();
    if (!address.isValid() || address.host().isEmpty() ||
        (address.scheme() != QLatin1String("https") && address.scheme() != QLatin1String("http")))
        throw BadUrlError();
    if (std::optional<QByteArray> cached = m_cache.find(url.text()))
        co_return *std::move(cached);
    if (const std::exception_ptr failure = rememberedFailure(url.text()))
        std::rethrow_exception(failure);
    decltype(m_transfers)::Start start = [this, url](std::stop_token transferStop) {
        return fetchAndKeep(url.text(), std::move(transferStop));
    };
    co_return co_await m_transfers.join(url.text(), std::move(start), stop);
}

Task<QByteArray> ArtworkLoader::fetchAndKeep(QString url, std::stop_token stop)
{
    try {
        const QByteArray image = co_await fetch(url, stop);
        m_cache.store(url, image);
        co_return image;
    } catch (const Error &) {
        rememberFailure(url, std::current_exception());
        throw;
    }
}

Task<QByteArray> ArtworkLoader::fetch(QString url, std::stop_token stop)
{
    co_await acquireSlot(stop);
    const Slot slot(*this);
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
