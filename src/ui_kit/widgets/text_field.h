// SPDX-License-Identifier: GPL-3.0-or-later
// One-line text fields, with a symbol where they search.
#pragma once

#include <QLineEdit>

namespace veltrix
{

/// A field whose placeholder is its name.
class TextField : public QLineEdit
{
    Q_OBJECT

public:
    /// The placeholder is also the accessible name. `symbol` may be empty.
    TextField(const QString &objectName, const QString &placeholder, const QString &symbol,
              QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Escape was pressed while the field held a text.
    void escaped();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void updateMargins();

    QString m_symbol;
};

} // namespace veltrix
