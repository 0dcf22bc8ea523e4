// SPDX-License-Identifier: GPL-3.0-or-later
// Starts the store's test helper in a process of its own.
#pragma once

#include <QProcess>
#include <QString>

namespace veltrix
{

/// The exit status with which the helper says that the environment cannot do what it needs.
inline constexpr int helperCannot = 77;

QString helperPath();

/// The helper with its standard output; killed when it goes out of scope.
class HelperProcess
{
public:
    explicit HelperProcess(const QStringList &arguments)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(helperPath(), arguments);
        m_process.waitForStarted();
    }
    ~HelperProcess() { kill(); }
    HelperProcess(const HelperProcess &) = delete;
    HelperProcess &operator=(const HelperProcess &) = delete;

    /// Ends it as a crash does.
    void kill()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.kill();
        m_process.waitForFinished();
    }

    /// Waits for the next line of its output.
    QString readLine()
    {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(20'000)) {
        }
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }

    /// Waits for its end and returns all its output.
    QString finish()
    {
        m_process.waitForFinished(60'000);
        return QString::fromUtf8(m_process.readAllStandardOutput());
    }
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }

private:
    QProcess m_process;
};

} // namespace veltrix
