// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/property_list.h"

#include "clients/safe_xml_reader.h"

namespace veltrix
{

namespace
{

[[noreturn]] void fail(const QString &problem)
{
    throw PropertyListError(problem);
}

/// Walks through one document.
class Reader
{
public:
    // The plist element itself is one level, too.
    Reader(const QByteArray &document, PropertyListLimits limits)
        : m_xml(document, {limits.bytes, limits.depth + 1}), m_valuesLeft(limits.values)
    {
    }

    PropertyListValue takeDocument()
    {
        if (!m_xml.enterChild() || m_xml.name() != u"plist")
            fail(QStringLiteral("it has no plist element"));
        if (!m_xml.enterChild())
            fail(QStringLiteral("it is empty"));
        PropertyListValue value = takeValue();
        if (m_xml.enterChild())
            fail(QStringLiteral("it has more than one root value"));
        m_xml.requireEnd();
        return value;
    }

private:
    PropertyListValue takeDictionary()
    {
        PropertyListValue::Dictionary dictionary;
        while (m_xml.enterChild()) {
            if (m_xml.name() != u"key")
                fail(QStringLiteral("a dictionary has a value without a key"));
            const QString key = m_xml.takeText();
            if (!m_xml.enterChild())
                fail(QStringLiteral("the key “%1” has no value").arg(key));
            dictionary.insert(key, takeValue());
        }
        return PropertyListValue(std::move(dictionary));
    }

    PropertyListValue takeArray()
    {
        PropertyListValue::Array array;
        while (m_xml.enterChild())
            array.append(takeValue());
        return PropertyListValue(std::move(array));
    }

    /// The value of the element that the reader has just entered.
    PropertyListValue takeValue()
    {
        if (m_valuesLeft-- == 0)
            fail(QStringLiteral("it has too many values"));
        const QString type = m_xml.name().toString();
        if (type == u"dict")
            return takeDictionary();
        if (type == u"array")
            return takeArray();
        if (type == u"true" || type == u"false") {
            m_xml.skip();
            return PropertyListValue(type == u"true");
        }
        return takeScalar(type);
    }

    PropertyListValue takeScalar(const QString &type)
    {
        const QString text = m_xml.takeText();
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

    SafeXmlReader m_xml;
    int m_valuesLeft;
};

/// A sentence as the end of another one.
QString clauseOf(QString sentence)
{
    if (sentence.endsWith(u'.'))
        sentence.chop(1);
    return sentence.left(1).toLower() + sentence.mid(1);
}

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

std::optional<QString> PropertyListValue::textMember(const QString &key) const
{
    const std::optional<PropertyListValue> value = member(key);
    return value ? value->text() : std::nullopt;
}

PropertyListValue readPropertyList(const QByteArray &xml, PropertyListLimits limits)
{
    try {
        return Reader(xml, limits).takeDocument();
    } catch (const XmlError &error) {
        throw PropertyListError(clauseOf(error.description()));
    }
}

} // namespace veltrix
