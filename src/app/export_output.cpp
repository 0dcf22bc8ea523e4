// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/export_output.h"

#include "effects/standard_streams.h"

#include <QDir>

namespace veltrix
{

ExportOutput::ExportOutput(Place place) : m_place(std::move(place)) {}

void ExportOutput::begin()
{
    m_file.reset();
    m_gathered.reset();
}

void ExportOutput::open()
{
    if (m_file || m_gathered)
        return;
    if (m_place.path) {
        m_file = std::make_unique<AtomicFileWriter>(*m_place.path);
        m_file->write(m_place.mark);
        return;
    }
    QDir().mkpath(m_place.scratchFolder);
    // Without a name where the system can: then nothing is left of it however this ends.
    m_gathered =
        std::make_unique<QTemporaryFile>(m_place.scratchFolder + QStringLiteral("/export-XXXXXX"));
    if (!m_gathered->open())
        failToGather();
}

void ExportOutput::add(QByteArrayView text)
{
    open();
    if (m_file)
        m_file->write(text);
    else if (m_gathered->write(text.data(), text.size()) != text.size() || !m_gathered->flush())
        failToGather();
}

Task<void> ExportOutput::take(QByteArray piece, std::stop_token stop)
{
    throwIfStopped(stop);
    add(piece);
    co_return;
}

void ExportOutput::finish()
{
    open();
    if (m_file) {
        m_file->commit();
        return;
    }
    constexpr qint64 portion = 65'536;
    if (!m_gathered->seek(0))
        failToGather();
    while (!m_gathered->atEnd()) {
        const QByteArray bytes = m_gathered->read(portion);
        if (bytes.isEmpty())
            failToGather();
        if (writeToStandardOutput(m_place.standardOutput, bytes) == Readers::None)
            return;
    }
}

void ExportOutput::failToGather() const
{
    throw FileError::unwritable(m_place.scratchFolder, m_gathered->errorString());
}

} // namespace veltrix
