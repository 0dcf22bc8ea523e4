// SPDX-License-Identifier: GPL-3.0-or-later
// A URL as it stands in records: any non-empty text, kept to the letter.
#pragma once

#include <QHashFunctions>
#include <QString>
#include <QUrl>

#include <optional>

namespace veltrix
{

/// An absolute URL, stored as the text that was read. QUrl would rewrite some texts (escapes, case
/// of the host) and drop others, and a file must come back as it was.
class Url
{
public:
    /// No value for an empty text: an empty URL is an absent one.
    static std::optional<Url> fromText(QString text)
    {
        if (text.isEmpty())
            return std::nullopt;
        return Url(std::move(text));
    }

    [[nodiscard]] const QString &text() const noexcept { return m_text; }
    [[nodiscard]] QUrl toQUrl() const { return QUrl(m_text); }

    bool operator==(const Url &) const = default;
    friend size_t qHash(const Url &url, size_t seed = 0) noexcept
    {
        return qHash(url.m_text, seed);
    }

    /// An empty URL, only as the start of reading one.
    Url() = default;

private:
    explicit Url(QString text) : m_text(std::move(text)) {}

    QString m_text;
};

} // namespace veltrix
