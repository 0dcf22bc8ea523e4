// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/sidebar.h"

#include "ui/shell/app_selector.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/pressable.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QStyleOptionButton>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

constexpr int sidebarWidth = 248;

}

WorkspaceButton::WorkspaceButton(const QString &objectName, const QString &symbol,
                                 const QString &title, QWidget *parent)
    : QAbstractButton(parent), m_symbol(symbol)
{
    nameControl(this, objectName, title);
    setText(title);
    setCheckable(true);
    // Read as one choice of several, not as a box to check.
    setAutoExclusive(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
}

void WorkspaceButton::setCount(std::optional<int> count)
{
    m_count = count;
    setAccessibleDescription(count ? tr("%L1 tracked").arg(*count) : QString());
    update();
}

void WorkspaceButton::keyPressEvent(QKeyEvent *event)
{
    if (!pressByEnter(*this, *event))
        QAbstractButton::keyPressEvent(event);
}

QSize WorkspaceButton::sizeHint() const
{
    return {200, controlHeight(font()) + 2};
}

void WorkspaceButton::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    if (isChecked())
        drawRoundedRect(painter, rect(), radius::control, tokens[Token::Selected]);
    else if (underMouse())
        drawRoundedRect(painter, rect(), radius::control, tokens[Token::Hover]);
    const QColor color = tokens[isChecked() ? Token::Accent : Token::Text];
    const qreal symbol = qRound(controlHeight(font()) * 16.0 / 30.0);
    const QRectF content = QRectF(rect()).adjusted(10, 0, -10, 0);
    drawSymbol(painter, QRectF(content.x(), content.center().y() - symbol / 2, symbol, symbol),
               m_symbol, color);
    const QFont title =
        fontFor(isChecked() ? TextStyle::BodySemibold : TextStyle::BodyMedium, font());
    painter.setFont(title);
    painter.setPen(color);
    painter.drawText(content.adjusted(symbol + 10, 0, 0, 0), Qt::AlignVCenter, text());
    if (m_count) {
        painter.setFont(fontFor(
            isChecked() ? TextStyle::SecondarySemibold : TextStyle::SecondaryMedium, font()));
        painter.setPen(tokens[Token::Secondary]);
        painter.drawText(content, Qt::AlignVCenter | Qt::AlignRight, QLocale().toString(*m_count));
    }
    QStyleOptionButton option;
    option.initFrom(this);
    if (showsFocus(option))
        drawFocusRing(painter, rect(), radius::control, tokens[Token::Accent]);
}

Sidebar::Sidebar(ASOStore &store, ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_selector(new AppSelector(store, images)),
      m_overview(new WorkspaceButton(QStringLiteral("workspaceOverview"),
                                     QStringLiteral("chart.bar"), tr("Overview"))),
      m_keywords(new WorkspaceButton(QStringLiteral("workspaceKeywords"),
                                     QStringLiteral("magnifyingglass"), tr("Keywords"))),
      m_competitors(new WorkspaceButton(QStringLiteral("workspaceCompetitors"),
                                        QStringLiteral("person.2"), tr("Competitors")))
{
    setObjectName(QStringLiteral("sidebar"));
    setFixedWidth(sidebarWidth);
    auto *group = new QButtonGroup(this);
    group->addButton(m_overview);
    group->addButton(m_keywords);
    group->addButton(m_competitors);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::m, spacing::m, spacing::m + 1, spacing::m);
    layout->setSpacing(0);
    layout->addWidget(m_selector);
    layout->addSpacing(spacing::m);
    layout->addWidget(m_overview);
    layout->addWidget(m_keywords);
    layout->addWidget(m_competitors);
    layout->addStretch(1);
    // Assistive technology toggles a button without a click.
    const auto connectChoice = [this](WorkspaceButton *button, Workspace workspace) {
        connect(button, &QAbstractButton::toggled, this, [this, workspace](bool isChosen) {
            if (isChosen)
                Q_EMIT workspaceChosen(workspace);
        });
    };
    connectChoice(m_overview, Workspace::Overview);
    connectChoice(m_keywords, Workspace::Keywords);
    connectChoice(m_competitors, Workspace::Competitors);
    setWorkspace(Workspace::Keywords);
}

WorkspaceButton *Sidebar::buttonOf(Workspace workspace) const
{
    switch (workspace) {
    case Workspace::Overview:
        return m_overview;
    case Workspace::Keywords:
        return m_keywords;
    case Workspace::Competitors:
        return m_competitors;
    }
    Q_UNREACHABLE();
}

void Sidebar::setWorkspace(Workspace workspace)
{
    buttonOf(workspace)->setChecked(true);
}

void Sidebar::setCounts(std::optional<int> apps, std::optional<int> keywords,
                        std::optional<int> competitors)
{
    m_overview->setCount(apps);
    m_keywords->setCount(keywords);
    m_competitors->setCount(competitors);
}

void Sidebar::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    painter.fillRect(rect(), tokens[Token::Window]);
    painter.fillRect(QRect(width() - 1, 0, 1, height()), tokens[Token::Hairline]);
}

} // namespace veltrix
