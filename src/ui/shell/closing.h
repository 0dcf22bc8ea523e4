// SPDX-License-Identifier: GPL-3.0-or-later
// Whether the window may close.
#pragma once

#include "ui_kit/widgets/confirm_sheet.h"

namespace veltrix
{

class ASOStore;

/// A change that closing would lose is tried once more; when that fails the user is asked, once at
/// a time. Knows no widget.
class Closing
{
public:
    /// `store` outlives this.
    explicit Closing(ASOStore &store) : m_store(store) {}

    enum class Verdict {
        Close,
        /// Stay, and ask question().
        Ask,
        /// Stay: the question is open.
        Wait,
    };
    /// The window is to close.
    [[nodiscard]] Verdict request();
    [[nodiscard]] ConfirmSheet::Question question() const;
    /// The user gives the change up.
    void giveUpChange() { m_mayLoseChange = true; }
    /// The question was answered or closed.
    void questionClosed() { m_isAsking = false; }

private:
    ASOStore &m_store;
    bool m_isAsking = false;
    bool m_mayLoseChange = false;
};

} // namespace veltrix
