// SPDX-License-Identifier: GPL-3.0-or-later
// What a page shows when its app could not be loaded.
#pragma once

#include <QWidget>

namespace veltrix
{

class EmptyState;

class LoadFailure final : public QWidget
{
    Q_OBJECT

public:
    explicit LoadFailure(QWidget *parent = nullptr);

    void setMessage(const QString &message);

Q_SIGNALS:
    void retryRequested();
    void backRequested();

private:
    EmptyState *m_message;
};

} // namespace veltrix
