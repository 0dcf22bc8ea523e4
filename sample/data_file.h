// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the files of data/, which are compiled in: the names, themes and texts of the App Store.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace veltrix::sample
{

/// A JSON object of a data file. What is asked for must be there and of the right kind; texts and
/// lists must not be empty, and no text of a list may come twice. Otherwise std::runtime_error says
/// which file and key is wrong, and why: "languages/german.json: apps[2].name is missing".
class DataObject
{
public:
    /// A file of data/, such as "themes/photo.json".
    static DataObject ofFile(const QString &name);
    static DataObject parsed(const QString &name, const QByteArray &content);

    [[nodiscard]] QString text(QStringView key) const;
    [[nodiscard]] double number(QStringView key) const;
    [[nodiscard]] bool truth(QStringView key) const;
    [[nodiscard]] DataObject object(QStringView key) const;
    [[nodiscard]] std::vector<DataObject> objects(QStringView key) const;
    [[nodiscard]] QStringList texts(QStringView key) const;
    [[nodiscard]] std::vector<QStringList> lists(QStringView key) const;

    /// Which of `known` the text names; the result lies in `known`.
    template <typename Known, typename Name>
    const auto &oneOf(QStringView key, const Known &known, Name name) const
    {
        const auto found = std::ranges::find(known, text(key), name);
        if (found == std::end(known))
            refuse(key, "names nothing known: " + text(key).toStdString());
        return *found;
    }

    /// Throws the error about a key.
    [[noreturn]] void refuse(QStringView key, const std::string &reason) const;

private:
    DataObject(QString place, QJsonObject object);
    [[nodiscard]] QJsonValue value(QStringView key, QJsonValue::Type type,
                                   const char *otherwise) const;
    [[nodiscard]] QJsonArray array(QStringView key) const;
    [[nodiscard]] QStringList textsIn(QStringView key, const QJsonArray &array) const;

    /// What stands before a key in errors.
    QString m_place;
    QJsonObject m_object;
};

} // namespace veltrix::sample
