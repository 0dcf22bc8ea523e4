// SPDX-License-Identifier: GPL-3.0-or-later
// The side of the window: the app selector and the workspaces.
#pragma once

#include "store/aso_store.h"

#include <QAbstractButton>

namespace veltrix
{

class AppSelector;
class ArtworkImages;

enum class Workspace { Overview, Keywords, Competitors };

/// One workspace in the sidebar: its symbol, its name, and how many things are in it.
class WorkspaceButton final : public QAbstractButton
{
    Q_OBJECT

public:
    WorkspaceButton(const QString &objectName, const QString &symbol, const QString &title,
                    QWidget *parent = nullptr);

    /// No value shows no number.
    void setCount(std::optional<int> count);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_symbol;
    std::optional<int> m_count;
};

class Sidebar final : public QWidget
{
    Q_OBJECT

public:
    Sidebar(ASOStore &store, ArtworkImages &images, QWidget *parent = nullptr);

    [[nodiscard]] AppSelector &appSelector() { return *m_selector; }
    void setWorkspace(Workspace workspace);
    void setCounts(std::optional<int> apps, std::optional<int> keywords,
                   std::optional<int> competitors);

Q_SIGNALS:
    void workspaceChosen(veltrix::Workspace workspace);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] WorkspaceButton *buttonOf(Workspace workspace) const;

    AppSelector *m_selector;
    WorkspaceButton *m_overview;
    WorkspaceButton *m_keywords;
    WorkspaceButton *m_competitors;
};

} // namespace veltrix
