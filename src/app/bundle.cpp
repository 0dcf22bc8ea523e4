// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/bundle.h"

#include "effects/atomic_file.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace veltrix
{

namespace
{

PropertyListValue readInformation(const QString &path)
{
    if (!QFileInfo::exists(path))
        return {};
    try {
        return readPropertyList(readWholeFile(path));
    } catch (const Error &error) {
        qWarning("%s", error.what());
        return {};
    }
}

} // namespace

Bundle Bundle::ofThisProgram()
{
    return Bundle(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/veltrix"));
}

Bundle::Bundle(QString folder)
    : m_folder(std::move(folder)),
      m_information(readInformation(path(QStringLiteral("Info.plist"))))
{
}

std::optional<QString> Bundle::information(const QString &key) const
{
    return m_information.textMember(key);
}

QString Bundle::path(const QString &fileName) const
{
    return m_folder + u'/' + fileName;
}

QString Bundle::versionText() const
{
    QString text =
        information(QStringLiteral("CFBundleShortVersionString")).value_or(QStringLiteral("—"));
    const QString build = information(QStringLiteral("CFBundleVersion")).value_or(QString());
    if (!build.isEmpty())
        text += QStringLiteral(" (%1)").arg(build);
    return text;
}

} // namespace veltrix
