// SPDX-License-Identifier: GPL-3.0-or-later
// Text fields of many lines.
#pragma once

#include <QPlainTextEdit>

namespace veltrix
{

/// A field of many lines whose placeholder is its name. Tab leaves it; Ctrl+Enter and Escape are
/// left to what is around it.
class TextArea final : public QPlainTextEdit
{
    Q_OBJECT

public:
    /// The placeholder is also the accessible name.
    TextArea(const QString &objectName, const QString &placeholder, QWidget *parent = nullptr);

    /// Lines of text that it asks room for, and the fewest that it can do with.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Files of this computer were dropped or pasted, by their paths; the text stays as it is.
    void filesBrought(const QStringList &paths);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    [[nodiscard]] bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    [[nodiscard]] QSize sizeOf(int lines, int characters) const;
};

} // namespace veltrix
