// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as an update feed: refused, or versions of which only a newer one with a safe address
// is offered.
#include "clients/update/update_selection.h"
#include "clients/update/version_order.h"
#include "fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QByteArray document = fuzz::bytesOf(data, size);
    Appcast feed;
    if (!fuzz::isAccepted([&] { feed = readAppcast(document); }))
        return 0;
    const UpdateTarget target{QStringLiteral("1.0"), QStringLiteral("6.1.0-18-amd64"), 3,
                              startOfUtcDay(20'780)};
    const UpdateSelection selection = selectUpdate(feed, target);
    fuzz::require(selection.skipped.size() <= feed.items.size(),
                  "each version is passed over once");
    if (!selection.offer)
        return 0;
    const UpdateOffer &offer = *selection.offer;
    fuzz::require(isMachineVersion(offer.version) &&
                      compareVersions(offer.version, target.installedVersion) > 0,
                  "an offer is newer");
    if (offer.package) {
        fuzz::require(offer.package->url.scheme() == QLatin1String("https") &&
                          !offer.package->url.host().isEmpty(),
                      "a package has a safe address");
        fuzz::require(offer.package->length > 0 && offer.package->length <= largestUpdatePackage,
                      "a package has an acceptable length");
        fuzz::require(!offer.package->fileName.isEmpty() &&
                          !offer.package->fileName.contains(u'/') &&
                          !offer.package->fileName.startsWith(u'.'),
                      "a package has a plain file name");
    } else {
        fuzz::require(!offer.link.isEmpty() || !offer.notesLink.isEmpty() || !offer.notes.isEmpty(),
                      "what cannot be downloaded can be read about");
    }
    return 0;
}
