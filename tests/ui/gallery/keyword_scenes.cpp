// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/keyword_scenes.h"

#include "ui/dashboard/add_keywords.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/suggestions/typed_suggestions.h"
#include "ui/support/ui_world.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/storefront_checklist.h"
#include "ui_kit/widgets/text_area.h"
#include "ui_kit/widgets/text_field.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLineEdit>
#include <QListView>
#include <QTest>

namespace veltrix
{

namespace
{

struct KeywordStage {
    std::shared_ptr<UiWorld> world = UiWorld::sample();
    std::unique_ptr<MainWindow> window;

    template <class T>
    T *find(const char *name) const
    {
        T *found = nullptr;
        for (T *widget : window->findChildren<T *>(QString::fromLatin1(name))) {
            if (!found || widget->isVisible())
                found = widget;
        }
        return found;
    }
    void click(const char *name) const { find<QAbstractButton>(name)->click(); }
    void check(const char *storefront) const
    {
        auto *field = find<TextField>("storefrontChecklistSearch");
        field->setText(QString::fromLatin1(storefront));
        QTest::keyClick(field, Qt::Key_Return);
        field->clear();
    }
    void enter(const QString &text) const { find<TextArea>("keywordInput")->setPlainText(text); }
    void import(const QByteArray &content) const
    {
        world->files.opened = content;
        click("addKeywordsImport");
    }
};

/// The popover over a window of that size.
Scene scene(const char *name, QSize size, std::function<void(KeywordStage &)> act)
{
    return {QString::fromLatin1(name), [size, act = std::move(act)] {
                KeywordStage made;
                made.world->client->holds = true;
                made.window = std::make_unique<MainWindow>(made.world->collaborators());
                if (size.isValid())
                    made.window->resize(size);
                made.window->show();
                QCoreApplication::processEvents();
                made.click("addKeywordsButton");
                act(made);
                return Stage{made.world, std::move(made.window)};
            }};
}

/// The popover over a window that is narrower than that of the program can be.
Scene narrowScene(const char *name, std::function<void(const QWidget &window)> act)
{
    return {QString::fromLatin1(name), [act = std::move(act)] {
                const auto clock = std::make_shared<VirtualClock>();
                auto window = std::make_unique<QWidget>();
                window->resize(680, 600);
                setAccessibleRole(window.get(), QAccessible::Window);
                auto *opener = new QWidget(window.get());
                opener->setGeometry(560, 12, 100, 30);
                window->show();
                auto *card = new AddKeywordsCard(QStringLiteral("US"), KeywordPlanner({}),
                                                 {nullptr, *clock});
                Overlay::open(Overlay::Kind::Popover, opener, card);
                card->findChild<StorefrontCheckModel *>()->setChecked(
                    {QStringLiteral("US"), QStringLiteral("GB"), QStringLiteral("DE")});
                card->findChild<TextArea *>()->setPlainText(
                    QStringLiteral("disposable camera\nfilm grain overlay"));
                act(*window);
                return Stage{clock, std::move(window)};
            }};
}

QStringList sentences(int count)
{
    QStringList list;
    for (int i = 1; i <= count; ++i)
        list << QStringLiteral("a whole sentence of the description, number %1 ")
                    .arg(i)
                    .remove(u',')
                    .repeated(3);
    return list;
}

const QByteArray mixedFile = "Keyword;Country\r\nretusche;Germany\r\nfotocollage;DE\r\n"
                             "photo editor;US\r\nretouch;Europe\r\nretouche;FR\r\n"
                             "tirages photo;France;2\r\n";

Scene appAdded(const char *name, const char *query, bool isKnown)
{
    return {QString::fromLatin1(name), [query, isKnown] {
                KeywordStage made;
                made.window = std::make_unique<MainWindow>(made.world->collaborators());
                made.window->show();
                made.world->discovery->results = sampleResults();
                made.click("addAppButton");
                made.find<TextField>("appSearchField")->setText(QString::fromLatin1(query));
                made.click("appSearchSubmit");
                QCoreApplication::processEvents();
                if (isKnown) {
                    for (auto *add : made.window->findChildren<QAbstractButton *>(
                             QStringLiteral("appRowAdd"))) {
                        if (add->isEnabled()) {
                            add->click();
                            break;
                        }
                    }
                }
                return Stage{made.world, std::move(made.window)};
            }};
}

/// Types into the field, and lets typing pause.
void typeKeywords(const KeywordStage &made, const QString &text)
{
    auto *field = made.find<TextArea>("keywordInput");
    field->setPlainText(text);
    field->moveCursor(QTextCursor::End);
    made.world->clock->advance(TypedSuggestions::typingPause);
}

const QString typedLines =
    QStringLiteral("disposable camera\nfilm grain overlay\n35mm photo effect\nphoto ca");

std::vector<Scene> typedSuggestionScenes()
{
    const auto suggest = [](KeywordStage &made) {
        made.world->suggestions->terms[QStringLiteral("photo ca")] = {
            QStringLiteral("photo calendar"), QStringLiteral("photo card maker"),
            QStringLiteral("photo editor"),   QStringLiteral("photo cartoon"),
            QStringLiteral("תמונה רטרו"),     QStringLiteral("写真加工")};
    };
    return {
        scene("add-keywords-suggestions", {},
              [suggest](KeywordStage &made) {
                  suggest(made);
                  typeKeywords(made, typedLines);
                  QTest::keyClick(made.find<TextArea>("keywordInput"), Qt::Key_Down);
              }),
        scene("add-keywords-suggestions-loading", {},
              [](KeywordStage &made) {
                  made.world->suggestions->holds = true;
                  typeKeywords(made, typedLines);
              }),
        scene("add-keywords-suggestions-none", {},
              [](KeywordStage &made) { typeKeywords(made, typedLines); }),
        scene("add-keywords-suggestions-failed", {},
              [](KeywordStage &made) {
                  made.world->suggestions->fails = true;
                  typeKeywords(made, typedLines);
              }),
        scene("add-keywords-suggestions-file", {},
              [suggest](KeywordStage &made) {
                  suggest(made);
                  made.check("GB");
                  made.check("CA");
                  typeKeywords(made, typedLines);
                  auto *tags = made.find<QLineEdit>("addKeywordsTagsLine");
                  QTest::keyClicks(tags, QStringLiteral("core,autumn,"));
                  made.import(mixedFile);
              }),
        scene("add-keywords-tag-refused", {},
              [](KeywordStage &made) {
                  auto *tags = made.find<QLineEdit>("addKeywordsTagsLine");
                  tags->setFocus();
                  for (int i = 1; i <= 9; ++i)
                      QTest::keyClicks(tags, QStringLiteral("campaign %1,").arg(i));
                  QTest::keyClicks(tags, QString(41, u'x') + u',');
              }),
        scene("add-keywords-suggestions-small", {800, 500},
              [suggest](KeywordStage &made) {
                  suggest(made);
                  typeKeywords(made, typedLines);
              }),
    };
}

} // namespace

std::vector<Scene> keywordScenes()
{
    std::vector<Scene> scenes;
    scenes.push_back(scene("add-keywords", {}, [](KeywordStage &) {}));
    scenes.push_back(scene("add-keywords-many", {}, [](KeywordStage &made) {
        made.check("GB");
        made.check("CA");
        made.enter(QStringLiteral("disposable camera\nfilm grain overlay\n35mm photo effect\n"
                                  "photo editor\nתמונה רטרו\n"));
        made.find<TextArea>("keywordInput")->setFocus();
    }));
    scenes.push_back(scene("add-keywords-refused", {}, [](KeywordStage &made) {
        made.enter((QStringList{QStringLiteral("double exposure"), QStringLiteral("film grain"),
                                QStringLiteral("photo editor")} +
                    sentences(7))
                       .join(u'\n'));
        made.click("addKeywordsSubmit");
    }));
    scenes.push_back(scene("add-keywords-file", {}, [](KeywordStage &made) {
        made.check("GB");
        made.enter(QStringLiteral("disposable camera\nfilm grain overlay"));
        made.import(mixedFile);
    }));
    scenes.push_back(scene("add-keywords-binary-file", {}, [](KeywordStage &made) {
        made.import(QByteArray::fromHex("ffd8ffe000104a464946000101"));
    }));
    scenes.push_back(scene("add-keywords-list-focus", {}, [](KeywordStage &made) {
        auto *list = made.find<QListView>("storefrontChecklist");
        list->setFocus(Qt::TabFocusReason);
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Space);
    }));
    scenes.push_back(scene("add-keywords-small", {800, 500}, [](KeywordStage &made) {
        made.enter(sentences(9).join(u'\n'));
        made.import(mixedFile);
    }));
    scenes.push_back(narrowScene("add-keywords-narrow", [](const QWidget &) {}));
    scenes.push_back(narrowScene("add-keywords-narrow-list", [](const QWidget &window) {
        window.findChild<QAbstractButton *>(QStringLiteral("addKeywordsStorefronts"))->click();
    }));
    scenes.push_back(scene("keywords-counted-narrow", {}, [](KeywordStage &made) {
        made.enter(QStringLiteral("double exposure, film grain, photo editor"));
        made.click("addKeywordsSubmit");
        QCoreApplication::processEvents();
        made.window->resize(900, 560);
    }));
    scenes.push_back(scene("import-refused", {}, [](KeywordStage &made) {
        made.import("Keyword,Storefront\nretouch,UK\nfilm grain,US\nphoto editor,US\n"
                    "fotobearbeitung,Europe\n");
        made.click("addKeywordsSubmit");
    }));
    for (Scene &suggested : typedSuggestionScenes())
        scenes.push_back(std::move(suggested));
    scenes.push_back(appAdded("app-search-added", "photo", true));
    scenes.push_back(appAdded("app-search-unknown-id", "id42", false));
    return scenes;
}

} // namespace veltrix
