// SPDX-License-Identifier: GPL-3.0-or-later
// Small values that outlive the program.
#pragma once

#include "effects/file_thread.h"

#include <QVariant>

#include <map>
#include <memory>

namespace veltrix
{

/// Values by key in a file of the form that QSettings calls INI. Read at once, at creation; written
/// on the thread for files after each change. What another program changes in it meanwhile stays,
/// but for the keys that are set here. A file that cannot be written costs no more than the values.
class SettingsFile
{
public:
    SettingsFile(QString path, std::shared_ptr<FileThread> files);

    [[nodiscard]] bool contains(const QString &key) const { return m_values.contains(key); }
    /// `otherwise` when there is none. After a restart it may be a text that reads as the value.
    [[nodiscard]] QVariant value(const QString &key, const QVariant &otherwise = {}) const;
    void setValue(const QString &key, const QVariant &value);

    /// Waits until all is on the disk, for the end of the program.
    void sync();

private:
    using Values = std::map<QString, QVariant>;

    QString m_path;
    std::shared_ptr<FileThread> m_files;
    Values m_values;
    /// Set since the start.
    Values m_changes;
};

} // namespace veltrix
