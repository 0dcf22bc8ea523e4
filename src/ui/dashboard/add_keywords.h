// SPDX-License-Identifier: GPL-3.0-or-later
// The card in which keywords are typed or pasted.
#pragma once

#include "store/keyword_admission.h"
#include "ui_kit/widgets/storefront_picker.h"

#include <QUuid>
#include <QWidget>

#include <optional>

namespace veltrix
{

class Button;
class KeywordActions;
class TextField;
class TextLabel;

class AddKeywordsCard final : public QWidget
{
    Q_OBJECT

public:
    /// `country` is the storefront that the picker shows at first.
    explicit AddKeywordsCard(const QString &country, QWidget *parent = nullptr);

    /// Opens a card at `opener` that adds keywords to an app.
    static void open(QWidget *opener, KeywordActions &actions, std::optional<QUuid> appId,
                     const QString &country);

    /// A text under the field, in place of the number of keywords.
    void showProblem(const QString &problem);
    /// Tells what became of what was submitted. What was refused stays in the field, with the
    /// reasons below, until it is mended or the card is closed.
    void showAdmission(const KeywordAdmission &admission);
    void setText(const QString &text);
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void submitted(const QStringList &keywords, const QString &country);
    void importRequested(const QString &country);
    void cancelled();

private:
    void submit();
    void describe();
    void setNote(const QString &text);
    /// What stands in the field now and cannot be measured in the chosen storefront.
    [[nodiscard]] QList<RefusedKeyword> refusals(const QStringList &keywords) const;

    TextField *m_field;
    StorefrontPicker *m_storefront;
    TextLabel *m_note;
    TextLabel *m_refusals;
    Button *m_add;
};

} // namespace veltrix
