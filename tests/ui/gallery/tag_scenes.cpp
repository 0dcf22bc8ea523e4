// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/tag_scenes.h"

#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_filter.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/dashboard/tag_filter_button.h"
#include "ui/support/ui_world.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/tag_field.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

namespace veltrix
{

namespace
{

using Act = std::function<void(MainWindow &, UiWorld &)>;

/// Some keywords have one tag, some two or three, some none.
void tagSome(ASOStore &store)
{
    const QStringList names{QStringLiteral("core"), QStringLiteral("title"),
                            QStringLiteral("germany"), QStringLiteral("long tail"),
                            QStringLiteral("autumn")};
    const QList<TrackedKeyword> keywords = store.trackedKeywords();
    for (qsizetype i = 0; i < keywords.size(); ++i) {
        for (qsizetype j = 0; j < i % 4; ++j)
            store.setTag({keywords[i].id}, names[(i + j * 2) % names.size()], true);
    }
}

/// Long names, names from right to left, and many.
void tagMany(ASOStore &store)
{
    const QList<TrackedKeyword> keywords = store.trackedKeywords();
    for (qsizetype i = 0; i < keywords.size(); ++i) {
        const QList<QUuid> id{keywords[i].id};
        store.setTag(id, QStringLiteral("مهم جدا"), i % 3 != 1);
        store.setTag(id, QStringLiteral("Wettbewerbsbeobachtung im Weihnachtsgesc"), i % 3 != 2);
        for (qsizetype j = 0; j < 10; ++j)
            store.setTag(id, QStringLiteral("tag %1").arg(i * 5 + j), true);
    }
}

Scene scene(const char *name, QSize size, void (*tag)(ASOStore &store), Act act)
{
    return {QString::fromLatin1(name), [size, tag, act = std::move(act)] {
                std::shared_ptr<UiWorld> world = UiWorld::sample();
                auto window = std::make_unique<MainWindow>(world->collaborators());
                window->resize(size);
                window->show();
                window->activateWindow();
                QCoreApplication::processEvents();
                tag(*world->store);
                QCoreApplication::processEvents();
                act(*window, *world);
                return Stage{world, std::move(window)};
            }};
}

Act editing(int rows)
{
    return [rows](MainWindow &window, UiWorld &) {
        KeywordTableView &table = window.dashboard().table();
        table.setFocus();
        table.QTableView::selectRow(1);
        for (int row = 2; row <= rows; ++row)
            table.selectionModel()->select(table.model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
        window.dashboard().editTags();
    };
}

Act typing(const QString &text)
{
    return [text](MainWindow &window, UiWorld &world) {
        editing(1)(window, world);
        QCoreApplication::processEvents();
        auto *field = window.findChild<QLineEdit *>(QStringLiteral("tagSearch"));
        field->setText(text);
        QTest::keyClick(field, Qt::Key_Return);
    };
}

Scene fieldScene(const char *name, int width, const QStringList &tags, const QString &typed)
{
    return {QString::fromLatin1(name), [width, tags, typed] {
                auto widget = std::make_unique<QWidget>();
                widget->setAutoFillBackground(true);
                widget->setBackgroundRole(QPalette::Base);
                auto *field = new TagField(QStringLiteral("tagField"), QStringLiteral("Tags"));
                auto *layout = makeColumn(spacing::s, widget.get(),
                                          {spacing::l, spacing::l, spacing::l, spacing::l});
                layout->addWidget(field);
                layout->addStretch(1);
                field->setKnownTags({QStringLiteral("core"), QStringLiteral("autumn")});
                field->setTags(tags);
                widget->resize(width, 240);
                widget->show();
                auto *line = field->findChild<QLineEdit *>();
                line->setFocus();
                if (!typed.isEmpty()) {
                    line->setText(typed);
                    QTest::keyClick(line, Qt::Key_Return);
                }
                return Stage{nullptr, std::move(widget)};
            }};
}

} // namespace

std::vector<Scene> tagScenes()
{
    const Act nothing = [](MainWindow &, UiWorld &) {
    };
    const Act filterMenu = [](MainWindow &window, UiWorld &) {
        TagFilter filter = TagFilter::only(QStringLiteral("core"));
        filter.set(QStringLiteral("title"), true);
        window.dashboard().filter().setTags(filter);
        window.findChild<TagFilterButton *>()->openList();
    };
    const Act filterEmpty = [](MainWindow &window, UiWorld &) {
        window.dashboard().filter().setTags(TagFilter::only(QStringLiteral("winter")));
    };
    const Act narrowColumn = [](MainWindow &window, UiWorld &) {
        window.dashboard().table().horizontalHeader()->resizeSection(int(KeywordColumn::Tags), 96);
    };
    const Act filterLong = [](MainWindow &window, UiWorld &) {
        window.dashboard().filter().setTags(
            TagFilter::only(QStringLiteral("Wettbewerbsbeobachtung im Weihnachtsgesc")));
    };
    QStringList many{QString(40, u'W'), QStringLiteral("مهم جدا")};
    for (int i = 0; i < 8; ++i)
        many.append(QStringLiteral("tag %1").arg(i));
    return {
        scene("tags-table", {1280, 800}, tagSome, nothing),
        scene("tags-table-narrow", {1024, 700}, tagSome, nothing),
        scene("tags-table-small", {800, 500}, tagMany, nothing),
        scene("tags-many", {1280, 800}, tagMany, nothing),
        scene("tags-many-in-narrow-column", {1280, 800}, tagMany, narrowColumn),
        scene("tags-filter-menu", {1280, 800}, tagSome, filterMenu),
        scene("tags-filter-menu-small", {800, 500}, tagMany, filterMenu),
        scene("tags-filter-empty", {1280, 800}, tagSome, filterEmpty),
        scene("tags-filter-long", {800, 500}, tagMany, filterLong),
        scene("tags-editor-one", {1280, 800}, tagSome, editing(1)),
        scene("tags-editor-several", {1280, 800}, tagSome, editing(4)),
        scene("tags-editor-new", {1280, 800}, tagSome, typing(QStringLiteral("winter sale"))),
        scene("tags-editor-refused", {800, 500}, tagSome, typing(QStringLiteral("a; b"))),
        scene("tags-editor-small", {800, 500}, tagMany, editing(4)),
        fieldScene("tag-field", 640, {QStringLiteral("core"), QStringLiteral("autumn")}, {}),
        fieldScene("tag-field-empty", 640, {}, {}),
        fieldScene("tag-field-narrow", 320, many, {}),
        fieldScene("tag-field-refused", 400, {QStringLiteral("core")}, QString(41, u'a')),
    };
}

} // namespace veltrix
