// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/headless_app.h"

#include "app/desktop_notification.h"
#include "app/services.h"
#include "app/stored_preferences.h"
#include "app/user_files.h"
#include "effects/data_folder_lock.h"
#include "effects/data_locations.h"
#include "effects/end_signals.h"
#include "effects/standard_streams.h"
#include "headless/measure_guests.h"
#include "headless/measure_output.h"
#include "headless/measure_run.h"
#include "headless/rank_telling.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

#include <algorithm>

namespace veltrix
{

namespace
{

/// How long the process that has the folder may take to take a wish.
constexpr std::chrono::milliseconds ownersPatience{5000};
/// How long one that ends may take to finish saving.
constexpr std::chrono::seconds endPatience{30};

/// Measuring by this process, which has the folder, until it is done or asked to end. Meanwhile it
/// measures what other starts wish for, too.
class OwnMeasuring
{
public:
    OwnMeasuring(ASOStore &store, RankTelling &telling, DataFolderLock &lock, MeasureOutput &output)
        : m_store(store), m_telling(telling), m_output(output), m_guests(store, telling)
    {
        const auto stopNow = [this] {
            m_stop.request_stop();
        };
        QObject::connect(&m_ends, &EndSignals::endRequested, &m_loop, stopNow);
        // The window goes first.
        lock.makeRoomWhenAsked();
        QObject::connect(&lock, &DataFolderLock::raiseRequested, &m_loop, stopNow);
        QObject::connect(&lock, &DataFolderLock::wishReceived, &m_loop,
                         [this](FolderGuest *guest) { m_guests.serve(guest); });
    }

    void run(MeasureWish wish)
    {
        m_tasks.own(measure(std::move(wish)));
        if (!m_isDone)
            m_loop.exec();
    }

private:
    Task<void> measure(MeasureWish wish)
    {
        MeasureRun run(m_store, m_telling,
                       [this](const MeasureMessage &message) { m_output.print(message); });
        try {
            co_await run.run(std::move(wish), m_stop.get_token());
            co_await m_guests.allServed(m_stop.get_token());
        } catch (const Error &) {
            // Printed already.
        } catch (const Cancelled &) {
            // Whoever is not served goes on by itself.
        }
        m_isDone = true;
        m_loop.quit();
    }

    ASOStore &m_store;
    RankTelling &m_telling;
    MeasureOutput &m_output;
    EndSignals m_ends;
    QEventLoop m_loop;
    bool m_isDone = false;
    std::stop_source m_stop;
    MeasureGuests m_guests;
    TaskScope m_tasks;
};

void measureHere(const MeasureWish &wish, const Bundle &bundle, const QString &folder,
                 DataFolderLock &lock, MeasureOutput &output)
{
    clearLeftovers(folder, cacheFolder());
    const auto settings = storedSettings();
    Services services(bundle, folder, cacheFolder(), settings, &lock);
    RankTelling telling(services.store(), RankTelling::pathIn(folder),
                        [settings] { return StoredPreferences(*settings).digestChoice(); });
    OwnMeasuring(services.store(), telling, lock, output).run(wish);
}

enum class OwnersEnd {
    /// All was told, or this process is to end: the owner then ends the wish by itself.
    Told,
    /// The owner has ended before it was done.
    Left,
};

/// Prints what the owner of the folder tells.
OwnersEnd measureThere(FolderOwner &owner, MeasureOutput &output)
{
    QEventLoop loop;
    QObject::connect(&owner, &FolderOwner::answered, &loop, [&output](const QByteArray &line) {
        try {
            output.print(fromJson<MeasureMessage>(line));
        } catch (const Error &error) {
            std::fprintf(stderr, "veltrix: %s\n", qUtf8Printable(error.description()));
        }
    });
    OwnersEnd end = OwnersEnd::Told;
    const auto left = [&] {
        if (!output.status())
            end = OwnersEnd::Left;
        loop.quit();
    };
    QObject::connect(&owner, &FolderOwner::ended, &loop, left, Qt::QueuedConnection);
    const EndSignals ends;
    QObject::connect(&ends, &EndSignals::endRequested, &loop, &QEventLoop::quit);
    owner.listen();
    loop.exec();
    return end;
}

/// The process that has the folder, when this one cannot have it within `patience`. Null when this
/// one has it, or when that one does not answer.
std::unique_ptr<FolderOwner> ownerOf(DataFolderLock &lock, const MeasureWish &wish,
                                     std::chrono::milliseconds patience)
{
    constexpr std::chrono::milliseconds look{500};
    const QDeadlineTimer deadline(patience);
    std::unique_ptr<FolderOwner> owner;
    do {
        if (lock.acquireWithin(std::min(patience, look)) != DataFolderLock::Outcome::HeldByAnother)
            return nullptr;
        owner = lock.askOwner(toJson(wish), ownersPatience);
    } while (!owner && !deadline.hasExpired());
    return owner;
}

/// Measures by whoever has the folder: this process, or the one that does. When that one ends
/// before it was done, its successor goes on, which may be this process.
ExitStatus measure(const MeasureWish &wish, const Bundle &bundle, MeasureOutput &output)
{
    const QString folder = dataFolder();
    DataFolderLock lock(folder);
    std::chrono::milliseconds patience{0};
    while (const auto owner = ownerOf(lock, wish, patience)) {
        if (measureThere(*owner, output) == OwnersEnd::Told)
            return output.status().value_or(ExitStatus::Incomplete);
        if (wish.all) {
            // Nobody knows any more what of the day is from before.
            output.sayProblem(QStringLiteral("Veltrix was closed before all was measured."));
            return ExitStatus::Incomplete;
        }
        patience = endPatience;
    }
    if (lock.isHeldByAnother()) {
        output.sayProblem(QStringLiteral("Veltrix is already running on “") + folder +
                          QStringLiteral("” and does not answer."));
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
