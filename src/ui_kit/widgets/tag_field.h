// SPDX-License-Identifier: GPL-3.0-or-later
// A field that holds tags.
#pragma once

#include <QStringList>
#include <QWidget>

class QLineEdit;
class QStringListModel;

namespace veltrix
{

class RemovableTag;
class TextLabel;

/// Tags as chips, and behind them a line to type the next one. A comma, a semicolon or Enter ends a
/// tag, and so does leaving the field; Backspace in the empty line takes off the last one. Why a
/// name cannot be is said below. The chips are stops of Tab, and Left from the start of the line
/// leads to them.
class TagField final : public QWidget
{
    Q_OBJECT

public:
    /// `name` is the accessible name of the line.
    TagField(const QString &objectName, const QString &name, QWidget *parent = nullptr);

    /// The chips in their order, with what is in the line if that is a name that can be.
    [[nodiscard]] QStringList tags() const;
    /// Why what is in the line cannot be the name of a tag; empty when it can, or nothing is there.
    [[nodiscard]] QString refusal() const;
    /// Names that can be no tag are left out, and so are those that differ from another by case.
    void setTags(const QStringList &tags);
    /// What the line completes to. One of them that is typed in another case is written as here.
    void setKnownTags(const QStringList &tags);

Q_SIGNALS:
    void tagsChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Box;

    void offerCompletions();
    /// Makes chips of the names that are ended in what the line holds. One that cannot be stays,
    /// and why is said.
    void take(const QString &text);
    /// Takes what is in the line for a whole name.
    void finish();
    [[nodiscard]] bool contains(const QString &name) const;
    /// As it is known, or as it is.
    [[nodiscard]] QString spelled(const QString &name) const;
    void add(const QString &name);
    void addChip(const QString &name);
    void remove(RemovableTag *chip);
    void say(const QString &refusal);
    [[nodiscard]] QList<QWidget *> stops() const;

    Box *m_box;
    QLineEdit *m_line;
    QStringListModel *m_completions;
    TextLabel *m_refusal;
    QList<RemovableTag *> m_chips;
    QStringList m_known;
};

} // namespace veltrix
