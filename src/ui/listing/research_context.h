// SPDX-License-Identifier: GPL-3.0-or-later
// What the research screens work with.
#pragma once

#include <QUrl>

#include <functional>

namespace veltrix
{

class ArtworkImages;
class ASOStore;

/// Copied into every research screen; what it refers to outlives them.
struct ResearchContext {
    ASOStore &store;
    ArtworkImages &images;
    /// Opens an address with the system's default handler.
    std::function<void(const QUrl &)> openUrl;
    /// Web address under which App Store pages are found.
    QUrl appStoreUrl = QUrl(QStringLiteral("https://apps.apple.com"));
};

} // namespace veltrix
