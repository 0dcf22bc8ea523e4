// SPDX-License-Identifier: GPL-3.0-or-later
// What a screen shows in place of content: nothing yet, nothing found, a failure, or work.
#pragma once

#include <QWidget>

namespace veltrix
{

class Button;
class TextLabel;

/// A symbol, a heading, a sentence and a way on, centred. Every part but the heading may be
/// missing.
class EmptyState final : public QWidget
{
    Q_OBJECT

public:
    struct Content {
        QString symbol;
        QString title;
        QString text;
        QString action;

        /// Only the heading.
        static Content working(const QString &title);
        /// What came of a network that failed: `error` in words for the user.
        static Content failed(const QString &title, const QString &error, const QString &action);
        bool operator==(const Content &) const = default;
    };

    explicit EmptyState(const QString &objectName, QWidget *parent = nullptr);

    void setContent(const Content &content);
    [[nodiscard]] const Content &content() const { return m_content; }

Q_SIGNALS:
    void actionTriggered();

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int symbolSize() const;

    Content m_content;
    QWidget *m_symbolSpace;
    TextLabel *m_title;
    TextLabel *m_text;
    Button *m_action;
};

} // namespace veltrix
