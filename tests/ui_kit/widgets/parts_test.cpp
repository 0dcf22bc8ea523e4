// SPDX-License-Identifier: GPL-3.0-or-later
// Buttons, fields, banners, status lines, empty states.
#include "ui/support/ui_test.h"

#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/page_toolbar.h"

namespace veltrix
{
namespace
{

class PartsTest : public testing::Test
{
protected:
    PartsTest()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        testTheme().set(ColorScheme::Light);
    }
};

TEST(ButtonGeometry, CentresSymbolAndTextTogether)
{
    const QRectF rect(0, 0, 100, 30);
    const ButtonGeometry both = layoutButton(rect, 16, 40, Qt::LeftToRight);
    EXPECT_DOUBLE_EQ(both.symbol.left(), 18);
    EXPECT_DOUBLE_EQ(both.text.left(), 42);
    EXPECT_DOUBLE_EQ(both.text.right(), 82);
    const ButtonGeometry mirrored = layoutButton(rect, 16, 40, Qt::RightToLeft);
    EXPECT_DOUBLE_EQ(mirrored.symbol.right(), 82);
    EXPECT_DOUBLE_EQ(mirrored.text.left(), 18);
    EXPECT_DOUBLE_EQ(layoutButton(rect, 16, 0, Qt::LeftToRight).symbol.center().x(), 50);
    EXPECT_DOUBLE_EQ(layoutButton(rect, 0, 40, Qt::LeftToRight).text.center().x(), 50);
    EXPECT_LE(layoutButton(rect, 16, 400, Qt::LeftToRight).text.right(), rect.right() + 0.01);
}

TEST_F(PartsTest, AButtonIsAsWideAsItsTextNeeds)
{
    const Button text(Button::Kind::Standard, QStringLiteral("plus"),
                      QStringLiteral("Add keywords"));
    const QFontMetrics metrics(fontFor(TextStyle::BodyMedium, text.font()));
    EXPECT_GE(text.sizeHint().width(), metrics.horizontalAdvance(text.text()) + 16 + 8 + 24);
    const Button symbol(Button::Kind::Standard, QStringLiteral("plus"), QString());
    EXPECT_EQ(symbol.sizeHint().width(), symbol.sizeHint().height());
    EXPECT_EQ(symbol.sizeHint().height(), controlHeight(symbol.font()));
}

TEST_F(PartsTest, AButtonTakesSpaceAndClicksOnce)
{
    Button button(Button::Kind::Primary, QStringLiteral("Go"));
    const QSignalSpy clicked(&button, &Button::clicked);
    button.show();
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 2);
    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 2);
}

TEST_F(PartsTest, AFieldsPlaceholderIsItsName)
{
    const TextField field(QStringLiteral("f"), QStringLiteral("Search keywords"),
                          QStringLiteral("magnifyingglass"));
    EXPECT_EQ(field.accessibleName(), QStringLiteral("Search keywords"));
    EXPECT_GT(field.textMargins().left(), 16);
}

TEST_F(PartsTest, ABannerIsThereOnlyWithAMessage)
{
    Banner banner(QStringLiteral("b"), QStringLiteral("exclamationmark.triangle"),
                  QStringLiteral("Refresh"));
    banner.setMessage(QStringLiteral("Something failed."));
    EXPECT_FALSE(banner.isHidden());
    EXPECT_EQ(banner.accessibleName(), QStringLiteral("Something failed."));
    banner.setMessage(QString());
    EXPECT_TRUE(banner.isHidden());
}

TEST_F(PartsTest, TheStatusBarShowsWorkWithItsEndKnownOrNot)
{
    StatusBar bar;
    bar.show();
    EXPECT_FALSE(bar.findChild<Button *>(QStringLiteral("stopButton"))->isVisible());
    bar.setWork(StatusBar::Work{QStringLiteral("Measuring"), 0.5});
    EXPECT_TRUE(bar.findChild<Button *>(QStringLiteral("stopButton"))->isVisible());
    EXPECT_EQ(bar.findChild<ProgressLine *>()->fraction(), 0.5);
    EXPECT_EQ(bar.findChild<ProgressLine *>()->accessibleDescription(), QStringLiteral("50 %"));
    bar.setWork(StatusBar::Work{QStringLiteral("Updating"), std::nullopt});
    EXPECT_EQ(bar.findChild<ProgressLine *>()->fraction(), std::nullopt);
    bar.setMessage(QStringLiteral("Done."));
    EXPECT_EQ(bar.message(), QStringLiteral("Done."));
}

TEST_F(PartsTest, AnElidedLabelTellsTheWholeText)
{
    ElidedLabel label(TextStyle::Body, TextLabel::Tone::Text,
                      QStringLiteral("A text that is far too long for its place"));
    label.resize(60, 20);
    EXPECT_TRUE(label.isElided());
    label.resize(2000, 20);
    EXPECT_FALSE(label.isElided());
}

TEST_F(PartsTest, LabelsFollowALargerSystemFont)
{
    const QFont before = QApplication::font();
    TextLabel label(TextStyle::Title, TextLabel::Tone::Text, QStringLiteral("Title"));
    const auto tellWidgets = [&label] {
        // What the application sends to every widget while its event loop runs.
        QEvent event(QEvent::ApplicationFontChange);
        QCoreApplication::sendEvent(&label, &event);
    };
    const int size = label.font().pixelSize();
    QFont large = before;
    large.setPixelSize(before.pixelSize() * 2);
    QApplication::setFont(large);
    tellWidgets();
    EXPECT_NEAR(label.font().pixelSize(), size * 2, 1);
    QApplication::setFont(before);
    tellWidgets();
    EXPECT_EQ(label.font().pixelSize(), size);
}

TEST_F(PartsTest, AnEmptyStateShowsOnlyThePartsItHas)
{
    EmptyState state(QStringLiteral("e"));
    state.show();
    state.setContent({QString(), QStringLiteral("Loading…"), QString(), QString()});
    EXPECT_FALSE(state.findChild<Button *>()->isVisible());
    EXPECT_EQ(state.accessibleName(), QStringLiteral("Loading…"));
    const QSignalSpy acted(&state, &EmptyState::actionTriggered);
    state.setContent({QStringLiteral("photo"), QStringLiteral("Nothing"), QStringLiteral("Yet."),
                      QStringLiteral("Do")});
    state.findChild<Button *>()->click();
    EXPECT_EQ(acted.size(), 1);
}

TEST_F(PartsTest, AMessageStandsInThePlaceOfAPageUntilItIsLoaded)
{
    const LoadingWords words{QStringLiteral("Loading…"), QStringLiteral("Couldn't load"),
                             QStringLiteral("Try again")};
    using Number = Loadable<int>;
    EXPECT_EQ(words.messageOf(Number(NotAsked()))->title, QStringLiteral("Loading…"));
    EXPECT_EQ(words.messageOf(Number(Loading()))->action, QString());
    EXPECT_EQ(words.messageOf(Number(LoadFailed{QStringLiteral("It broke.")})),
              (EmptyState::Content{QStringLiteral("wifi.exclamationmark"),
                                   QStringLiteral("Couldn't load"), QStringLiteral("It broke."),
                                   QStringLiteral("Try again")}));
    EXPECT_EQ(words.messageOf(Number(Loaded<int>{3, QStringLiteral("It broke.")})), std::nullopt);
    EXPECT_EQ(words.messageOf(Number(Refreshing<int>{3, QString()})), std::nullopt);
}

TEST_F(PartsTest, AnotherWayOutStandsOnlyBelowAFailure)
{
    LoadableView view(QStringLiteral("v"));
    auto *back = new Button(Button::Kind::Link, QStringLiteral("Back"));
    view.addWayOut(back);
    view.show();
    view.showMessage(EmptyState::Content::working(QStringLiteral("Loading…")));
    EXPECT_FALSE(back->isVisible());
    view.showMessage(EmptyState::Content::failed(QStringLiteral("Couldn't load"), QString(),
                                                 QStringLiteral("Try again")));
    EXPECT_TRUE(back->isVisible());
    const QSignalSpy retried(&view, &LoadableView::retryRequested);
    view.findChild<Button *>(QStringLiteral("vAction"))->click();
    EXPECT_EQ(retried.size(), 1);
    view.showPage(new QWidget);
    EXPECT_FALSE(back->isVisible());
}

} // namespace
} // namespace veltrix
