// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/settings_file.h"

#include <QSettings>

namespace veltrix
{

SettingsFile::SettingsFile(QString path, std::shared_ptr<FileThread> files)
    : m_path(std::move(path)), m_files(std::move(files))
{
    const QSettings file(m_path, QSettings::IniFormat);
    for (const QString &key : file.allKeys())
        m_values.emplace(key, file.value(key));
}

QVariant SettingsFile::value(const QString &key, const QVariant &otherwise) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? otherwise : found->second;
}

void SettingsFile::setValue(const QString &key, const QVariant &value)
{
    m_values.insert_or_assign(key, value);
    m_changes.insert_or_assign(key, value);
    // It flushes the file as soon as the event loop of its thread turns, or at its end.
    m_files->save(m_path, [path = m_path, changes = m_changes] {
        QSettings file(path, QSettings::IniFormat);
        for (const auto &[changed, to] : changes)
            file.setValue(changed, to);
    });
}

void SettingsFile::sync()
{
    m_files->waitUntilFinished();
}

} // namespace veltrix
