// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/state_saver.h"

#include <algorithm>

namespace veltrix
{

StateSaver::StateSaver(QString path, DataFolderLock *lock, QObject *parent)
    : QObject(parent), m_file(std::move(path), lock)
{
}

StateSaver::~StateSaver()
{
    {
        const std::scoped_lock locked(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

PersistedState StateSaver::load()
{
    waitUntilFinished();
    PersistedState state = m_file.load();
    m_told = look(m_told.tried);
    return state;
}

bool StateSaver::beginAnew(Date now)
{
    waitUntilFinished();
    const bool hasBegun = m_file.beginAnew(now);
    m_told = look(m_told.tried);
    return hasBegun;
}

void StateSaver::tryFolderAgain()
{
    if (!isIdle())
        return;
    m_file.tryFolderAgain();
    m_told = look(m_told.tried);
}

void StateSaver::dismissNotices()
{
    if (isIdle()) {
        m_file.dismissNotices();
        m_told = look(m_told.tried);
        return;
    }
    const std::scoped_lock locked(m_mutex);
    m_dismisses = true;
}

void StateSaver::save(StateChange change)
{
    {
        const std::scoped_lock locked(m_mutex);
        m_next = std::move(change);
        m_nextNumber = ++m_handedOver;
    }
    m_changed.notify_all();
    if (!m_thread.joinable())
        m_thread = std::thread([this] { work(); });
}

Task<void> StateSaver::finished(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (isIdle())
        co_return;
    const Waiting waiting{m_handedOver, {}};
    m_waiting.push_back(waiting);
    co_await waiting.ended.wait(stop);
}

void StateSaver::waitUntilFinished()
{
    while (!isIdle()) {
        {
            std::unique_lock locked(m_mutex);
            m_changed.wait(locked, [this] { return m_result && m_result->tried == m_handedOver; });
        }
        takeResult();
    }
}

StateSaver::Told StateSaver::look(std::uint64_t tried) const
{
    return {m_file.problem(), m_file.isRead(), m_file.hasUnsavedChange(), tried};
}

void StateSaver::work()
{
    std::unique_lock locked(m_mutex);
    for (;;) {
        m_changed.wait(locked, [this] { return m_next || m_ends; });
        if (!m_next)
            return;
        StateChange change = std::move(*m_next);
        m_next.reset();
        const std::uint64_t number = m_nextNumber;
        locked.unlock();
        saveNext(std::move(change), number);
        locked.lock();
    }
}

void StateSaver::saveNext(StateChange change, std::uint64_t number)
{
    m_file.save(change.state, change.now);
    // The last that knows a snapshot frees it, here rather than on the main thread.
    change = {};
    bool wasTaken = false;
    {
        const std::scoped_lock locked(m_mutex);
        if (std::exchange(m_dismisses, false))
            m_file.dismissNotices();
        wasTaken = !m_result;
        m_result = look(number);
    }
    m_changed.notify_all();
    if (wasTaken)
        QMetaObject::invokeMethod(this, &StateSaver::takeResult, Qt::QueuedConnection);
}

void StateSaver::takeResult()
{
    std::optional<Told> result;
    {
        const std::scoped_lock locked(m_mutex);
        result = std::exchange(m_result, std::nullopt);
    }
    if (!result)
        return;
    m_told = std::move(*result);
    const auto isOver = [this](const Waiting &waiting) {
        return waiting.number > m_told.tried;
    };
    const auto over = std::stable_partition(m_waiting.begin(), m_waiting.end(), isOver);
    const std::vector<Waiting> ended(over, m_waiting.end());
    m_waiting.erase(over, m_waiting.end());
    Q_EMIT saved();
    for (const Waiting &waiting : ended)
        waiting.ended.resolve({});
}

} // namespace veltrix
