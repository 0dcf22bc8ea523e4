// SPDX-License-Identifier: GPL-3.0-or-later
// A list of tags to check, with a field to find one, in a popover.
#pragma once

#include "ui/dashboard/tag_check_model.h"

#include <QWidget>

class QListView;

namespace veltrix
{

class TextField;
class TextLabel;

/// A heading, a field, the tags, and a quiet line below. Arrows move in the list, also from the
/// field; Space checks, and so does Enter in both. Escape closes the popover.
class TagChecklist final : public QWidget
{
    Q_OBJECT

public:
    /// Opens it at `anchor`. `fieldText` is the name of the field.
    static TagChecklist *open(QWidget *anchor, TagCheckModel::Offer offer, const QString &heading,
                              const QString &fieldText);

    /// Pixels that it is wide.
    [[nodiscard]] static int widthFor(const QFont &font);

    [[nodiscard]] TagCheckModel &model() { return *m_model; }
    /// What the checks mean; may be empty.
    void setNote(const QString &note);
    /// Why the last check was not possible; an empty text takes it away.
    void setProblem(const QString &problem);

    [[nodiscard]] QSize sizeHint() const override;
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user wants the row checked, or not any more; one that is partly checked is to be.
    void wanted(const TagCheckModel::Row &row, bool isChecked);
    void closed();

private:
    TagChecklist(TagCheckModel::Offer offer, const QString &heading, const QString &fieldText);
    void toggle(const QModelIndex &index);
    void goToFirst();

    TagCheckModel *m_model;
    TextField *m_field;
    QListView *m_view;
    TextLabel *m_note;
    TextLabel *m_problem;
};

} // namespace veltrix
