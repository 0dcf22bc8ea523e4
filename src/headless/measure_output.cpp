// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/measure_output.h"

#include "headless/measure_text.h"
#include "json/json_writer.h"

namespace veltrix
{

MeasureOutput::MeasureOutput(Form form, Streams streams) : m_form(form), m_streams(streams) {}

void MeasureOutput::print(const MeasureMessage &message)
{
    if (message.progress) {
        showProgress(progressText(*message.progress));
        return;
    }
    if (message.wrongUse) {
        sayProblem(*message.wrongUse);
        m_status = ExitStatus::WrongUse;
        return;
    }
    if (message.summary) {
        m_status = message.summary->isComplete() ? ExitStatus::Done : ExitStatus::Incomplete;
        m_notice = message.summary->notice;
    }
    if (m_form == Form::Json)
        printLine(toJson(message));
    else if (message.keyword)
        printLine(turnText(*message.keyword).toUtf8());
    else if (message.summary)
        printLine(summaryText(*message.summary).toUtf8());
}

void MeasureOutput::sayProblem(const QString &problem)
{
    showProgress(QString());
    std::fprintf(m_streams.error, "veltrix: %s\n", qUtf8Printable(problem));
}

void MeasureOutput::printLine(const QByteArray &line)
{
    showProgress(QString());
    std::fprintf(m_streams.out, "%s\n", line.constData());
    std::fflush(m_streams.out);
}

/// Writes over the last progress; an empty text clears it.
void MeasureOutput::showProgress(const QString &text)
{
    if (!m_streams.showsProgress || (text.isEmpty() && !m_progressStands))
        return;
    constexpr const char *clearLine = "\r\x1b[K";
    std::fprintf(m_streams.error, "%s%s", clearLine, qUtf8Printable(text));
    std::fflush(m_streams.error);
    m_progressStands = !text.isEmpty();
}

} // namespace veltrix
