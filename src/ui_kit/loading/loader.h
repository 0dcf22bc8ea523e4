// SPDX-License-Identifier: GPL-3.0-or-later
// Loads one value for a screen.
#pragma once

#include "effects/task_scope.h"
#include "ui_kit/loading/loadable.h"

#include <QObject>

#include <functional>
#include <optional>

namespace veltrix
{

/// The signal of every Loader.
class LoaderSignals : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void changed();
};

/// Owns a value that is loaded and the one task that loads it. To ask again stops the task before,
/// whose answer is dropped should it come all the same; so does destroying the loader.
template <class T>
class Loader final : public LoaderSignals
{
public:
    /// Starts to load; may fail with an Error.
    using Ask = std::function<Task<T>(std::stop_token)>;

    using LoaderSignals::LoaderSignals;

    [[nodiscard]] const Loadable<T> &state() const { return m_state; }

    /// Forgets what there is and asks.
    void ask(Ask ask)
    {
        m_state = NotAsked();
        refresh(std::move(ask));
    }
    /// Asks; what there is, or `meanwhile`, stays until the answer, and so does what went wrong.
    void refresh(Ask ask, std::optional<T> meanwhile = std::nullopt)
    {
        if (meanwhile)
            m_state = Loaded<T>{std::move(*meanwhile), m_state.error()};
        m_ask = std::move(ask);
        retry();
    }
    /// Asks the same again; what there is stays until the answer.
    void retry()
    {
        if (!m_ask)
            return;
        m_tasks.stop();
        set(m_state.asked());
        m_tasks.own(load(m_ask, m_tasks.token()));
    }
    /// Forgets everything and stops what is under way.
    void clear()
    {
        m_tasks.stop();
        m_ask = nullptr;
        set(NotAsked());
    }
    /// Says that something else went wrong in the value's place.
    void fail(const QString &words)
    {
        m_tasks.stop();
        set(LoadFailed{words});
    }

private:
    void set(Loadable<T> state)
    {
        m_state = std::move(state);
        Q_EMIT changed();
    }

    Task<void> load(Ask ask, std::stop_token stop)
    {
        Loadable<T> outcome;
        try {
            T value = co_await ask(stop);
            outcome = Loaded<T>{std::move(value), QString()};
        } catch (const Error &error) {
            throwIfStopped(stop);
            outcome = m_state.failed(error.description());
        }
        throwIfStopped(stop);
        set(std::move(outcome));
    }

    Ask m_ask;
    Loadable<T> m_state;
    TaskScope m_tasks;
};

} // namespace veltrix
