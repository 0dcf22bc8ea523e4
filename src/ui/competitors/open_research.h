// SPDX-License-Identifier: GPL-3.0-or-later
// Which research pages of the Competitors workspace are open, without their looks.
#pragma once

#include <QList>
#include <QObject>
#include <QUuid>

#include <optional>

namespace veltrix
{

/// What a research page is about.
struct ResearchSelection {
    std::int64_t trackId = 0;
    QString country;
    /// What the app was called where it was chosen; may be empty.
    QString name;

    bool operator==(const ResearchSelection &) const = default;
};

/// The storefront and the user's app of the workspace, and the pages that are open: each was opened
/// from the one below it. Another app of the user's leaves them open.
class OpenResearch final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Pages that are kept to go back to; of more the first are forgotten.
    static constexpr qsizetype mostPages = 20;

    struct Page {
        /// Its own for each page that is opened.
        int id = 0;
        ResearchSelection about;

        bool operator==(const Page &) const = default;
    };

    /// The user's app.
    void setApp(const std::optional<QUuid> &appId);
    /// The storefront that pages without one of their own are opened in; an open page keeps its.
    void setCountry(const QString &country);
    /// The user chose a storefront here: the page on top moves there as well.
    void pickCountry(const QString &country);
    /// Opens a page on top.
    void open(std::int64_t trackId, const QString &country, const QString &name);
    /// Closes the page on top.
    void back();
    /// Closes all pages.
    void close();
    /// The app of a page turned out to be called that.
    void setName(int id, const QString &name);

    [[nodiscard]] const std::optional<QUuid> &appId() const { return m_appId; }
    [[nodiscard]] const QString &country() const { return m_country; }
    /// From the first to the one on top.
    [[nodiscard]] const QList<Page> &pages() const { return m_pages; }
    /// The page on top, or null.
    [[nodiscard]] const Page *page() const { return m_pages.isEmpty() ? nullptr : &m_pages.back(); }
    /// The page that back() leads to, or null.
    [[nodiscard]] const Page *pageBelow() const
    {
        return m_pages.size() > 1 ? &m_pages[m_pages.size() - 2] : nullptr;
    }
    /// The storefront to name: that of the page on top, else the workspace's.
    [[nodiscard]] const QString &shownCountry() const
    {
        const Page *top = page();
        return top ? top->about.country : m_country;
    }

Q_SIGNALS:
    void appChanged();
    void countryChanged();
    /// Another page is on top, or none.
    void pageChanged();

private:
    std::optional<QUuid> m_appId;
    QString m_country = QStringLiteral("US");
    QList<Page> m_pages;
    int m_lastId = 0;
};

} // namespace veltrix
