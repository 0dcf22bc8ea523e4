// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/headless_export.h"

#include "app/export_output.h"
#include "app/folder_run.h"
#include "effects/data_locations.h"
#include "effects/standard_streams.h"
#include "headless/keyword_choice.h"
#include "headless/measure_text.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

namespace veltrix
{

namespace
{

/// How an attempt has ended; none when there is to be another.
using Attempt = std::optional<ExportEnd>;

ExportEnd stopped()
{
    return {QStringLiteral("The export was stopped."), false};
}

/// The export by this process, which has the folder.
class OwnExport
{
public:
    OwnExport(ASOStore &store, ExportOutput &output) : m_run(store, windowTables(), output) {}

    Task<void> write(ExportWish wish, std::stop_token callersStop)
    {
        const ScopedStop stop(m_tasks, callersStop);
        try {
            co_await m_run.run(std::move(wish), stop);
            m_end = ExportEnd();
        } catch (const UnknownChoice &wrong) {
            m_end = {wrong.description(), true};
        } catch (const Error &error) {
            m_end = {error.description(), false};
        }
    }

    /// None while it has not ended.
    [[nodiscard]] const Attempt &end() const { return m_end; }

private:
    ExportRun m_run;
    Attempt m_end;
    TaskScope m_tasks;
};

Attempt exportHere(const ExportWish &wish, const Bundle &bundle, const QString &folder,
                   DataFolderLock &lock, ExportOutput &output)
{
    OwnData data(bundle, folder, lock);
    OwnExport exporting(data.store(), output);
    const OwnRun::End end =
        OwnRun(data.store(), data.telling(), lock).run([&](std::stop_token stop) {
            return exporting.write(wish, std::move(stop));
        });
    if (!exporting.end() && end == OwnRun::End::Signal)
        return stopped();
    return exporting.end();
}

Attempt exportThere(FolderOwner &owner, ExportOutput &output)
{
    Attempt ended;
    const OwnersEnd end = listenTo(owner, [&](const QByteArray &line) {
        try {
            const auto message = fromJson<ExportMessage>(line);
            if (message.piece)
                output.add(message.piece->toUtf8());
            ended = message.end;
        } catch (const Error &error) {
            ended = {error.description(), false};
        }
        return ended.has_value();
    });
    if (!ended && end == OwnersEnd::Signal)
        return stopped();
    return ended;
}

/// The folder is another's who does not answer.
struct Busy {
};

/// Gathers the export by whoever has the folder. When that one ends before it was done, its
/// successor begins again, which may be this process; and when a window is opened, that one does.
std::variant<ExportEnd, Busy> gather(const ExportWish &wish, const Bundle &bundle,
                                     ExportOutput &output)
{
    const QString folder = dataFolder();
    std::chrono::milliseconds patience{0};
    for (;;) {
        output.begin();
        DataFolderLock lock(folder);
        const auto owner = ownerOf(lock, toJson(wish), patience);
        if (!owner && lock.isHeldByAnother())
            return Busy();
        if (const Attempt ended = owner ? exportThere(*owner, output)
                                        : exportHere(wish, bundle, folder, lock, output))
            return *ended;
        patience = endPatience;
    }
}

ExitStatus say(const QString &problem, ExitStatus status)
{
    std::fprintf(stderr, "veltrix: %s\n", qUtf8Printable(printable(problem)));
    return status;
}

} // namespace

ExitStatus runExport(const ExportCommand &command, const Bundle &bundle)
{
    const bool isJson = command.form == ExportCommand::Form::Json;
    ExportOutput output({
        .path = command.output,
        // By it spreadsheets know the encoding.
        .mark = isJson ? QByteArray() : QString(QChar::ByteOrderMark).toUtf8(),
        .standardOutput = takeStandardOutput(),
        .scratchFolder = cacheFolder(),
    });
    const ExportWish wish{command.choice.apps, command.choice.storefronts, isJson, command.history};
    try {
        const auto gathered = gather(wish, bundle, output);
        const auto *end = std::get_if<ExportEnd>(&gathered);
        if (!end)
            return say(busyText(dataFolder()), ExitStatus::Busy);
        if (end->problem) {
            return say(*end->problem,
                       end->isWrongUse ? ExitStatus::WrongUse : ExitStatus::Incomplete);
        }
        // A signal neither leaves half a file nor keeps what is printed from ending at once.
        std::optional<EndSignals> ends;
        if (command.output)
            ends.emplace();
        // Nobody waits for the data any more, however slowly this is read.
        output.finish();
        return ExitStatus::Done;
    } catch (const Error &error) {
        return say(error.description(), ExitStatus::Incomplete);
    }
}

} // namespace veltrix
