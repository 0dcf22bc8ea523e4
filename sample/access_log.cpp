// SPDX-License-Identifier: GPL-3.0-or-later
// One line a request.
#include "sample/access_log.h"

#include <QFile>

#include <stdexcept>

namespace veltrix::sample
{

AccessLog::AccessLog(const QString &file)
{
    if (file.isEmpty())
        return;
    m_stream.open(QFile::encodeName(file).toStdString(), std::ios::app);
    if (!m_stream)
        throw std::runtime_error("The access log cannot be written.");
}

void AccessLog::add(const std::string &method, const std::string &path, int status)
{
    const std::lock_guard lock(m_mutex);
    if (m_stream.is_open())
        m_stream << method << ' ' << path << ' ' << status << std::endl;
}

} // namespace veltrix::sample
