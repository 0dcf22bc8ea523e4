// SPDX-License-Identifier: GPL-3.0-or-later
// Asynchronous tasks of the main thread.
#pragma once

#include "model/error.h"

#include <QCoroTask>

#include <stop_token>

namespace veltrix
{

/// A coroutine on the event loop of the main thread. It starts at once. By convention it takes its
/// parameters by value and a std::stop_token last, and throws Cancelled when it is stopped. One
/// that touches an object belongs to that object's TaskScope.
template <class T = void>
using Task = QCoro::Task<T>;

/// Throws Cancelled when a stop was asked for.
inline void throwIfStopped(const std::stop_token &stop)
{
    if (stop.stop_requested())
        throw Cancelled();
}

} // namespace veltrix
