// SPDX-License-Identifier: GPL-3.0-or-later
// What the application's bundle says about itself: versions, the update feed, service addresses.
#pragma once

#include "clients/property_list.h"

#include <QString>

#include <optional>

namespace veltrix
{

/// The information dictionary of the bundle ("Info.plist").
class InformationDictionary
{
public:
    /// Nothing in it.
    InformationDictionary() = default;
    /// Throws PropertyListError when it is no dictionary.
    explicit InformationDictionary(PropertyListValue content);

    /// Reads the file; a missing one is an empty dictionary. Throws XmlError or FileError for a
    /// file that cannot be read.
    static InformationDictionary load(const QString &path);

    /// A value that is a text; one of another kind counts as absent.
    [[nodiscard]] std::optional<QString> text(const QString &key) const;

private:
    PropertyListValue m_content;
};

} // namespace veltrix
