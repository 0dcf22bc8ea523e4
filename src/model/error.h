// SPDX-License-Identifier: GPL-3.0-or-later
// The base of every failure that Veltrix reports, and cancellation, which is never reported.
#pragma once

#include <QString>

#include <exception>
#include <string>

namespace veltrix
{

/// A failure with a text for the user. Views show description() as it stands.
class Error : public std::exception
{
public:
    explicit Error(QString description);

    [[nodiscard]] const QString &description() const noexcept { return m_description; }
    [[nodiscard]] const char *what() const noexcept override { return m_utf8.c_str(); }

private:
    QString m_description;
    std::string m_utf8;
};

/// A task was asked to stop. An outcome of its own: not an Error, and never shown to the user.
class Cancelled final : public std::exception
{
public:
    [[nodiscard]] const char *what() const noexcept override { return "cancelled"; }
};

} // namespace veltrix
