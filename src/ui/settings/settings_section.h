// SPDX-License-Identifier: GPL-3.0-or-later
// A titled card of rows, as the settings are made of.
#pragma once

#include <QWidget>

class QBoxLayout;
class QVBoxLayout;

namespace veltrix
{

class Button;

/// A title over a card of rows that hairlines part.
class SettingsSection final : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsSection(const QString &title, QWidget *parent = nullptr);

    /// A row with a label at one end and a control at the other; hairlines part the rows. Returns
    /// all of the row, for one that comes and goes.
    QWidget *addRow(const QString &label, QWidget *control);
    /// A row that is one control.
    void addRow(QWidget *control);
    /// A row of links beside each other.
    void addLinks(const QList<Button *> &links);
    void addLink(Button *link) { addLinks({link}); }
    /// What belongs to the row before, below it and without a line between them.
    void addContinuation(QWidget *content);
    /// A quiet explanation below the row before.
    void addNote(const QString &text, const QString &objectName = QString());

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    /// Adds a row whose control starts `inset` inside.
    QBoxLayout *append(QWidget *control, int inset);

    QWidget *m_card;
    QVBoxLayout *m_rows;
    QList<QWidget *> m_rowControls;
};

} // namespace veltrix
