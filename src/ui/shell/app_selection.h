// SPDX-License-Identifier: GPL-3.0-or-later
// Which of the tracked apps the window is about.
#pragma once

#include "store/aso_store.h"

#include <QObject>

#include <optional>

namespace veltrix
{

/// The chosen app. It is the first one until another is chosen, and again when the chosen one is
/// not tracked any more; none while there is no app.
class AppSelection final : public QObject
{
    Q_OBJECT

public:
    /// `store` outlives this.
    explicit AppSelection(ASOStore &store, QObject *parent = nullptr);

    [[nodiscard]] std::optional<QUuid> id() const { return m_id; }
    [[nodiscard]] std::optional<AppProfile> app() const;
    void select(std::optional<QUuid> id);
    enum class Neighbour { Previous, Next };
    /// The app beside the chosen one in the order of the list; the last one is beside the first.
    void selectNeighbour(Neighbour neighbour);

    /// What is tracked of the app; nothing without one.
    struct Counts {
        std::optional<int> keywords;
        std::optional<int> competitors;
        bool operator==(const Counts &) const = default;
    };
    [[nodiscard]] Counts counts() const;

Q_SIGNALS:
    /// Another app was chosen, or the same one again.
    void changed(std::optional<QUuid> id);

private:
    void followStore();

    ASOStore &m_store;
    std::optional<QUuid> m_id;
};

} // namespace veltrix
