// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/change_log_view.h"

#include "ui/listing/app_header.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/card.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

#include <QPainter>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int pictureSide = 20;

/// One change, over a hairline where another follows.
class ChangeLogRow final : public QWidget
{
public:
    enum class Place { Before, Last };
    ChangeLogRow(const ChangeLogEntry &entry, Place place, ArtworkImages &images) : m_place(place)
    {
        nameControl(this, QStringLiteral("changeLogEntry"), entry.sentence);
        setAccessibleRole(this, QAccessible::ListItem);
        auto *title = new TextLabel(TextStyle::BodyMedium, TextLabel::Tone::Text, entry.title);
        title->setWrapping(TextLabel::Wrapping::Wrapped);
        auto *day = new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary, entry.day);
        auto *head = makeRow(spacing::m);
        head->addWidget(title, 1);
        head->addWidget(day, 0, Qt::AlignTop);
        auto *texts = makeColumn(1);
        texts->addLayout(head);
        if (!entry.detail.isEmpty())
            texts->addWidget(
                makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, entry.detail));
        if (entry.pictures)
            texts->addLayout(makePictures(*entry.pictures, images));
        auto *symbol = new SymbolView(entry.symbol, Token::Secondary);
        auto *line = makeRow(spacing::m - 1, this, {0, spacing::m - 1, 0, spacing::m});
        line->addWidget(symbol, 0, Qt::AlignTop);
        line->addLayout(texts, 1);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (m_place == Place::Last)
            return;
        QPainter painter(this);
        drawHorizontalHairline(painter, 0, width(), height() - 1,
                               Tokens::of(this)[Token::Hairline]);
    }

private:
    static QLayout *makePictures(const ChangeLogEntry::Pictures &pictures, ArtworkImages &images)
    {
        const auto picture = [&](const std::optional<Url> &url) {
            auto *view = new ArtworkView(images, pictureSide, QStringLiteral("app.dashed"));
            view->setUrl(url);
            return view;
        };
        auto *line = makeRow(spacing::s - 1, nullptr, {0, spacing::xs - 1, 0, 0});
        line->addWidget(picture(pictures.earlier));
        line->addWidget(
            new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary, QStringLiteral("→")));
        line->addWidget(picture(pictures.later));
        line->addStretch(1);
        return line;
    }

    Place m_place;
};

} // namespace

ChangeLogView::ChangeLogView(ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_images(images), m_heading(makeHeading(tr("Change log"))),
      m_waiting(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary,
                              tr("Reading the change log…"), QStringLiteral("changeLogWaiting"))),
      m_failure(Banner::makeFailureCard(QStringLiteral("changeLogFailure"), tr("Try again"))),
      m_list(new QWidget), m_rows(makeColumn(0, m_list)),
      m_more(new Button(Button::Kind::Link, QString()))
{
    nameControl(this, QStringLiteral("changeLog"), tr("Change log"));
    setAccessibleRole(m_list, QAccessible::List);
    nameControl(m_list, QStringLiteral("changeLogEntries"), tr("Change log"));
    m_more->setObjectName(QStringLiteral("changeLogMore"));
    auto *more = makeRow(0);
    more->addWidget(m_more);
    more->addStretch(1);
    auto *layout = makeColumn(spacing::s, this);
    layout->addWidget(m_heading);
    layout->addWidget(m_waiting);
    layout->addWidget(m_failure);
    layout->addWidget(m_list);
    layout->addLayout(more);
    layout->addStretch(1);
    connect(m_failure, &Banner::actionTriggered, this, &ChangeLogView::retryRequested);
    connect(m_more, &Button::clicked, this, [this] {
        m_showsAll = true;
        showEntries();
    });
}

void ChangeLogView::setHeadHeight(int height)
{
    m_heading->setMinimumHeight(height);
}

void ChangeLogView::showLog(const Loadable<ListingPast> &state,
                            const std::vector<ChangeLogEntry> &log, const QString &toldError)
{
    const bool isThere = state.value() != nullptr;
    m_waiting->setVisible(!isThere && state.error().isEmpty());
    const QString failure = tr("The change log can't be read.");
    m_failure->setMessage(state.error().isEmpty() ? QString() : failure,
                          state.error() == toldError ? QString() : state.error());
    m_list->setVisible(isThere);
    if (std::exchange(m_log, log) != log || log.empty())
        showEntries();
}

void ChangeLogView::showEntries()
{
    while (QLayoutItem *item = m_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const size_t shown = m_showsAll ? m_log.size() : std::min(m_log.size(), firstEntries);
    for (size_t i = 0; i < shown; ++i)
        m_rows->addWidget(new ChangeLogRow(
            m_log[i], i + 1 < shown ? ChangeLogRow::Place::Before : ChangeLogRow::Place::Last,
            m_images));
    m_more->setVisible(shown < m_log.size());
    m_more->setText(tr("Show all %L1 entries").arg(m_log.size()));
    m_more->setAccessibleName(m_more->text());
}

} // namespace veltrix
