// SPDX-License-Identifier: GPL-3.0-or-later
// A listing whose texts are full of what is not seen but turns or hides what is: none of it reaches
// a label, a tool tip or a screen reader.
#include "ui/competitors/competitors_view.h"
#include "ui/competitors/keyword_check_table.h"
#include "ui/support/research_test.h"

namespace veltrix
{
namespace
{

const QString evil = QStringLiteral("\u202E\u0007\u2066\u0000\u009F\u202A");

QString hostile(const char *words)
{
    return evil + text(words) + evil + QStringLiteral("\u2028") + text("עורך") + evil;
}

ITunesAppResult hostileApp(std::int64_t id)
{
    ITunesAppResult app = foxglove();
    app.trackId = id;
    app.trackName = hostile("Foxglove");
    app.subtitle = hostile("Film");
    app.sellerName = hostile("Brass Lens");
    app.primaryGenreName = hostile("Photo");
    app.formattedPrice = hostile("Free");
    app.version = hostile("5.2");
    app.minimumOsVersion = hostile("16.0");
    app.description = hostile("One.") + QStringLiteral("\u2029Two.");
    return app;
}

/// What of a text must not be shown: isolation that inSentence() adds is balanced.
bool isClean(const QString &text)
{
    int open = 0;
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code == 0x2068)
            ++open;
        else if (code == 0x2069 && --open < 0)
            return false;
        const bool isControl = c.category() == QChar::Other_Control && c != u'\n';
        const bool turns = (code >= 0x202A && code <= 0x202E) || code == 0x2066 || code == 0x2067;
        if (isControl || turns || code == 0x2028 || code == 0x2029)
            return false;
    }
    return open == 0;
}

class HostileListingTest : public ResearchTest
{
protected:
    HostileListingTest()
    {
        QList<ITunesAppResult> found;
        for (int id = 201; id < 206; ++id) {
            found << hostileApp(id);
            appStore().apps.insert(id, hostileApp(id));
        }
        appStore().results = found;
        appStore().resultsOf.clear();
        rivals().saved->saved.results = found;
    }

    /// Everything that is shown or told now.
    void expectClean(const char *scene)
    {
        settle();
        window->grab();
        int seen = 0;
        const auto check = [&](const QString &text, const QWidget *widget, const char *what) {
            EXPECT_TRUE(isClean(text))
                << scene << ": " << what << " of " << widget->objectName().toStdString() << " ("
                << widget->metaObject()->className()
                << "): " << text.toUtf8().toPercentEncoding().toStdString();
            seen += text.contains(u'\u05E2') ? 1 : 0;
        };
        for (const QWidget *widget : window->findChildren<QWidget *>()) {
            if (!widget->isVisible())
                continue;
            check(widget->accessibleName(), widget, "name");
            check(widget->accessibleDescription(), widget, "description");
            check(widget->toolTip(), widget, "tool tip");
            if (const auto *label = qobject_cast<const QLabel *>(widget))
                check(label->text(), widget, "text");
            if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
                check(button->text(), widget, "text");
            if (const auto *empty = qobject_cast<const EmptyState *>(widget))
                check(empty->content().title, widget, "title");
            if (const auto *table = qobject_cast<const KeywordCheckTable *>(widget)) {
                for (int row = 0; row < table->model()->rowCount(); ++row)
                    check(table->model()->index(row, 1).data(Qt::AccessibleTextRole).toString(),
                          widget, "cell");
            }
        }
        EXPECT_GT(seen, 0) << scene << ": the listing is shown at all";
    }
    void openCompetitors()
    {
        window->showWorkspace(Workspace::Competitors);
        settle();
    }
};

TEST_F(HostileListingTest, OnAResearchPageAndOverIt)
{
    openCompetitors();
    appStore().holds = true;
    window->competitors().openResearch(201, text("US"), hostile("Foxglove"));
    expectClean("loading");
    appStore().holds = false;
    appStore().release();
    expectClean("loaded");
    EXPECT_TRUE(find<QLabel>("aboutText")->text().contains(text("\nTwo.")))
        << "a line end is a line end";
    find("similarApp1")->setFocus();
    press(Qt::Key_Return);
    expectClean("over another");
    click("trackCompetitor");
    click("researchBack");
    expectClean("tracked");
}

TEST_F(HostileListingTest, InSearchResults)
{
    openCompetitors();
    type("competitorSearch", text("fox"));
    press(Qt::Key_Return);
    expectClean("results");
}

TEST_F(HostileListingTest, OnTheCardOfACompetitor)
{
    store().addCompetitor(hostileApp(205), appId(), text("DE"));
    openCompetitors();
    expectClean("card");
}

TEST_F(HostileListingTest, AmongRankedAppsAndInTheDetails)
{
    Q_EMIT page().rankedAppsRequested(rivals().row("collage maker"));
    expectClean("ranked apps");
    find("rankedAppRow1")->setFocus();
    press(Qt::Key_Return);
    expectClean("details");
}

TEST_F(HostileListingTest, TheRecordStaysAsItWasSent)
{
    openCompetitors();
    window->competitors().openResearch(201, text("US"), {});
    settle();
    click("trackCompetitor");
    EXPECT_EQ(store().competitorsOfApp(appId()).constLast().name, hostile("Foxglove"));
}

} // namespace
} // namespace veltrix
