// SPDX-License-Identifier: GPL-3.0-or-later
// Where views get icons and screenshots from.
#pragma once

#include "effects/task.h"
#include "model/url.h"

#include <QByteArray>

namespace veltrix
{

/// Loads images by address.
class ArtworkLoading
{
public:
    ArtworkLoading() = default;
    virtual ~ArtworkLoading() = default;
    ArtworkLoading(const ArtworkLoading &) = delete;
    ArtworkLoading &operator=(const ArtworkLoading &) = delete;

    /// The encoded bytes of an image (PNG, JPEG, WebP as sent). Throws an Error when it cannot be
    /// had.
    virtual Task<QByteArray> load(Url url, std::stop_token stop) = 0;
};

} // namespace veltrix
