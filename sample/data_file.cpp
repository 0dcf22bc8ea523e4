// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the data files of the made-up App Store.
#include "sample/data_file.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>
#include <utility>

namespace veltrix::sample
{

DataObject::DataObject(QString place, QJsonObject object)
    : m_place(std::move(place)), m_object(std::move(object))
{
}

DataObject DataObject::ofFile(const QString &name)
{
    QFile file(QStringLiteral(":/sample/") + name);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(name.toStdString() + ": there is no such file");
    return parsed(name, file.readAll());
}

DataObject DataObject::parsed(const QString &name, const QByteArray &content)
{
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(content, &error);
    if (error.error != QJsonParseError::NoError)
        throw std::runtime_error(name.toStdString() + ": " + error.errorString().toStdString() +
                                 " at byte " + std::to_string(error.offset));
    if (!document.isObject())
        throw std::runtime_error(name.toStdString() + ": holds no object");
    return {name + QStringLiteral(": "), document.object()};
}

QString DataObject::text(QStringView key) const
{
    const QString text = value(key, QJsonValue::String, "is no text").toString();
    if (text.isEmpty())
        refuse(key, "is empty");
    return text;
}

double DataObject::number(QStringView key) const
{
    return value(key, QJsonValue::Double, "is no number").toDouble();
}

bool DataObject::truth(QStringView key) const
{
    return value(key, QJsonValue::Bool, "is neither true nor false").toBool();
}

DataObject DataObject::object(QStringView key) const
{
    return {m_place + key.toString() + u'.',
            value(key, QJsonValue::Object, "is no object").toObject()};
}

std::vector<DataObject> DataObject::objects(QStringView key) const
{
    std::vector<DataObject> objects;
    for (const QJsonValue &item : array(key)) {
        if (!item.isObject())
            refuse(key, "holds something that is no object");
        const QString place = QStringLiteral("%1%2[%3].").arg(m_place, key).arg(objects.size());
        objects.push_back({place, item.toObject()});
    }
    return objects;
}

QStringList DataObject::texts(QStringView key) const
{
    return textsIn(key, array(key));
}

std::vector<QStringList> DataObject::lists(QStringView key) const
{
    std::vector<QStringList> lists;
    for (const QJsonValue &item : array(key))
        lists.push_back(textsIn(key, item.toArray()));
    return lists;
}

void DataObject::refuse(QStringView key, const std::string &reason) const
{
    throw std::runtime_error((m_place + key.toString()).toStdString() + ' ' + reason);
}

QJsonValue DataObject::value(QStringView key, QJsonValue::Type type, const char *otherwise) const
{
    const QJsonValue found = m_object.value(key);
    if (found.type() != type)
        refuse(key, found.isUndefined() ? "is missing" : otherwise);
    return found;
}

QJsonArray DataObject::array(QStringView key) const
{
    const QJsonArray array = value(key, QJsonValue::Array, "is no list").toArray();
    if (array.isEmpty())
        refuse(key, "is empty");
    return array;
}

QStringList DataObject::textsIn(QStringView key, const QJsonArray &array) const
{
    QStringList texts;
    for (const QJsonValue &item : array) {
        if (item.toString().isEmpty())
            refuse(key, "holds something that is no text, or an empty one");
        if (texts.contains(item.toString()))
            refuse(key, "holds a text twice: " + item.toString().toStdString());
        texts += item.toString();
    }
    if (texts.isEmpty())
        refuse(key, "holds an empty list");
    return texts;
}

} // namespace veltrix::sample
