// SPDX-License-Identifier: GPL-3.0-or-later
// A row of choices of which one is taken.
#pragma once

#include <QWidget>

class QButtonGroup;

namespace veltrix
{

/// One stop of Tab; arrows choose in it, as among radio buttons.
class SegmentedControl : public QWidget
{
    Q_OBJECT

public:
    struct Choice {
        /// As it is shown.
        QString text;
        /// As it is read.
        QString name;
    };

    /// The choices are called `choiceName` and their number from 0; the first is taken. `name` says
    /// to people what is chosen.
    SegmentedControl(const QString &objectName, const QString &name, const QString &choiceName,
                     const QList<Choice> &choices, QWidget *parent = nullptr);

    [[nodiscard]] int chosen() const;
    void choose(int index);

Q_SIGNALS:
    /// Another choice was taken.
    void changed(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QButtonGroup *m_buttons;
};

} // namespace veltrix
