// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/measure_guests.h"

#include "effects/folder_talk.h"
#include "headless/keyword_choice.h"
#include "headless/measure_run.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

namespace veltrix
{

MeasureGuests::MeasureGuests(ASOStore &store) : m_store(store) {}

void MeasureGuests::serve(FolderGuest *guest)
{
    m_tasks.own(measureFor(guest, m_tasks.token()));
}

Task<void> MeasureGuests::measureFor(QPointer<FolderGuest> guest, std::stop_token stop)
{
    std::stop_source ending;
    const std::stop_callback withThis(stop, [&ending] { ending.request_stop(); });
    QObject::connect(guest, &FolderGuest::left, guest,
                     [ending]() mutable { ending.request_stop(); });
    MeasureRun::Tell tell = [guest](const MeasureMessage &message) {
        if (guest)
            guest->answer(toJson(message));
    };
    try {
        MeasureWish wish = fromJson<MeasureWish>(guest->wish());
        MeasureRun run(m_store, std::move(tell));
        co_await run.run(std::move(wish), ending.get_token());
    } catch (const Error &) {
        // Told, or not a wish at all: either way there is nothing more to say.
    }
    throwIfStopped(stop);
    if (guest)
        guest->end();
}

} // namespace veltrix
