// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/served_guests.h"

#include "effects/folder_talk.h"
#include "headless/keyword_choice.h"
#include "headless/measure_run.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

namespace veltrix
{

namespace
{

/// A wish of that kind; none when the line is another.
template <class Wish>
std::optional<Wish> wishIn(const QByteArray &line)
{
    try {
        return fromJson<Wish>(line);
    } catch (const Error &) {
        return std::nullopt;
    }
}

/// Sends the text to a guest, no faster than he takes it.
class GuestsText final : public ExportReceiver
{
public:
    explicit GuestsText(QPointer<FolderGuest> guest) : m_guest(std::move(guest)) {}

    Task<void> take(QByteArray piece, std::stop_token stop) override
    {
        throwIfStopped(stop);
        if (!m_guest)
            throw Cancelled();
        m_guest->answer(toJson(ExportMessage(QString::fromUtf8(piece))));
        co_await m_guest->sent(stop);
    }

private:
    QPointer<FolderGuest> m_guest;
};

} // namespace

ServedGuests::ServedGuests(ASOStore &store, RankTelling &telling, ExportTables tables)
    : m_store(store), m_telling(telling), m_tables(std::move(tables))
{
}

void ServedGuests::serve(FolderGuest *guest)
{
    m_tasks.own(serveOne(guest, m_tasks.token()));
}

Task<void> ServedGuests::serveOne(QPointer<FolderGuest> guest, std::stop_token stop)
{
    ++m_serving;
    std::stop_source ending;
    const std::stop_callback withThis(stop, [&ending] { ending.request_stop(); });
    QObject::connect(guest, &FolderGuest::left, guest,
                     [ending]() mutable { ending.request_stop(); });
    try {
        if (auto toExport = wishIn<ExportWish>(guest->wish()))
            co_await exportFor(guest, std::move(*toExport), ending.get_token());
        else if (auto toMeasure = wishIn<MeasureWish>(guest->wish()))
            co_await measureFor(guest, std::move(*toMeasure), ending.get_token());
    } catch (const Cancelled &) {
        // The guest has left, or this ends.
    }
    throwIfStopped(stop);
    if (guest)
        guest->end();
    if (--m_serving > 0)
        co_return;
    for (const OneShot<Done> &waiting : std::exchange(m_waitingForAll, {}))
        waiting.resolve({});
}

Task<void> ServedGuests::measureFor(QPointer<FolderGuest> guest, MeasureWish wish,
                                    std::stop_token stop)
{
    MeasureRun::Tell tell = [guest, ending = m_tasks.token()](const MeasureMessage &message) {
        // A summary would be the end of the wish; without one the guest goes on by itself.
        if (guest && !ending.stop_requested())
            guest->answer(toJson(message));
    };
    try {
        MeasureRun run(m_store, m_telling, std::move(tell));
        co_await run.run(std::move(wish), stop);
    } catch (const Error &) {
        // Told.
    }
}

Task<void> ServedGuests::exportFor(QPointer<FolderGuest> guest, ExportWish wish,
                                   std::stop_token stop)
{
    ExportEnd end;
    try {
        GuestsText text(guest);
        ExportRun run(m_store, m_tables, text);
        co_await run.run(std::move(wish), stop);
    } catch (const UnknownChoice &wrong) {
        end = {wrong.description(), true};
    } catch (const Error &error) {
        end.problem = error.description();
    }
    throwIfStopped(stop);
    if (guest)
        guest->answer(toJson(ExportMessage(end)));
}

Task<void> ServedGuests::allServed(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (m_serving == 0)
        co_return;
    const OneShot<Done> all = m_waitingForAll.emplace_back();
    co_await all.wait(stop);
}

} // namespace veltrix
