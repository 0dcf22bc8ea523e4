// SPDX-License-Identifier: GPL-3.0-or-later
// Which research page of the Competitors workspace is open, without its looks.
#pragma once

#include <QObject>
#include <QUuid>

#include <optional>

namespace veltrix
{

/// What a research page is about.
struct ResearchSelection {
    std::int64_t trackId = 0;
    QString country;
    /// The user's app, if one is selected.
    std::optional<QUuid> appId;
    /// What the app was called where it was chosen; may be empty.
    QString name;

    bool operator==(const ResearchSelection &) const = default;
};

/// The storefront and the user's app of the workspace, and the page that is open for them.
class OpenResearch final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The user's app; an open page is made anew for it.
    void setApp(const std::optional<QUuid> &appId);
    /// The storefront that pages without one of their own are opened in; an open page keeps its.
    void setCountry(const QString &country);
    /// The user chose a storefront here: an open page moves there as well.
    void pickCountry(const QString &country);
    void open(std::int64_t trackId, const QString &country, const QString &name);
    void close();
    /// The app of the open page turned out to be called that.
    void setName(const QString &name);

    [[nodiscard]] const std::optional<QUuid> &appId() const { return m_appId; }
    [[nodiscard]] const QString &country() const { return m_country; }
    [[nodiscard]] const std::optional<ResearchSelection> &page() const { return m_page; }
    /// The storefront to name: that of the open page, else the workspace's.
    [[nodiscard]] const QString &shownCountry() const
    {
        return m_page ? m_page->country : m_country;
    }

Q_SIGNALS:
    void appChanged();
    void countryChanged();
    /// Another page is open, or none; the same app may have a page made anew.
    void pageChanged();

private:
    std::optional<QUuid> m_appId;
    QString m_country = QStringLiteral("US");
    std::optional<ResearchSelection> m_page;
};

} // namespace veltrix
