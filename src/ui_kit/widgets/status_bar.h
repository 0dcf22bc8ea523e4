// SPDX-License-Identifier: GPL-3.0-or-later
// The line under a screen: what was done on one side, what is being done on the other.
#pragma once

#include <QWidget>

#include <optional>

namespace veltrix
{

class Button;
class ElidedLabel;
class TextLabel;

/// A thin bar that fills from the leading end; without a value it only shows its track.
class ProgressLine final : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressLine(QWidget *parent = nullptr);

    /// 0 to 1; nothing when the end is not known.
    void setFraction(std::optional<double> fraction);
    [[nodiscard]] std::optional<double> fraction() const { return m_fraction; }
    [[nodiscard]] QSize sizeHint() const override { return {160, 4}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {48, 4}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::optional<double> m_fraction;
};

/// Takes no room while it has nothing to say. Needs a parent, which it fills the width of.
class StatusBar final : public QWidget
{
    Q_OBJECT

public:
    struct Work {
        QString text;
        /// 0 to 1; nothing when the end is not known.
        std::optional<double> fraction;
        bool operator==(const Work &) const = default;
    };

    explicit StatusBar(QWidget *parent = nullptr);

    enum class Tone { Normal, Error };
    /// `detail` is a short text that stands before the message, is never cut, and goes with it.
    void setMessage(const QString &message, Tone tone = Tone::Normal,
                    const QString &detail = QString());
    [[nodiscard]] QString message() const;
    [[nodiscard]] QString detail() const;
    /// A text with "Undo" after it, which stands in the message's place; hidden when it is empty.
    void setOffer(const QString &offer);
    /// What is running; nothing hides that side.
    void setWork(const std::optional<Work> &work);
    [[nodiscard]] const std::optional<Work> &work() const { return m_work; }

Q_SIGNALS:
    void stopRequested();
    void undoRequested();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Shows what there is to show; the bar takes no room without anything.
    void showParts();

    std::optional<Work> m_work;
    QString m_offered;
    ElidedLabel *m_message;
    TextLabel *m_detail;
    ElidedLabel *m_offer;
    Button *m_undo;
    ElidedLabel *m_workText;
    ProgressLine *m_progress;
    Button *m_stop;
};

} // namespace veltrix
