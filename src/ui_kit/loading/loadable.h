// SPDX-License-Identifier: GPL-3.0-or-later
// Something that a screen shows once it was asked for and has come.
#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace veltrix
{

/// Nobody has asked yet.
struct NotAsked {
    bool operator==(const NotAsked &) const = default;
};

/// Asked for, and nothing to show until the answer.
struct Loading {
    bool operator==(const Loading &) const = default;
};

/// The answer failed, and there is nothing to show.
struct LoadFailed {
    /// What went wrong, in words for the user.
    QString error;
    bool operator==(const LoadFailed &) const = default;
};

/// There is something to show.
template <class T>
struct Loaded {
    T value;
    /// Why the last time it was asked for again failed; empty when it did not.
    QString error;
    bool operator==(const Loaded &) const = default;
};

/// There is something to show, and it was asked for again.
template <class T>
struct Refreshing {
    T value;
    /// That of Loaded: it stands until there is an answer.
    QString error;
    bool operator==(const Refreshing &) const = default;
};

/// A value that is loaded: which of the five states it is in, and what they have in common.
template <class T>
class Loadable : public std::variant<NotAsked, Loading, LoadFailed, Loaded<T>, Refreshing<T>>
{
public:
    using States = std::variant<NotAsked, Loading, LoadFailed, Loaded<T>, Refreshing<T>>;
    using States::States;

    template <class State>
    [[nodiscard]] bool is() const
    {
        return std::holds_alternative<State>(*this);
    }
    /// An answer is awaited.
    [[nodiscard]] bool isUnderWay() const { return is<Loading>() || is<Refreshing<T>>(); }
    /// What there is to show, or null.
    [[nodiscard]] const T *value() const
    {
        if (const auto *loaded = std::get_if<Loaded<T>>(this))
            return &loaded->value;
        if (const auto *refreshing = std::get_if<Refreshing<T>>(this))
            return &refreshing->value;
        return nullptr;
    }
    /// What went wrong last, in words for the user; empty when nothing did.
    [[nodiscard]] QString error() const
    {
        return std::visit(
            [](const auto &state) {
                if constexpr (requires { state.error; })
                    return state.error;
                else
                    return QString();
            },
            static_cast<const States &>(*this));
    }

    /// Asked for, or asked for again: what there is stays.
    [[nodiscard]] Loadable asked() const
    {
        if (const T *shown = value())
            return Refreshing<T>{*shown, error()};
        return Loading();
    }
    /// Nothing came of it: what there is stays.
    [[nodiscard]] Loadable failed(const QString &words) const
    {
        if (const T *shown = value())
            return Loaded<T>{*shown, words};
        return LoadFailed{words};
    }
};

} // namespace veltrix
