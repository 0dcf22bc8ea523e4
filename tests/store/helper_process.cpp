// SPDX-License-Identifier: GPL-3.0-or-later
// The only file that knows where the helper was built.
#include "store/helper_process.h"

namespace veltrix
{

QString helperPath()
{
    return QStringLiteral(VELTRIX_STORE_TEST_HELPER);
}

} // namespace veltrix
