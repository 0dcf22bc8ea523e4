// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/closing.h"

#include "store/aso_store.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Closing)
};

} // namespace

Closing::Verdict Closing::request()
{
    if (m_mayLoseChange)
        return Verdict::Close;
    if (m_store.saveBeforeEnd())
        return Verdict::Close;
    return std::exchange(m_isAsking, true) ? Verdict::Wait : Verdict::Ask;
}

ConfirmSheet::Question Closing::question() const
{
    const auto problem = m_store.persistenceProblem();
    return {Texts::tr("Quit without saving?"),
            Texts::tr("What you changed last is not in the file yet and will be lost.\n%1")
                .arg(problem ? problem->text : QString()),
            Texts::tr("Quit without saving"), Texts::tr("Try again")};
}

} // namespace veltrix
