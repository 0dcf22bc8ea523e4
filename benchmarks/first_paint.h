// SPDX-License-Identifier: GPL-3.0-or-later
// Ends a process when its first window is painted.
#pragma once

#include "memory_use.h"
#include "ratio.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <unistd.h>

namespace veltrix
{

/// Waits for the first window to be painted and on its way to the screen; then prints the processor
/// time of the process since its very start and its memory in bytes, and ends it without any
/// tidying up.
class FirstPaint final : public QObject
{
public:
    FirstPaint() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        const auto *widget =
            event->type() == QEvent::Paint ? qobject_cast<const QWidget *>(object) : nullptr;
        if (widget && !m_isSeen) {
            m_isSeen = true;
            // The event loop comes round when the whole window has been painted and flushed.
            QTimer::singleShot(0, this, [] {
                std::printf("%.6f %.0f\n", clockSeconds(TimeOf::Processor), residentBytes());
                std::fflush(stdout);
                ::_exit(0);
            });
        }
        return false;
    }

private:
    bool m_isSeen = false;
};

} // namespace veltrix
