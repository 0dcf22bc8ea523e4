// SPDX-License-Identifier: GPL-3.0-or-later
// The real research service on this machine, with the sample App Store behind it.
#pragma once

#include "sample/sample_services.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace veltrix
{

/// Runs scripts/service in a folder of its own: the function under Deno over HTTPS, PostgreSQL
/// behind it. Everything throws std::runtime_error when it does not work.
class RunningService
{
public:
    /// Starts the sample App Store only.
    RunningService();
    ~RunningService();
    RunningService(const RunningService &) = delete;
    RunningService &operator=(const RunningService &) = delete;

    /// Starts it, or starts it anew. Variables are "NAME=value". The port stays the same from the
    /// first start on.
    void start(const QStringList &environment = {});
    void stop();
    /// Ends the function at once, in the middle of whatever it does. The database stops in order.
    void kill();

    /// Runs statements in the service's database, as its operator; gives what the last one printed.
    QByteArray sql(const QString &statements);
    /// Puts the database into a state of supabase/contract for one keyword in the United States.
    void setState(const QString &given, const QString &keyword);

    /// With the property list and the authority that an operator copies beside the program.
    [[nodiscard]] QString resourceFolder() const;
    /// Where the sample App Store is.
    [[nodiscard]] QString appStoreOrigin() const { return m_appStore.httpOrigin(); }
    /// Turns the event loop until a worker has begun to fetch.
    void waitForFetch();
    /// How often the sample App Store has been searched.
    [[nodiscard]] int searches() const;

private:
    [[nodiscard]] QString path(const char *name) const;
    QByteArray run(const QStringList &arguments);
    [[noreturn]] void fail(const QString &what) const;

    QTemporaryDir m_folder;
    /// Its path is short, because a socket lies in it, and no folder above shuts the database's
    /// user out.
    QTemporaryDir m_serviceFolder{QStringLiteral("/tmp/veltrix-client-XXXXXX")};
    sample::SampleServices m_appStore;
    QProcess m_process;
    QString m_port = QStringLiteral("0");
};

} // namespace veltrix
