// SPDX-License-Identifier: GPL-3.0-or-later
// One line a request: method, path, status. Never the query, which holds what was searched for.
#pragma once

#include <QString>

#include <fstream>
#include <mutex>
#include <string>

namespace veltrix::sample
{

class AccessLog
{
public:
    /// Appends to the file; an empty name logs nowhere. Throws std::runtime_error if the file
    /// cannot be written.
    explicit AccessLog(const QString &file);

    /// Safe to call from several threads at once.
    void add(const std::string &method, const std::string &path, int status);

private:
    std::mutex m_mutex;
    std::ofstream m_stream;
};

} // namespace veltrix::sample
