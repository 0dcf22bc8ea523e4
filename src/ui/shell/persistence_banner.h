// SPDX-License-Identifier: GPL-3.0-or-later
// What is wrong with the state file, above everything else, and the ways on.
#pragma once

#include "effects/task_scope.h"

#include <QWidget>

namespace veltrix
{

class ASOStore;
class Banner;
class Button;

/// Follows the store's persistence problem. "Try again" is there while something could not be read
/// or saved, "Begin anew…", which asks first, while the file could not be read, and a cross when
/// nothing is left to do.
class PersistenceBanner final : public QWidget
{
    Q_OBJECT

public:
    explicit PersistenceBanner(ASOStore &store, QWidget *parent = nullptr);

private:
    void update();
    Task<void> tryAgain(std::stop_token stop);
    void askToBeginAnew();

    ASOStore &m_store;
    Banner *m_banner;
    Button *m_tryAgain;
    Button *m_beginAnew;
    Button *m_dismiss;
    /// When the user tried and nothing changed, in words.
    QString m_lastTry;
    TaskScope m_tasks;
};

} // namespace veltrix
