// SPDX-License-Identifier: GPL-3.0-or-later
// Asks before something is destroyed.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace veltrix
{

class Overlay;

/// A small sheet with a question and two answers, or three. The keyboard starts on "Cancel", or on
/// the third, so that Enter never destroys anything by accident.
class ConfirmSheet
{
public:
    struct Question {
        QString title;
        QString message;
        QString confirm;
        /// A way out that destroys nothing; empty for none.
        QString alternative = {};
    };

    /// Opens the question over the window of `opener` and calls `confirmed` when the user agrees,
    /// or `otherwise` when he takes the alternative.
    static Overlay *ask(QWidget *opener, const Question &question, std::function<void()> confirmed,
                        std::function<void()> otherwise = {});
};

} // namespace veltrix
