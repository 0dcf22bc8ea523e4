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
        /// What is shown more quietly behind the text; may be empty.
        QString detail = {};

        bool operator==(const Choice &) const = default;
    };

    /// The choices are called `choiceName` and their number from 0; the first is taken. `name` says
    /// to people what is chosen.
    SegmentedControl(const QString &objectName, const QString &name, const QString &choiceName,
                     const QList<Choice> &choices, QWidget *parent = nullptr);

    [[nodiscard]] int chosen() const;
    void choose(int index);

    /// Shows and reads a choice in other words.
    void setChoice(int index, const Choice &choice);
    /// Shows as many choices as that many pixels have room for. The others give way from the end;
    /// the one that is taken stays, and arrows reach all of them.
    void fitInto(int width);
    /// Pixels for all choices.
    [[nodiscard]] int wholeWidth() const;
    /// The choices that have given way.
    [[nodiscard]] QList<int> hiddenChoices() const;

Q_SIGNALS:
    /// Another choice was taken.
    void changed(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    class Segment;

    [[nodiscard]] Segment *segment(int index) const;
    /// Makes the choice that is taken the one stop of Tab.
    void stopAtChosen();
    /// Chooses by a key. False for one that means something else.
    bool step(int index, const QKeyEvent &event);

    QButtonGroup *m_buttons;
};

} // namespace veltrix
