// SPDX-License-Identifier: GPL-3.0-or-later
// The cases of supabase/contract: read, asked, and compared with the answers.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <httplib.h>

#include <vector>

namespace veltrix::sample
{

struct ContractCase {
    QString name;
    QJsonObject given;
    QJsonObject request;
    QJsonObject expect;
};

struct Contract {
    QString path;
    QJsonObject headers;
    /// The only members that a result may have.
    QStringList fields;
    std::vector<ContractCase> cases;

    /// Throws std::runtime_error if there is no such file, or if it has a member, a state or a word
    /// that is not known here: nothing of the contract may be passed over.
    static Contract read(const QString &file);

    /// The case's request, for a service with that publishable key.
    [[nodiscard]] httplib::Request requestOf(const ContractCase &contractCase,
                                             const QString &publishableKey) const;

    /// What the answer has that the case does not expect, a line each; empty if it keeps the
    /// contract.
    [[nodiscard]] QString differences(const ContractCase &contractCase,
                                      const httplib::Response &answer) const;
};

/// Keyword and country of a case in the form in which the service keeps them; empty if its state
/// needs none.
QJsonObject subjectOf(const ContractCase &contractCase);

} // namespace veltrix::sample
