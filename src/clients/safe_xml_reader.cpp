// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/safe_xml_reader.h"

namespace veltrix
{

SafeXmlReader::SafeXmlReader(QByteArray document, XmlLimits limits)
    : m_document(std::move(document)), m_depthLimit(limits.depth)
{
    if (m_document.size() > limits.size)
        throw XmlError(QStringLiteral("The document is too large."));
    m_reader.setEntityResolver(&m_undeclared);
    m_reader.addData(m_document);
}

bool SafeXmlReader::enterChild()
{
    for (;;) {
        switch (next()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::EndElement:
            return false;
        case QXmlStreamReader::EndDocument:
            throw XmlError(QStringLiteral("The document ends too early."));
        default:
            break;
        }
    }
}

void SafeXmlReader::skip()
{
    const int outside = m_depth - 1;
    while (m_depth > outside)
        next();
}

QString SafeXmlReader::takeText()
{
    QString text;
    for (;;) {
        switch (next()) {
        case QXmlStreamReader::Characters:
            text += m_reader.text();
            break;
        case QXmlStreamReader::EndElement:
            return text;
        case QXmlStreamReader::StartElement:
            throw XmlError(QStringLiteral("A text was expected in place of an element."));
        default:
            break;
        }
    }
}

void SafeXmlReader::requireEnd()
{
    while (!m_reader.atEnd()) {
        if (next() == QXmlStreamReader::StartElement)
            throw XmlError(QStringLiteral("The document goes on after its end."));
    }
}

QXmlStreamReader::TokenType SafeXmlReader::next()
{
    const QXmlStreamReader::TokenType token = m_reader.readNext();
    if (m_undeclared.isUsed)
        throw XmlError(QStringLiteral("The document uses an unknown entity."));
    switch (token) {
    case QXmlStreamReader::Invalid:
        throw XmlError(QStringLiteral("The document is not valid XML (line %1: %2)")
                           .arg(m_reader.lineNumber())
                           .arg(m_reader.errorString()));
    case QXmlStreamReader::DTD:
        if (!m_reader.entityDeclarations().isEmpty())
            throw XmlError(QStringLiteral("The document declares entities."));
        break;
    case QXmlStreamReader::EntityReference:
        throw XmlError(QStringLiteral("The document uses an unknown entity."));
    case QXmlStreamReader::StartElement:
        if (++m_depth > m_depthLimit)
            throw XmlError(QStringLiteral("The document is nested too deeply."));
        break;
    case QXmlStreamReader::EndElement:
        --m_depth;
        break;
    default:
        break;
    }
    return token;
}

} // namespace veltrix
