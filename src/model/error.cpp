// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/error.h"

namespace veltrix
{

Error::Error(QString description)
    : m_description(std::move(description)), m_utf8(m_description.toStdString())
{
}

} // namespace veltrix
