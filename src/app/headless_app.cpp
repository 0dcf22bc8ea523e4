// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/headless_app.h"

#include "app/desktop_notification.h"
#include "app/folder_run.h"
#include "effects/data_locations.h"
#include "effects/standard_streams.h"
#include "headless/measure_output.h"
#include "headless/measure_run.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>

namespace veltrix
{

namespace
{

/// Measuring by this process, which has the folder.
class OwnMeasuring
{
public:
    OwnMeasuring(ASOStore &store, RankTelling &telling, MeasureOutput &output)
        : m_run(store, telling, [&output](const MeasureMessage &message) { output.print(message); })
    {
    }

    Task<void> measure(MeasureWish wish, std::stop_token callersStop)
    {
        const ScopedStop stop(m_tasks, callersStop);
        try {
            co_await m_run.run(std::move(wish), stop);
        } catch (const Error &) {
            // Printed already.
        }
    }

private:
    MeasureRun m_run;
    TaskScope m_tasks;
};

void measureHere(const MeasureWish &wish, const Bundle &bundle, const QString &folder,
                 DataFolderLock &lock, MeasureOutput &output)
{
    OwnData data(bundle, folder, lock);
    OwnMeasuring measuring(data.store(), data.telling(), output);
    OwnRun(data.store(), data.telling(), lock).run([&](std::stop_token stop) {
        return measuring.measure(wish, std::move(stop));
    });
}

/// Prints what the owner of the folder tells.
OwnersEnd measureThere(FolderOwner &owner, MeasureOutput &output)
{
    return listenTo(owner, [&output](const QByteArray &line) {
        try {
            output.print(fromJson<MeasureMessage>(line));
        } catch (const Error &error) {
            std::fprintf(stderr, "veltrix: %s\n", qUtf8Printable(error.description()));
        }
        return output.status().has_value();
    });
}

/// Measures by whoever has the folder: this process, or the one that does. When that one ends
/// before it was done, its successor goes on, which may be this process.
ExitStatus measure(const MeasureWish &wish, const Bundle &bundle, MeasureOutput &output)
{
    const QString folder = dataFolder();
    DataFolderLock lock(folder);
    std::chrono::milliseconds patience{0};
    while (const auto owner = ownerOf(lock, toJson(wish), patience)) {
        if (measureThere(*owner, output) != OwnersEnd::Left)
            return output.status().value_or(ExitStatus::Incomplete);
        if (wish.all) {
            // Nobody knows any more what of the day is from before.
            output.sayProblem(QStringLiteral("Veltrix was closed before all was measured."));
            return ExitStatus::Incomplete;
        }
        patience = endPatience;
    }
    if (lock.isHeldByAnother()) {
        output.sayProblem(busyText(folder));
        return ExitStatus::Busy;
    }
    measureHere(wish, bundle, folder, lock, output);
    return output.status().value_or(ExitStatus::Incomplete);
}

void openWindow(const QString &activationToken)
{
    QProcess window;
    window.setProgram(QCoreApplication::applicationFilePath());
    window.setArguments({QStringLiteral("--overview")});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!activationToken.isEmpty())
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), activationToken);
    window.setProcessEnvironment(environment);
    window.startDetached();
}

/// Until the user has seen it: only who is there hears of the click. The data is free meanwhile.
void showNotice(const RankNotice &notice)
{
    constexpr std::chrono::hours patience{12};
    QEventLoop loop;
    DesktopNotification notification;
    QObject::connect(&notification, &DesktopNotification::opened, &loop,
                     [&loop](const QString &activationToken) {
                         openWindow(activationToken);
                         loop.quit();
                     });
    QObject::connect(&notification, &DesktopNotification::closed, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    const EndSignals ends;
    QObject::connect(&ends, &EndSignals::endRequested, &loop, &QEventLoop::quit);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    notification.show(notice.title, notice.text);
    loop.exec();
}

} // namespace

ExitStatus runHeadless(const MeasureCommand &command, const Bundle &bundle)
{
    const MeasureWish wish{command.choice.apps, command.choice.storefronts, command.all,
                           command.notify};
    MeasureOutput output(command.json ? MeasureOutput::Form::Json : MeasureOutput::Form::Text,
                         {takeStandardOutput(), stderr, isErrorOutputATerminal()});
    const ExitStatus status = measure(wish, bundle, output);
    if (const auto &notice = output.notice())
        showNotice(*notice);
    return status;
}

} // namespace veltrix
