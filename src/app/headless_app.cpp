// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/headless_app.h"

#include "app/services.h"
#include "app/user_files.h"
#include "effects/data_folder_lock.h"
#include "effects/data_locations.h"
#include "effects/end_signals.h"
#include "effects/standard_streams.h"
#include "headless/measure_output.h"
#include "headless/measure_run.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QEventLoop>

namespace veltrix
{

namespace
{

/// How long the process that has the folder may take to take a wish.
constexpr std::chrono::milliseconds ownersPatience{5000};

/// Measuring by this process, which has the folder, until it is done or asked to end.
class OwnMeasuring
{
public:
    OwnMeasuring(ASOStore &store, MeasureOutput &output) : m_store(store), m_output(output) {}

    void run(MeasureWish wish)
    {
        m_tasks.own(measure(std::move(wish)));
        if (!m_isDone)
            m_loop.exec();
    }
    /// What was measured until now is saved; the rest is told as left.
    void stop() { m_stop.request_stop(); }

private:
    Task<void> measure(MeasureWish wish)
    {
        MeasureRun run(m_store, [this](const MeasureMessage &message) { m_output.print(message); });
        try {
            co_await run.run(std::move(wish), m_stop.get_token());
        } catch (const Error &) {
            // Printed already.
        }
        m_isDone = true;
        m_loop.quit();
    }

    ASOStore &m_store;
    MeasureOutput &m_output;
    QEventLoop m_loop;
    bool m_isDone = false;
    std::stop_source m_stop;
    TaskScope m_tasks;
};

void measureHere(const MeasureWish &wish, const Bundle &bundle, const QString &folder,
                 DataFolderLock &lock, MeasureOutput &output)
{
    clearLeftovers(folder, cacheFolder());
    Services services(bundle, folder, cacheFolder(), storedSettings(), &lock);
    OwnMeasuring measuring(services.store(), output);
    const EndSignals ends;
    const auto stop = [&measuring] {
        measuring.stop();
    };
    QObject::connect(&ends, &EndSignals::endRequested, &ends, stop);
    // The window goes first.
    lock.makeRoomWhenAsked();
    QObject::connect(&lock, &DataFolderLock::raiseRequested, &ends, stop);
    measuring.run(wish);
}

/// Prints what the owner of the folder tells, until it ends or this process is asked to. The owner
/// then ends the wish by itself.
void measureThere(FolderOwner &owner, MeasureOutput &output)
{
    QEventLoop loop;
    QObject::connect(&owner, &FolderOwner::answered, &loop, [&output](const QByteArray &line) {
        try {
            output.print(fromJson<MeasureMessage>(line));
        } catch (const Error &error) {
            std::fprintf(stderr, "veltrix: %s\n", qUtf8Printable(error.description()));
        }
    });
    QObject::connect(&owner, &FolderOwner::ended, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    const EndSignals ends;
    QObject::connect(&ends, &EndSignals::endRequested, &loop, &QEventLoop::quit);
    owner.listen();
    loop.exec();
}

} // namespace

ExitStatus runHeadless(const MeasureCommand &command, const Bundle &bundle)
{
    const MeasureWish wish{command.choice.apps, command.choice.storefronts, command.all};
    MeasureOutput output(command.json ? MeasureOutput::Form::Json : MeasureOutput::Form::Text,
                         {stdout, stderr, isErrorOutputATerminal()});
    const QString folder = dataFolder();
    DataFolderLock lock(folder);
    if (lock.acquire() != DataFolderLock::Outcome::HeldByAnother) {
        measureHere(wish, bundle, folder, lock, output);
    } else if (const auto owner = lock.askOwner(toJson(wish), ownersPatience)) {
        measureThere(*owner, output);
    } else {
        std::fprintf(stderr, "veltrix: Veltrix is already running on %s and does not answer.\n",
                     qUtf8Printable(folder));
        return ExitStatus::Busy;
    }
    return output.status().value_or(ExitStatus::Incomplete);
}

} // namespace veltrix
