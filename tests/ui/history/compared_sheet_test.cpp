// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking history beside competitors, and the notes of the user, in the whole window.
#include "support/task_outcome.h"
#include "ui/history/compare_legend.h"
#include "ui/history/compared_pictures.h"
#include "ui/history/note_popover.h"
#include "ui/history/rank_chart.h"
#include "ui/history/ranking_history_content.h"
#include "ui/history/ranking_history_sheet.h"
#include "ui/support/research_test.h"
#include "ui_kit/text/table_file.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_field.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QEnterEvent>

namespace veltrix
{
namespace
{

class ComparedSheetTest : public ResearchTest
{
protected:
    /// Measures the keyword so often, a day apart, with the competitor of that place at these
    /// ranks; 0 is not ranked.
    void measure(const QList<int> &ranks, qsizetype place = 0)
    {
        for (const int rank : ranks) {
            rivals().clock->advance(Seconds(secondsPerDay));
            measureNow(rank, place);
        }
    }
    void measureNow(int rank, qsizetype place = 0)
    {
        const TrackedCompetitor other = store().competitorsOfApp(appId())[place];
        QList<ITunesAppResult> results = veltrix::rankedApps(20);
        if (rank > 0)
            results.insert(rank - 1, appResult(other.trackId, qPrintable(other.name)));
        results.append(appResult(101, "Lumen Photo Editor"));
        appStore().resultsOf.insert(text("collage maker"), results);
        store().queueKeywordRefreshes({*store().trackedKeyword(keyword())});
        settle();
    }
    QUuid keyword() { return rivals().row("collage maker").id; }
    RankingHistoryContent *openHistory(std::optional<QUuid> competitor = std::nullopt)
    {
        openSheet(window.get(), new RankingHistorySheet(store(), world->files,
                                                        rivals().row("collage maker"), competitor));
        // It is read on another thread.
        waitFor([this] { return !chart()->compared().own.name.isEmpty(); });
        settle();
        window->grab();
        return window->findChild<RankingHistoryContent *>();
    }
    /// Waits until the line of the first competitor ends like this.
    void expectLineEnds(const char *ending)
    {
        const auto line = [this] {
            const auto &lines = chart()->compared().rivals;
            return lines.empty() ? QString() : drawn(lines[0].data);
        };
        waitFor([&] { return line().endsWith(text(ending)); });
        EXPECT_TRUE(line().endsWith(text(ending))) << line().toStdString();
    }
    RankChart *chart() { return window->findChild<RankChart *>(); }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
    QAbstractButton *entry(qsizetype place)
    {
        const std::int64_t id = store().competitorsOfApp(appId())[place].trackId;
        return find<QAbstractButton>(qPrintable(text("historyLine%1").arg(id)));
    }
    QStringList shownLines()
    {
        QStringList names;
        for (const ComparedLine *line : chart()->compared().shownLines())
            names << line->name;
        return names;
    }
    /// N on a day, the text, Enter.
    void writeNote(size_t day, const char *words)
    {
        chart()->setFocus();
        chart()->setSelectedDay(day);
        QTest::keyClick(chart(), Qt::Key_N);
        find<TextField>("noteText")->setText(text(words));
        QTest::keyClick(find("noteText"), Qt::Key_Return);
        settle();
    }
    QStringList notes()
    {
        QStringList texts;
        for (const AppNote &note : store().notes(appId()))
            texts << note.text;
        return texts;
    }
    QAbstractButton *mark(int number)
    {
        return find<QAbstractButton>(qPrintable(text("historyMark%1").arg(number)));
    }
};

TEST_F(ComparedSheetTest, CompetitorsThatRankAreLinesFromTheFirstMeasurementOn)
{
    measure({3, 0, 5});
    openHistory();
    EXPECT_EQ(shownLines(), (QStringList{text("Lumen Photo Editor"), text("Grainy")}));
    const ComparedLine &line = *chart()->compared().shownLines()[1];
    EXPECT_EQ(drawn(line.data), text(". . . . . . . . . . . a3 x b5"));
    EXPECT_TRUE(line.trackedSince) << "the own line begins earlier";
    EXPECT_TRUE(entry(0)->isChecked());
    EXPECT_FALSE(entry(1)->isChecked());
    EXPECT_EQ(label("historyLegendDay"), text("Ranks of the latest check · Nov 24"));
}

TEST_F(ComparedSheetTest, ANewMeasurementAndADayMeasuredAgainAreChartedAtOnce)
{
    measure({3});
    openHistory();
    measureNow(7);
    expectLineEnds(". a3");
    rivals().clock->advance(Seconds(7 * 3600));
    measureNow(7);
    expectLineEnds(". a7");
    measure({4});
    expectLineEnds("a7 a4");
}

TEST_F(ComparedSheetTest, AnEntryOfTheLegendTurnsItsLineOnAndOff)
{
    measure({3});
    openHistory();
    chart()->setSelectedDay(13);
    entry(0)->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(shownLines(), QStringList{text("Lumen Photo Editor")});
    press(Qt::Key_Space);
    EXPECT_EQ(shownLines().size(), 2);
    EXPECT_EQ(chart()->selectedDay(), std::optional<size_t>(13)) << "the crosshair stays";
    EXPECT_TRUE(entry(0)->hasFocus()) << "and the focus";
    QAccessibleInterface *box = QAccessible::queryAccessibleInterface(entry(0));
    EXPECT_EQ(box->role(), QAccessible::CheckBox);
    EXPECT_TRUE(box->state().checked);
    box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(box->state().checked) << "assistive technology toggles it, too";
    box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(box->text(QAccessible::Name), text("Grainy, orange squares, rank 3, Tracked since "
                                                 "Nov 22"));
}

TEST_F(ComparedSheetTest, WithAllLinesOffTheChartStaysToTurnThemOnAgain)
{
    auto *content = openHistory();
    find<QAbstractButton>("historyLine0")->click();
    EXPECT_TRUE(shownLines().isEmpty());
    EXPECT_TRUE(content->hasChart());
    find<QAbstractButton>("historyLine0")->click();
    EXPECT_EQ(shownLines(), QStringList{text("Lumen Photo Editor")});
}

TEST_F(ComparedSheetTest, RestingOnAnEntryDimsTheOtherLines)
{
    measure({3});
    openHistory();
    const QImage before = chart()->grab().toImage();
    const QPointF middle(5, 5);
    QEnterEvent enter(middle, middle, middle);
    QCoreApplication::sendEvent(entry(0), &enter);
    const Tokens tokens(ColorScheme::Light);
    const auto strength = [&](const QImage &picture) {
        int found = 0;
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y)
                found += picture.pixelColor(x, y) == tokens[Token::Accent] ? 1 : 0;
        }
        return found;
    };
    EXPECT_GT(strength(before), 100);
    EXPECT_EQ(strength(chart()->grab().toImage()), 0);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(entry(0), &leave);
    EXPECT_EQ(chart()->grab().toImage(), before);
}

TEST_F(ComparedSheetTest, OpenedForACompetitorItsLineIsOnAlone)
{
    measure({3}, 0);
    openHistory(store().competitorsOfApp(appId())[2].id);
    EXPECT_EQ(shownLines(), (QStringList{text("Lumen Photo Editor"), text("Quiet Aperture")}));
}

TEST_F(ComparedSheetTest, ARemovedCompetitorGoesAndComesBackWithItsRanks)
{
    measure({3, 4});
    openHistory();
    RemovedTracking removed = store().removeCompetitor(store().competitorsOfApp(appId())[0].id);
    settle();
    EXPECT_EQ(shownLines(), QStringList{text("Lumen Photo Editor")});
    store().restore(std::move(removed));
    settle();
    waitFor([this] { return shownLines().size() == 2; });
    expectLineEnds("a3 a4");
}

TEST_F(ComparedSheetTest, WithoutCompetitorsItSaysHowToCompare)
{
    for (const TrackedCompetitor &competitor : store().competitorsOfApp(appId()))
        store().removeCompetitor(competitor.id);
    openHistory();
    EXPECT_TRUE(isShown("historyNoRivals"));
    EXPECT_EQ(label("historyNoRivals"), text("Track competitors to compare them here."));
    EXPECT_FALSE(isShown("historyLegend"));
}

TEST_F(ComparedSheetTest, AClockAYearAheadLeavesTheHistoryAsItIs)
{
    measure({3});
    const Date today = rivals().clock->now();
    const Date ahead = today + Seconds(365 * secondsPerDay);
    rivals().clock->jumpTo(ahead);
    measureNow(5);
    rivals().clock->jumpTo(today);
    openHistory();
    expectLineEnds("a3");
    rivals().clock->jumpTo(ahead);
    click("historyDone");
    settle();
    openHistory();
    click("historyRange3");
    expectLineEnds("a5");
}

TEST_F(ComparedSheetTest, NNotesTheInspectedDayAndTheNoteIsThereAfterARestart)
{
    openHistory();
    writeNote(5, "  New subtitle ");
    EXPECT_EQ(notes(), QStringList{text("New subtitle")});
    EXPECT_EQ(mark(0)->accessibleName(), text("Note, Nov 13: New subtitle"));
    EXPECT_TRUE(chart()->hasFocus()) << "the popover gives the focus back";
    EXPECT_EQ(label("historyInspection"), text("Nov 13: Not ranked · New subtitle"));
    reopen();
    openHistory();
    waitFor([this] { return isShown("historyMark0"); });
    EXPECT_EQ(mark(0)->accessibleName(), text("Note, Nov 13: New subtitle"));
}

TEST_F(ComparedSheetTest, ADoubleClickWritesANoteOnADayWithoutACheck)
{
    openHistory();
    const QPoint place(int(chart()->plot().x(10)), 60);
    QTest::mouseDClick(chart(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(window->findChild<NotePopover *>());
    EXPECT_EQ(window->findChild<NotePopover *>()->accessibleName(),
              text("New note on Nov 18, 2026"));
    find<TextField>("noteText")->setText(text("New screenshots"));
    click("noteSave");
    settle();
    EXPECT_EQ(label("historyInspection"), text("No check saved on Nov 18 · New screenshots"));
}

TEST_F(ComparedSheetTest, ADoublePressOfAddWritesOneNote)
{
    openHistory();
    click("historyAddNote");
    find<TextField>("noteText")->setText(text("New icon"));
    auto *save = find<QAbstractButton>("noteSave");
    QTest::mouseClick(save, Qt::LeftButton);
    save->click();
    settle();
    EXPECT_EQ(notes(), QStringList{text("New icon")});
    EXPECT_EQ(store().notes(appId())[0].day, utcDay(rivals().clock->now())) << "today";
}

TEST_F(ComparedSheetTest, AnEmptyNoteIsNotSavedAndSaysSo)
{
    openHistory();
    click("historyAddNote");
    find<TextField>("noteText")->setText(text("   "));
    click("noteSave");
    EXPECT_EQ(label("noteProblem"), text("Write what you did: an empty note is not saved."));
    EXPECT_TRUE(isShown("noteProblem"));
    EXPECT_TRUE(find("noteText")->hasFocus());
    EXPECT_TRUE(notes().isEmpty());
}

TEST_F(ComparedSheetTest, ATooLongNoteSaysItsLengthAndIsNotSaved)
{
    openHistory();
    click("historyAddNote");
    find<TextField>("noteText")->setText(QString(201, u'a'));
    EXPECT_EQ(label("noteProblem"), text("A note has at most 200 characters; this one has 201."));
    click("noteSave");
    EXPECT_TRUE(notes().isEmpty());
    find<TextField>("noteText")->setText(QString(200, u'a'));
    EXPECT_FALSE(isShown("noteProblem"));
    click("noteSave");
    settle();
    EXPECT_EQ(notes().size(), 1);
}

TEST_F(ComparedSheetTest, ANoteIsChangedAndRemovedAndTheRemovalUndone)
{
    openHistory();
    writeNote(5, "New subtitle");
    mark(0)->click();
    EXPECT_EQ(find<TextField>("noteText")->text(), text("New subtitle"));
    find<TextField>("noteText")->setText(text("Other subtitle"));
    click("noteSave");
    settle();
    EXPECT_EQ(notes(), QStringList{text("Other subtitle")});
    mark(0)->click();
    click("noteRemove");
    settle();
    EXPECT_TRUE(notes().isEmpty());
    EXPECT_FALSE(isShown("historyMark0"));
    EXPECT_EQ(find<QLabel>("historyOffer")->accessibleName(), text("Removed “Other subtitle”"));
    chart()->setFocus();
    press(Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(notes(), QStringList{text("Other subtitle")});
    EXPECT_FALSE(isShown("historyOffer"));
    mark(0)->click();
    click("noteRemove");
    click("historyUndo");
    settle();
    EXPECT_EQ(notes(), QStringList{text("Other subtitle")});
}

TEST_F(ComparedSheetTest, TheOfferToUndoGoesAfterAWhile)
{
    openHistory();
    writeNote(5, "New subtitle");
    mark(0)->click();
    click("noteRemove");
    settle();
    EXPECT_TRUE(isShown("historyUndo"));
    rivals().clock->advance(Seconds(11));
    settle();
    EXPECT_FALSE(isShown("historyUndo"));
}

TEST_F(ComparedSheetTest, TwoNotesOfADayAreChosenFromAMenu)
{
    openHistory();
    writeNote(5, "New subtitle");
    writeNote(5, "New icon");
    mark(0)->click();
    choose("historyNotesMenu", text("Nov 13: New icon"));
    EXPECT_EQ(find<TextField>("noteText")->text(), text("New icon"));
}

TEST_F(ComparedSheetTest, ANoticedChangeIsAMarkThatLeadsToItsDay)
{
    measure({3});
    ITunesAppResult own = appResult(101, "Lumen Photo Editor");
    own.version = text("3.1");
    const auto measureVersion = [&](const char *version) {
        rivals().clock->advance(Seconds(secondsPerDay));
        own.version = text(version);
        appStore().resultsOf.insert(text("collage maker"), {own});
        store().queueKeywordRefreshes({*store().trackedKeyword(keyword())});
        settle();
    };
    measureVersion("3.1");
    openHistory();
    measureVersion("3.2");
    waitFor([this] { return isShown("historyMark0"); });
    EXPECT_EQ(mark(0)->accessibleName(), text("Noticed, Nov 24: Version 3.2"));
    mark(0)->click();
    EXPECT_EQ(label("historyInspection"), text("Nov 24: rank 1 · Version 3.2"));
}

TEST_F(ComparedSheetTest, TabGoesFromTheRangeOverNotesAndLegendToTheButtons)
{
    measure({3});
    openHistory();
    writeNote(5, "New subtitle");
    writeNote(12, "New icon");
    find("historyRange0")->setFocus(Qt::TabFocusReason);
    QStringList stops;
    for (int i = 0; i < 12; ++i) {
        press(Qt::Key_Tab);
        stops << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(stops.mid(0, 3),
              (QStringList{text("historyAddNote"), text("rankChart"), text("historyMark0")}));
    EXPECT_EQ(stops[3], text("historyLine0"));
    EXPECT_LT(stops.indexOf(text("historyLine0")), stops.indexOf(text("historyCopyImage")));
}

TEST_F(ComparedSheetTest, ArrowsMoveAmongNotesAndTheLegend)
{
    measure({3});
    openHistory();
    writeNote(5, "New subtitle");
    writeNote(12, "New icon");
    mark(1)->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Left);
    EXPECT_TRUE(mark(0)->hasFocus());
    press(Qt::Key_Right);
    EXPECT_TRUE(mark(1)->hasFocus());
    find("historyLine0")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Right);
    EXPECT_TRUE(entry(0)->hasFocus());
}

TEST_F(ComparedSheetTest, TheScreenReaderHearsAllLinesOfTheDay)
{
    measure({3});
    openHistory();
    writeNote(13, "New subtitle");
    QAccessibleInterface *whole = QAccessible::queryAccessibleInterface(chart());
    EXPECT_EQ(whole->text(QAccessible::Value),
              text("Nov 22: Lumen Photo Editor rank 22, Grainy rank 3, note: New subtitle"));
    EXPECT_EQ(find<QLabel>("historyInspection")->accessibleName(),
              text("Nov 22: Lumen Photo Editor rank 22, Grainy rank 3, note: New subtitle"));
    QAccessibleInterface *last = whole->child(whole->childCount() - 1);
    EXPECT_EQ(last->text(QAccessible::Name), text("Rank 22"));
}

TEST_F(ComparedSheetTest, TheExportHasNotesAndRanksOfCompetitorsBehindTheOwnColumns)
{
    measure({3, 0});
    openHistory();
    writeNote(9, "New screenshots");
    writeNote(12, "New subtitle");
    click("historyExport");
    QList<QStringList> rows;
    for (const TextRow &row : rowsOfText(textOfFile(world->files.saved)))
        rows << row.cells;
    EXPECT_EQ(rows[0].mid(5, 3),
              (QStringList{text("Movement"), text("Notes"), text("Rank of Grainy")}));
    const QStringList last = rows.back();
    EXPECT_EQ(last.mid(6, 3), (QStringList{QString(), text("Not ranked"), text("Not ranked")}));
    EXPECT_EQ(rows[rows.size() - 2].mid(6, 2), (QStringList{text("New subtitle"), text("3")}));
    const auto noted = std::ranges::find_if(
        rows, [](const QStringList &row) { return row.value(6) == text("New screenshots"); });
    ASSERT_NE(noted, rows.end());
    EXPECT_EQ((*noted)[2], text("2026-11-19"));
}

TEST_F(ComparedSheetTest, TheExportOfTheWholeHistoryHasThemToo)
{
    measure({3, 0});
    store().putNote({QUuid(), appId(), utcDay(rivals().clock->now()), text("New, bold subtitle"),
                     rivals().clock->now()});
    page().exportHistory();
    waitFor([this] { return !world->files.saved.isEmpty(); });
    QList<QStringList> rows;
    for (const TextRow &row : rowsOfText(textOfFile(world->files.saved))) {
        if (rows.isEmpty() || row.cells.value(0) == text("collage maker"))
            rows << row.cells;
    }
    EXPECT_EQ(rows[0].mid(10, 4),
              (QStringList{text("Scoring model"), text("Notes"), text("Rank of Grainy"),
                           text("Rank of Dovetail Cam")}));
    EXPECT_EQ(rows.back().mid(11, 3),
              (QStringList{text("New, bold subtitle"), text("Not ranked"), text("Not ranked")}));
    EXPECT_EQ(rows[rows.size() - 2].mid(11, 2), (QStringList{QString(), text("3")}));
    EXPECT_EQ(rows[1].mid(11),
              (QStringList{QString(), QString(), QString(), QString(), QString(), QString()}))
        << "nothing is known of days before";
}

TEST_F(ComparedSheetTest, TheCopiedPictureHasNeitherTheButtonNorLinesThatAreOff)
{
    measure({3});
    openHistory();
    settle();
    window->grab();
    const int height = find("historyLegend")->height();
    click("historyCopyImage");
    EXPECT_FALSE(QGuiApplication::clipboard()->image().isNull());
    window->grab();
    EXPECT_TRUE(isShown("historyAddNote"));
    EXPECT_EQ(find("historyLegend")->height(), height);
    EXPECT_TRUE(entry(1)->isVisible());
}

TEST_F(ComparedSheetTest, TheLegendHasThreeColumnsOrTwoOrOne)
{
    measure({3});
    openHistory();
    auto *legend = find<CompareLegend>("historyLegend");
    const int rows = legend->heightForWidth(800);
    EXPECT_EQ(legend->heightForWidth(520), rows * 3 / 2) << "six apps in two columns";
    EXPECT_EQ(legend->heightForWidth(300), rows * 3);
}

} // namespace
} // namespace veltrix
