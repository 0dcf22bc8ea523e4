// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/property_list.h"

#include <QXmlStreamReader>

namespace veltrix
{

namespace
{

class Reader
{
public:
    Reader(const QByteArray &xml, PropertyListLimits limits) : m_xml(xml), m_limits(limits)
    {
        m_xml.setEntityExpansionLimit(0);
    }

    PropertyListValue document()
    {
        while (!m_xml.atEnd() && m_xml.readNext() != QXmlStreamReader::StartElement) {
            if (m_xml.isDTD())
                m_declaresEntities = !m_xml.entityDeclarations().isEmpty();
        }
        // An entity may stand for a million others, or for a file; no property list needs one.
        if (m_declaresEntities)
            fail(QStringLiteral("it declares entities"));
        if (!m_xml.isStartElement() || m_xml.name() != u"plist")
            fail(QStringLiteral("it has no plist element"));
        if (!m_xml.readNextStartElement())
            fail(QStringLiteral("it is empty"));
        PropertyListValue value = readValue(1);
        if (m_xml.readNextStartElement())
            fail(QStringLiteral("it has more than one root value"));
        while (!m_xml.atEnd())
            m_xml.readNext();
        checkSyntax();
        return value;
    }

private:
    [[noreturn]] void fail(const QString &problem)
    {
        checkSyntax();
        throw PropertyListError(problem);
    }

    void checkSyntax() const
    {
        if (m_xml.hasError())
            throw PropertyListError(m_xml.errorString());
    }

    /// The value of the element that was just opened.
    PropertyListValue readValue(int depth)
    {
        if (depth > m_limits.depth)
            fail(QStringLiteral("it is nested too deeply"));
        const QString type = m_xml.name().toString();
        if (type == u"dict")
            return readDictionary(depth);
        if (type == u"array")
            return readArray(depth);
        if (type == u"true" || type == u"false") {
            m_xml.skipCurrentElement();
            checkSyntax();
            return PropertyListValue(type == u"true");
        }
        const QString text = readText();
        if (type == u"string" || type == u"date" || type == u"data")
            return PropertyListValue(text);
        bool isNumber = false;
        if (type == u"integer") {
            const qlonglong number = text.trimmed().toLongLong(&isNumber);
            if (isNumber)
                return PropertyListValue(std::int64_t(number));
        } else if (type == u"real") {
            const double number = text.trimmed().toDouble(&isNumber);
            if (isNumber)
                return PropertyListValue(number);
        }
        fail(QStringLiteral("“%1” is not a value").arg(type));
    }

    /// The text up to the end of the element.
    QString readText()
    {
        QString text = m_xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
        checkSyntax();
        return text;
    }

    PropertyListValue readDictionary(int depth)
    {
        PropertyListValue::Dictionary dictionary;
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != u"key")
                fail(QStringLiteral("a dictionary has a value without a key"));
            const QString key = readText();
            if (!m_xml.readNextStartElement())
                fail(QStringLiteral("the key “%1” has no value").arg(key));
            dictionary.insert(key, readValue(depth + 1));
        }
        checkSyntax();
        return PropertyListValue(std::move(dictionary));
    }

    PropertyListValue readArray(int depth)
    {
        PropertyListValue::Array array;
        while (m_xml.readNextStartElement())
            array.append(readValue(depth + 1));
        checkSyntax();
        return PropertyListValue(std::move(array));
    }

    QXmlStreamReader m_xml;
    PropertyListLimits m_limits;
    bool m_declaresEntities = false;
};

} // namespace

PropertyListError::PropertyListError(const QString &problem)
    : Error(QStringLiteral("The property list couldn’t be read: %1.").arg(problem))
{
}

std::optional<PropertyListValue> PropertyListValue::member(const QString &key) const
{
    const auto *dictionary = std::get_if<Dictionary>(&m_value);
    if (!dictionary)
        return std::nullopt;
    const auto found = dictionary->find(key);
    return found == dictionary->end() ? std::nullopt : std::optional(*found);
}

PropertyListValue readPropertyList(const QByteArray &xml, PropertyListLimits limits)
{
    if (xml.size() > limits.bytes)
        throw PropertyListError(QStringLiteral("it is too large"));
    return Reader(xml, limits).document();
}

} // namespace veltrix
