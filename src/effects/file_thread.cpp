// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/file_thread.h"

#include <algorithm>

namespace veltrix
{

FileThread::~FileThread()
{
    {
        const std::scoped_lock locked(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void FileThread::start(Work work)
{
    {
        const std::scoped_lock locked(m_mutex);
        m_asked.push_back(std::move(work));
    }
    wake();
}

void FileThread::save(const QString &path, Work work)
{
    Work replaced;
    {
        const std::scoped_lock locked(m_mutex);
        const auto waiting = std::ranges::find(m_saves, path, &Save::path);
        if (waiting == m_saves.end())
            m_saves.push_back({path, std::move(work)});
        else
            replaced = std::exchange(waiting->work, std::move(work));
    }
    wake();
}

void FileThread::waitUntilFinished()
{
    {
        std::unique_lock locked(m_mutex);
        m_changed.wait(locked, [this] { return !m_isBusy && m_asked.empty() && m_saves.empty(); });
    }
    takeNews();
}

void FileThread::wake()
{
    m_changed.notify_all();
    if (!m_thread.joinable())
        m_thread = std::thread([this] { runThread(); });
}

void FileThread::runThread()
{
    std::unique_lock locked(m_mutex);
    for (;;) {
        m_changed.wait(locked, [this] { return m_ends || !m_asked.empty() || !m_saves.empty(); });
        Work work;
        if (!m_asked.empty()) {
            work = std::move(m_asked.front());
            m_asked.pop_front();
        } else if (!m_saves.empty()) {
            work = std::move(m_saves.front().work);
            m_saves.pop_front();
        } else {
            return;
        }
        m_isBusy = true;
        locked.unlock();
        work();
        work = nullptr;
        locked.lock();
        m_isBusy = false;
        m_changed.notify_all();
    }
}

void FileThread::tell(Work news)
{
    bool isFirst = false;
    {
        const std::scoped_lock locked(m_mutex);
        isFirst = m_news.empty();
        m_news.push_back(std::move(news));
    }
    if (isFirst)
        QMetaObject::invokeMethod(this, &FileThread::takeNews, Qt::QueuedConnection);
}

void FileThread::takeNews()
{
    std::vector<Work> news;
    {
        const std::scoped_lock locked(m_mutex);
        news.swap(m_news);
    }
    for (const Work &next : news)
        next();
}

} // namespace veltrix
