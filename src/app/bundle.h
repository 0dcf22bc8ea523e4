// SPDX-License-Identifier: GPL-3.0-or-later
// The resources that stand beside the program.
#pragma once

#include "clients/property_list.h"

#include <QString>

#include <optional>

namespace veltrix
{

/// The application bundle: a folder with the information dictionary and optional resources. It is
/// read once; a missing or malformed dictionary counts as an empty one, so that the program starts.
class Bundle
{
public:
    /// The folder ../share/veltrix beside the folder of the executable: the same in a build tree,
    /// under /usr and under /opt/veltrix.
    static Bundle ofThisProgram();

    explicit Bundle(QString folder);

    /// A text of the information dictionary; a value of another kind counts as absent.
    [[nodiscard]] std::optional<QString> information(const QString &key) const;
    [[nodiscard]] const QString &folder() const { return m_folder; }

    /// Path of a resource, whether or not it is there.
    [[nodiscard]] QString path(const QString &fileName) const;

    /// What the About section shows: the short version, or "—" when there is none, and the build
    /// number in parentheses when there is one.
    [[nodiscard]] QString versionText() const;

private:
    QString m_folder;
    /// The information dictionary, "Info.plist".
    PropertyListValue m_information;
};

} // namespace veltrix
