// SPDX-License-Identifier: GPL-3.0-or-later
// A page that has to be loaded, or what stands in its place.
#pragma once

#include "ui_kit/loading/loadable.h"
#include "ui_kit/widgets/empty_state.h"

#include <QStackedWidget>

#include <optional>

class QVBoxLayout;

namespace veltrix
{

/// What stands in the place of a page while there is nothing to show.
struct LoadingWords {
    /// Heading before the answer.
    QString loading;
    /// Heading above what went wrong.
    QString failure;
    /// The button that asks again.
    QString retry;

    /// No value when there is something to show.
    template <class T>
    [[nodiscard]] std::optional<EmptyState::Content> messageOf(const Loadable<T> &state) const
    {
        if (state.value())
            return std::nullopt;
        if (state.template is<LoadFailed>())
            return EmptyState::Content::failed(failure, state.error(), retry);
        return EmptyState::Content::working(loading);
    }
};

/// Shows a page once it is there, and until then that it is loaded or why it could not be.
class LoadableView final : public QStackedWidget
{
    Q_OBJECT

public:
    /// `messageName` is the object name of the message.
    explicit LoadableView(const QString &messageName, QWidget *parent = nullptr);

    /// Another way on than to try again, below a message that has an action.
    void addWayOut(QWidget *control);
    void showMessage(const EmptyState::Content &content);
    /// Takes the page over when it is new.
    void showPage(QWidget *page);

Q_SIGNALS:
    void retryRequested();

private:
    void turnTo(QWidget *page);

    QWidget *m_messagePage;
    QVBoxLayout *m_column;
    EmptyState *m_message;
    QWidget *m_wayOut = nullptr;
};

} // namespace veltrix
