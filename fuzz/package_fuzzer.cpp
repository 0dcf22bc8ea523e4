// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a Debian package: refused, or of a version that can be ordered.
#include "clients/update/package_version.h"
#include "clients/update/version_order.h"
#include "fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QByteArray package = fuzz::bytesOf(data, size);
    QString version;
    if (!fuzz::isAccepted([&] { version = debianPackageVersion(package); }))
        return 0;
    fuzz::require(isMachineVersion(version), "a version can be ordered");
    const ExpectedVersion same{version, version};
    fuzz::require(!fuzz::isAccepted([&] { requirePackageVersion(package, same); }),
                  "a package of the installed version is refused");
    return 0;
}
