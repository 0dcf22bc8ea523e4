// SPDX-License-Identifier: GPL-3.0-or-later
// Asks before something is destroyed.
#pragma once

#include <QWidget>

#include <functional>

namespace veltrix
{

/// A small sheet with a question and two answers. The keyboard starts on "Cancel", so that Enter
/// never destroys anything by accident.
class ConfirmSheet final : public QWidget
{
    Q_OBJECT

public:
    struct Question {
        QString title;
        QString message;
        QString confirm;
    };

    explicit ConfirmSheet(const Question &question, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

    /// Opens the question over the window of `opener` and calls `confirmed` when the user agrees.
    static void ask(QWidget *opener, const Question &question, std::function<void()> confirmed);

Q_SIGNALS:
    void confirmed();
    void cancelled();
};

} // namespace veltrix
