// SPDX-License-Identifier: GPL-3.0-or-later
// Why an update was not found, not loaded or not accepted.
#pragma once

#include "model/error.h"

namespace veltrix
{

/// An update was refused, or a server did not give what the feed promised.
class UpdateError final : public Error
{
public:
    using Error::Error;
};

} // namespace veltrix
