// SPDX-License-Identifier: GPL-3.0-or-later
// The card in which keywords are typed or pasted.
#pragma once

#include "ui/widgets/storefront_picker.h"

#include <QWidget>

namespace veltrix
{

class Button;
class TextField;
class TextLabel;

class AddKeywordsCard final : public QWidget
{
    Q_OBJECT

public:
    /// `country` is the storefront that the picker shows at first.
    explicit AddKeywordsCard(const QString &country, QWidget *parent = nullptr);

    /// A text under the field: what is refused, or how many keywords there are.
    void showProblem(const QString &problem);
    void setText(const QString &text);
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void submitted(const QStringList &keywords, const QString &country);
    void importRequested(const QString &country);
    void cancelled();

private:
    void submit();
    void describe();

    TextField *m_field;
    StorefrontPicker *m_storefront;
    TextLabel *m_note;
    Button *m_add;
};

} // namespace veltrix
