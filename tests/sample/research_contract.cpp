// SPDX-License-Identifier: GPL-3.0-or-later
// The cases of supabase/contract.
#include "research_contract.h"

#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>
#include <stdexcept>

namespace veltrix::sample
{

namespace
{

constexpr qsizetype mostResults = 100;

std::runtime_error fault(const QString &what, const QString &where)
{
    return std::runtime_error(QStringLiteral("%1 in “%2”").arg(what, where).toStdString());
}

void allowOnly(const QStringList &known, const QJsonObject &object, const QString &where)
{
    for (const QString &member : object.keys())
        if (!known.contains(member))
            throw fault(QStringLiteral("unknown member “%1”").arg(member), where);
}

/// Throws for whatever this runner would not take into account.
void check(const ContractCase &known)
{
    allowOnly({u"state"_qs, u"place"_qs, u"seconds"_qs, u"blocked"_qs}, known.given, known.name);
    allowOnly({u"method"_qs, u"path"_qs, u"headers"_qs, u"body"_qs, u"text"_qs, u"hex"_qs,
               u"padTo"_qs, u"about"_qs},
              known.request, known.name);
    allowOnly({u"status"_qs, u"retryAfter"_qs, u"headers"_qs, u"body"_qs}, known.expect,
              known.name);
    if (!known.expect.contains(u"status") || !known.expect.contains(u"body"))
        throw fault(QStringLiteral("no status or body is expected"), known.name);
    static const QStringList words{u"$MOMENT"_qs, u"$RESULTS"_qs, u"$RETRY_AFTER"_qs};
    const QJsonValue body = known.expect.value(u"body");
    if (body.isString() && body != QJsonValue(u"$ERROR"_qs))
        throw fault(QStringLiteral("unknown body"), known.name);
    for (const QJsonValue &value : body.toObject())
        if (value.toString().startsWith(u'$') && !words.contains(value.toString()))
            throw fault(QStringLiteral("unknown word “%1”").arg(value.toString()), known.name);
}

QByteArray bodyOf(const QJsonObject &request)
{
    QByteArray body;
    const QJsonValue value = request.value(u"body");
    if (value.isObject())
        body = QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
    else if (value.isArray())
        body = QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    else if (request.contains(u"text"))
        body = request.value(u"text").toString().toUtf8();
    else if (request.contains(u"hex"))
        body = QByteArray::fromHex(request.value(u"hex").toString().toLatin1());
    const auto missing = request.value(u"padTo").toInt() - body.size();
    return missing > 0 ? body + QByteArray(missing, ' ') : body;
}

bool matches(const char *pattern, const std::string &text)
{
    const QRegularExpression form(
        QRegularExpression::anchoredPattern(QString::fromLatin1(pattern)));
    return form.match(QString::fromStdString(text)).hasMatch();
}

QString printed(const QJsonValue &value)
{
    return QString::fromUtf8(
        QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).left(200));
}

/// Collects what is different.
class Comparison
{
public:
    Comparison(const Contract &contract, const QJsonObject &expected,
               const httplib::Response &answer)
        : m_contract(contract), m_expected(expected), m_answer(answer)
    {
    }

    QString differences()
    {
        if (m_answer.status != m_expected.value(u"status").toInt())
            say(QStringLiteral("status %1").arg(m_answer.status));
        compareHeaders();
        compareRetryAfter();
        compareBody();
        return m_differences.join(u'\n');
    }

private:
    void say(const QString &difference) { m_differences += difference; }

    [[nodiscard]] std::string header(const char *name) const
    {
        return m_answer.get_header_value(name);
    }

    void compareHeaders()
    {
        if (!matches("application/json(\\s*;\\s*charset=.+)?", header("Content-Type")))
            say(u"Content-Type is "_qs + QString::fromStdString(header("Content-Type")));
        const QJsonObject headers = m_expected.value(u"headers").toObject();
        for (auto each = headers.begin(); each != headers.end(); ++each) {
            const std::string name = each.key().toStdString();
            if (m_answer.get_header_value_count(name) != 1 ||
                m_answer.get_header_value(name) != each.value().toString().toStdString())
                say(each.key() + u" is "_qs + QString::fromStdString(header(name.c_str())));
        }
    }

    void compareRetryAfter()
    {
        const std::string text = header("Retry-After");
        const QJsonValue wanted = m_expected.value(u"retryAfter");
        const auto times = m_answer.get_header_value_count("Retry-After");
        bool keeps = times == 0;
        if (!wanted.isUndefined()) {
            const QJsonObject range = wanted.toObject();
            const int from = wanted.isDouble() ? wanted.toInt() : range.value(u"from").toInt();
            const int to = wanted.isDouble() ? wanted.toInt() : range.value(u"to").toInt();
            const int seconds = matches("[0-9]{1,9}", text) ? std::stoi(text) : -1;
            keeps = times == 1 && from <= seconds && seconds <= to;
        }
        if (!keeps)
            say(u"Retry-After is "_qs + QString::fromStdString(text));
    }

    void compareBody()
    {
        QJsonParseError error;
        const auto document =
            QJsonDocument::fromJson(QByteArray::fromStdString(m_answer.body), &error);
        if (error.error != QJsonParseError::NoError || !document.isObject())
            return say(u"the body is "_qs + QString::fromStdString(m_answer.body.substr(0, 200)));
        const QJsonObject body = document.object();
        const QJsonValue wanted = m_expected.value(u"body");
        if (wanted.isString())
            return compareError(body);
        const QJsonObject members = wanted.toObject();
        for (const QString &member : body.keys())
            if (!members.contains(member))
                say(u"the body has a member "_qs + member);
        for (auto each = members.begin(); each != members.end(); ++each)
            if (!isAsWanted(each.value(), body.value(each.key())))
                say(each.key() + u" is "_qs + printed(body.value(each.key())));
    }

    void compareError(const QJsonObject &body)
    {
        const QJsonValue code = body.value(u"code");
        if (body.size() != 2 || !(code.isString() || code.isDouble()) ||
            body.value(u"message").toString().isEmpty())
            say(u"the error is "_qs + printed(body));
    }

    [[nodiscard]] bool isAsWanted(const QJsonValue &wanted, const QJsonValue &value) const
    {
        const QString word = wanted.toString();
        if (word == u"$MOMENT")
            return matches(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)",
                           value.toString().toStdString());
        if (word == u"$RETRY_AFTER")
            return value.isDouble() && QString::number(value.toDouble(), 'g', 17).toStdString() ==
                                           header("Retry-After");
        if (word == u"$RESULTS")
            return areResults(value);
        return value == wanted;
    }

    [[nodiscard]] bool areResults(const QJsonValue &value) const
    {
        const QJsonArray results = value.toArray();
        if (results.isEmpty() || results.size() > mostResults)
            return false;
        return std::all_of(results.begin(), results.end(), [this](const QJsonValue &result) {
            const QStringList members = result.toObject().keys();
            return members.contains(u"trackId") &&
                   std::ranges::all_of(members, [this](const QString &member) {
                       return m_contract.fields.contains(member);
                   });
        });
    }

    const Contract &m_contract;
    const QJsonObject &m_expected;
    const httplib::Response &m_answer;
    QStringList m_differences;
};

} // namespace

Contract Contract::read(const QString &name)
{
    QFile file(name);
    QJsonParseError error;
    if (!file.open(QIODevice::ReadOnly))
        throw fault(file.errorString(), name);
    const QJsonObject whole = QJsonDocument::fromJson(file.readAll(), &error).object();
    if (error.error != QJsonParseError::NoError)
        throw fault(error.errorString(), name);
    allowOnly({u"version"_qs, u"path"_qs, u"headers"_qs, u"fields"_qs, u"cases"_qs}, whole, name);
    if (whole.value(u"version").toInt() != 1)
        throw fault(QStringLiteral("unknown version"), name);

    Contract contract{whole.value(u"path").toString(), whole.value(u"headers").toObject(), {}, {}};
    for (const QJsonValue &field : whole.value(u"fields").toArray())
        contract.fields += field.toString();
    for (const QJsonValue &value : whole.value(u"cases").toArray()) {
        const QJsonObject object = value.toObject();
        const ContractCase read{object.value(u"name").toString(), object.value(u"given").toObject(),
                                object.value(u"request").toObject(),
                                object.value(u"expect").toObject()};
        allowOnly({u"name"_qs, u"given"_qs, u"request"_qs, u"expect"_qs}, object, read.name);
        check(read);
        contract.cases.push_back(read);
    }
    if (contract.cases.empty())
        throw fault(QStringLiteral("no cases"), name);
    return contract;
}

httplib::Request Contract::requestOf(const ContractCase &contractCase,
                                     const QString &publishableKey) const
{
    const QJsonObject &asked = contractCase.request;
    QJsonObject sent = headers;
    const QJsonObject changed = asked.value(u"headers").toObject();
    for (auto each = changed.begin(); each != changed.end(); ++each)
        sent.insert(each.key(), each.value());

    httplib::Request request;
    request.method = asked.value(u"method").toString(u"POST"_qs).toStdString();
    request.path = (path + asked.value(u"path").toString()).toStdString();
    for (auto each = sent.begin(); each != sent.end(); ++each) {
        if (each.value().isNull())
            continue;
        QString text = each.value().toString();
        request.set_header(each.key().toStdString(),
                           text.replace(u"$KEY"_qs, publishableKey).toStdString());
    }
    request.body = bodyOf(asked).toStdString();
    return request;
}

QString Contract::differences(const ContractCase &contractCase,
                              const httplib::Response &answer) const
{
    return Comparison(*this, contractCase.expect, answer).differences();
}

QJsonObject subjectOf(const ContractCase &contractCase)
{
    const QJsonObject &request = contractCase.request;
    return request.value(request.contains(u"about") ? u"about" : u"body").toObject();
}

} // namespace veltrix::sample
