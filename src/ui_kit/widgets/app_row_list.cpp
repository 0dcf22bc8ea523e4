// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/app_row_list.h"

#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/layouts.h"

#include <QKeyEvent>

namespace veltrix
{

AppRowList::AppRowList(const QString &rowName, AppRowLook look, Ranks ranks, ArtworkImages &images,
                       Prepare prepare, QWidget *parent)
    : QWidget(parent), m_rowName(rowName), m_look(look), m_ranks(ranks), m_images(images),
      m_prepare(std::move(prepare)), m_layout(makeColumn(0, this))
{
    hide();
}

AppRow *AppRowList::addRow()
{
    auto *row = new AppRow(m_look, m_images);
    m_rows.append(row);
    row->setObjectName(m_rowName + QString::number(m_rows.size()));
    connect(row, &AppRow::clicked, this, [this, row] { Q_EMIT pressed(row->app()); });
    m_layout->addWidget(row);
    return row;
}

void AppRowList::keyPressEvent(QKeyEvent *event)
{
    event->setAccepted(moveFocusAmong({m_rows.begin(), m_rows.end()}, *event));
}

void AppRowList::markOwn(AppRow &row) const
{
    row.setOwn(m_ownTrackId && row.app().trackId == m_ownTrackId);
}

void AppRowList::setOwnApp(std::optional<std::int64_t> trackId)
{
    m_ownTrackId = trackId;
    for (AppRow *row : std::as_const(m_rows))
        markOwn(*row);
}

void AppRowList::setApps(const QList<ITunesAppResult> &apps)
{
    for (qsizetype i = 0; i < apps.size(); ++i) {
        AppRow *row = i < m_rows.size() ? m_rows[i] : addRow();
        row->setApp(apps[i], m_ranks == Ranks::Shown ? int(i) + 1 : 0);
        markOwn(*row);
        if (m_prepare)
            m_prepare(*row);
    }
    while (m_rows.size() > apps.size()) {
        AppRow *row = m_rows.takeLast();
        row->hide();
        // It may be the one that was pressed.
        row->deleteLater();
    }
    setVisible(!apps.isEmpty());
    // Rows come later than what stands after the list.
    putInTabOrder(*this, {m_rows.begin(), m_rows.end()});
}

} // namespace veltrix
