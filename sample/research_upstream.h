// SPDX-License-Identifier: GPL-3.0-or-later
// Where the research service fetches from: the made-up App Store.
#pragma once

#include "sample/app_store.h"
#include "sample/research_queue.h"

namespace veltrix::sample
{

/// Finds at most a hundred apps for a keyword, with the fields that the service passes on; none in
/// a storefront that the made-up App Store does not have. Pictures are taken from `pictureOrigin`,
/// such as "http://127.0.0.1:8080". The store must outlive what is returned.
ResearchUpstream searchIn(const AppStore &store, const QString &pictureOrigin);

} // namespace veltrix::sample
