// SPDX-License-Identifier: GPL-3.0-or-later
// Failures of reading and writing JSON.
#pragma once

#include "model/error.h"

namespace veltrix
{

/// A text is not the JSON that was expected. The description names the place, for example
/// "snapshots[3].difficultyComponents.matchWeight".
class DecodingError final : public Error
{
public:
    /// `problem` is a sentence without its place, for example "a number was expected".
    explicit DecodingError(QString problem, QString place = QString());

    /// The same failure, one level further out.
    [[nodiscard]] DecodingError within(const QString &outerPlace) const;

private:
    QString m_problem;
    QString m_place;
};

/// A value has no form in JSON: a number that is not finite.
class EncodingError final : public Error
{
public:
    using Error::Error;
};

} // namespace veltrix
