// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/painted_texts.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPaintEngine>
#include <QScrollBar>
#include <QToolTip>

#include <functional>

namespace veltrix
{

namespace
{

/// Pixels by which the boxes of neighbouring letters may touch.
constexpr qreal tolerance = 2;

/// Notes texts, and draws nothing.
class RecordingEngine final : public QPaintEngine
{
public:
    RecordingEngine() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    [[nodiscard]] Type type() const override { return User; }
    void updateState(const QPaintEngineState &changed) override
    {
        if (changed.state() & DirtyTransform)
            m_transform = changed.transform();
    }
    void drawTextItem(const QPointF &baseline, const QTextItem &item) override
    {
        const QRectF box(baseline.x(), baseline.y() - item.ascent(), item.width(),
                         item.ascent() + item.descent());
        if (!item.text().trimmed().isEmpty())
            texts.push_back({item.text(), m_transform.mapRect(box)});
    }
    void drawPath(const QPainterPath &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawPolygon(const QPoint *, int, PolygonDrawMode) override {}
    void drawRects(const QRectF *, int) override {}
    void drawRects(const QRect *, int) override {}
    void drawLines(const QLineF *, int) override {}
    void drawLines(const QLine *, int) override {}
    void drawPoints(const QPointF *, int) override {}
    void drawPoints(const QPoint *, int) override {}
    void drawEllipse(const QRectF &) override {}
    void drawEllipse(const QRect &) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawTiledPixmap(const QRectF &, const QPixmap &, const QPointF &) override {}
    void drawImage(const QRectF &, const QImage &, const QRectF &,
                   Qt::ImageConversionFlags) override
    {
    }

    std::vector<PaintedText> texts;

private:
    QTransform m_transform;
};

class RecordingDevice final : public QPaintDevice
{
public:
    explicit RecordingDevice(QSize size) : m_size(size) {}

    [[nodiscard]] QPaintEngine *paintEngine() const override { return &m_engine; }
    [[nodiscard]] const std::vector<PaintedText> &texts() const { return m_engine.texts; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return 0;
        }
    }

private:
    QSize m_size;
    mutable RecordingEngine m_engine;
};

bool isShortened(const QString &text)
{
    return text.endsWith(u'…');
}

/// What is wrong with the texts of one cell. `toolTip` tells what was shortened.
QStringList problemsIn(const QRect &cell, const std::vector<PaintedText> &texts,
                       const std::vector<QRect> &covers, const QString &wholeText,
                       const std::function<QString()> &toolTip)
{
    QStringList problems;
    for (size_t i = 0; i < texts.size(); ++i) {
        const auto &[text, rect] = texts[i];
        const QRectF inner = rect.adjusted(tolerance, tolerance, -tolerance, -tolerance);
        if (!QRectF(cell).contains(inner))
            problems << QStringLiteral("“%1” reaches out of its cell").arg(text);
        for (const QRect &cover : covers) {
            if (inner.intersects(cover))
                problems << QStringLiteral("“%1” lies under a widget").arg(text);
        }
        for (size_t j = 0; j < i; ++j) {
            if (inner.intersects(texts[j].rect))
                problems << QStringLiteral("“%1” lies over “%2”").arg(text, texts[j].text);
        }
        if (isShortened(text) && !wholeText.contains(text) && toolTip().isEmpty())
            problems << QStringLiteral("“%1” is shortened without a tool tip").arg(text);
    }
    return problems;
}

std::vector<PaintedText> textsIn(const QRect &cell, const std::vector<PaintedText> &texts)
{
    std::vector<PaintedText> inside;
    for (const PaintedText &text : texts) {
        if (cell.contains(QPoint(int(text.rect.left()) + 1, int(text.rect.center().y()))))
            inside.push_back(text);
    }
    return inside;
}

QStringList beyondCells(size_t count)
{
    if (count == 0)
        return {};
    return {QStringLiteral("%1 texts begin outside of every cell").arg(count)};
}

} // namespace

std::vector<PaintedText> paintedTexts(QWidget *widget)
{
    RecordingDevice device(widget->size());
    widget->render(&device, QPoint(), QRegion(), QWidget::RenderFlags());
    return device.texts();
}

QStringList paintedTextProblems(QAbstractItemView *view)
{
    const std::vector<PaintedText> texts = paintedTexts(view->viewport());
    std::vector<QRect> covers;
    for (const QWidget *child :
         view->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isVisible())
            covers.push_back(child->geometry());
    }
    QStringList problems;
    size_t seen = 0;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            const QModelIndex index = view->model()->index(row, column);
            const QRect cell = view->visualRect(index);
            if (cell.isEmpty() || !view->viewport()->rect().intersects(cell))
                continue;
            const std::vector<PaintedText> inside = textsIn(cell, texts);
            seen += inside.size();
            problems +=
                problemsIn(cell, inside, covers, index.data(Qt::AccessibleTextRole).toString(),
                           [&] { return index.data(Qt::ToolTipRole).toString(); });
        }
    }
    return problems + beyondCells(texts.size() - seen);
}

QStringList paintedHeaderProblems(QTableView *table)
{
    QHeaderView *header = table->horizontalHeader();
    const std::vector<PaintedText> texts = paintedTexts(header->viewport());
    QStringList problems;
    size_t seen = 0;
    for (int section = 0; section < header->count(); ++section) {
        if (header->isSectionHidden(section))
            continue;
        const QRect cell(header->sectionViewportPosition(section), 0, header->sectionSize(section),
                         header->height());
        const QPoint centre = cell.center();
        const auto toolTip = [&] {
            QToolTip::hideText();
            QHelpEvent event(QEvent::ToolTip, centre, header->viewport()->mapToGlobal(centre));
            QCoreApplication::sendEvent(header->viewport(), &event);
            return QToolTip::text();
        };
        const std::vector<PaintedText> inside = textsIn(cell, texts);
        seen += inside.size();
        problems += problemsIn(cell, inside, {}, QString(), toolTip);
    }
    return problems + beyondCells(texts.size() - seen);
}

} // namespace veltrix
