// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/property_list.h"

#include "clients/safe_xml_reader.h"

namespace veltrix
{

namespace
{

/// The value of the element that the reader has just entered.
PropertyListValue takeValue(SafeXmlReader &xml);

[[noreturn]] void fail(const QString &problem)
{
    throw PropertyListError(problem);
}

PropertyListValue takeDictionary(SafeXmlReader &xml)
{
    PropertyListValue::Dictionary dictionary;
    while (xml.enterChild()) {
        if (xml.name() != u"key")
            fail(QStringLiteral("a dictionary has a value without a key"));
        const QString key = xml.takeText();
        if (!xml.enterChild())
            fail(QStringLiteral("the key “%1” has no value").arg(key));
        dictionary.insert(key, takeValue(xml));
    }
    return PropertyListValue(std::move(dictionary));
}

PropertyListValue takeArray(SafeXmlReader &xml)
{
    PropertyListValue::Array array;
    while (xml.enterChild())
        array.append(takeValue(xml));
    return PropertyListValue(std::move(array));
}

PropertyListValue takeValue(SafeXmlReader &xml)
{
    const QString type = xml.name().toString();
    if (type == u"dict")
        return takeDictionary(xml);
    if (type == u"array")
        return takeArray(xml);
    if (type == u"true" || type == u"false") {
        xml.skip();
        return PropertyListValue(type == u"true");
    }
    const QString text = xml.takeText();
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

PropertyListValue takeDocument(SafeXmlReader &xml)
{
    if (!xml.enterChild() || xml.name() != u"plist")
        fail(QStringLiteral("it has no plist element"));
    if (!xml.enterChild())
        fail(QStringLiteral("it is empty"));
    PropertyListValue value = takeValue(xml);
    if (xml.enterChild())
        fail(QStringLiteral("it has more than one root value"));
    xml.requireEnd();
    return value;
}

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
        // The plist element itself is one level, too.
        SafeXmlReader reader(xml, {limits.bytes, limits.depth + 1});
        return takeDocument(reader);
    } catch (const XmlError &error) {
        throw PropertyListError(clauseOf(error.description()));
    }
}

} // namespace veltrix
