// SPDX-License-Identifier: GPL-3.0-or-later
// What a file of keywords would add, before it does.
#pragma once

#include "ui_kit/widgets/card.h"

#include <QStringList>

namespace veltrix
{

class ElidedLabel;

/// The name of the file, what of it will be added, and what is refused and why. It can be taken
/// off.
class ImportPreview final : public Card
{
    Q_OBJECT

public:
    explicit ImportPreview(QWidget *parent = nullptr);

    void setFileName(const QString &name);
    /// `refusals` are lines.
    void setContent(const QString &note, const QStringList &refusals);

Q_SIGNALS:
    void removed();

private:
    ElidedLabel *m_name;
    TextLabel *m_note;
    TextLabel *m_refusals;
};

} // namespace veltrix
