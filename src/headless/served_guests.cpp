// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/measure_guests.h"

#include "effects/folder_talk.h"
#include "headless/keyword_choice.h"
#include "headless/measure_run.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

namespace veltrix
{

MeasureGuests::MeasureGuests(ASOStore &store, RankTelling &telling)
    : m_store(store), m_telling(telling)
{
}

void MeasureGuests::serve(FolderGuest *guest)
{
    m_tasks.own(measureFor(guest, m_tasks.token()));
}

Task<void> MeasureGuests::measureFor(QPointer<FolderGuest> guest, std::stop_token stop)
{
    ++m_serving;
    std::stop_source ending;
    const std::stop_callback withThis(stop, [&ending] { ending.request_stop(); });
    QObject::connect(guest, &FolderGuest::left, guest,
                     [ending]() mutable { ending.request_stop(); });
    MeasureRun::Tell tell = [guest, stop](const MeasureMessage &message) {
        // A summary would be the end of the wish; without one the guest goes on by itself.
        if (guest && !stop.stop_requested())
            guest->answer(toJson(message));
    };
    try {
        MeasureWish wish = fromJson<MeasureWish>(guest->wish());
        MeasureRun run(m_store, m_telling, std::move(tell));
        co_await run.run(std::move(wish), ending.get_token());
    } catch (const Error &) {
        // Told, or not a wish at all: either way there is nothing more to say.
    }
    throwIfStopped(stop);
    if (guest)
        guest->end();
    if (--m_serving > 0)
        co_return;
    for (const OneShot<Done> &waiting : std::exchange(m_waitingForAll, {}))
        waiting.resolve({});
}

Task<void> MeasureGuests::allServed(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (m_serving == 0)
        co_return;
    const OneShot<Done> all = m_waitingForAll.emplace_back();
    co_await all.wait(stop);
}

} // namespace veltrix
