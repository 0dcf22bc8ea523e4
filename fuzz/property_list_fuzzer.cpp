// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a property list: refused, or values; as a configuration: refused, or one that is
// safe to send a key to.
#include "clients/property_list.h"
#include "clients/supabase_configuration.h"
#include "fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QByteArray document = fuzz::bytesOf(data, size);
    PropertyListValue list;
    const bool isList = fuzz::isAccepted([&] { list = readPropertyList(document); });
    SupabaseConfiguration configuration;
    if (!fuzz::isAccepted(
            [&] { configuration = SupabaseConfiguration::fromPropertyList(document); }))
        return 0;
    fuzz::require(isList && list.dictionary().has_value(), "a configuration is a dictionary");
    fuzz::require(configuration.projectURL.scheme() == QLatin1String("https") &&
                      !configuration.projectURL.host().isEmpty(),
                  "a key goes to a host, and encrypted");
    fuzz::require(configuration.publishableKey.startsWith(QLatin1String("sb_publishable_")) &&
                      !configuration.publishableKey.contains(u'\n') &&
                      !configuration.publishableKey.contains(u'\r'),
                  "a key is a publishable one of one line");
    return 0;
}
