// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/painted_texts.h"

#include "ui_kit/table/table_header.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPaintEngine>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <functional>
#include <numeric>

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
    explicit RecordingEngine(QSize device)
        : QPaintEngine(AllFeatures), m_device(QPointF(0, 0), device)
    {
    }

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    [[nodiscard]] Type type() const override { return User; }
    void updateState(const QPaintEngineState &changed) override
    {
        if (changed.state() & DirtyTransform)
            m_transform = changed.transform();
        if (changed.state() & DirtyBrush)
            m_brush = changed.brush();
    }
    void drawTextItem(const QPointF &baseline, const QTextItem &item) override
    {
        const QRectF box(baseline.x(), baseline.y() - item.ascent(), item.width(),
                         item.ascent() + item.descent());
        const QRectF place = m_transform.mapRect(box);
        if (!item.text().trimmed().isEmpty() && place.intersects(m_device))
            texts.push_back({item.text(), place});
    }
    void drawPath(const QPainterPath &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawPolygon(const QPoint *, int, PolygonDrawMode) override {}
    void drawRects(const QRectF *rects, int count) override
    {
        if (!m_brush.isOpaque())
            return;
        for (int i = 0; i < count; ++i)
            coverTexts(m_transform.mapRect(rects[i]));
    }
    void drawRects(const QRect *rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            const QRectF rect = rects[i];
            drawRects(&rect, 1);
        }
    }
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
    /// What is painted over is not seen: what a table holds in place lies over what scrolls.
    void coverTexts(const QRectF &cover)
    {
        const auto cut = [&](QRectF &rect) {
            const QRectF seen = rect.intersected(m_device);
            if (seen.isEmpty() || seen.top() < cover.top() || seen.bottom() > cover.bottom())
                return;
            if (seen.left() >= cover.left())
                rect.setLeft(std::clamp(cover.right(), seen.left(), rect.right()));
            else if (seen.right() <= cover.right())
                rect.setRight(std::clamp(cover.left(), rect.left(), seen.right()));
        };
        for (PaintedText &painted : texts)
            cut(painted.rect);
        texts.erase(std::remove_if(texts.begin(), texts.end(),
                                   [](const auto &painted) { return painted.rect.width() <= 0; }),
                    texts.end());
    }

    QRectF m_device;
    QTransform m_transform;
    QBrush m_brush;
};

class RecordingDevice final : public QPaintDevice
{
public:
    explicit RecordingDevice(QSize size) : m_size(size), m_engine(size) {}

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

/// Takes the texts of a cell out of those that no cell has had yet.
std::vector<PaintedText> takeTextsIn(const QRect &cell, std::vector<PaintedText> &texts)
{
    const auto rest = std::stable_partition(texts.begin(), texts.end(), [&](const auto &text) {
        return !cell.contains(QPoint(int(text.rect.left()) + 1, int(text.rect.center().y())));
    });
    std::vector<PaintedText> inside(rest, texts.end());
    texts.erase(rest, texts.end());
    return inside;
}

/// The columns of a table, the one that it holds over others first.
std::vector<int> columnsFromTop(const QAbstractItemView &view)
{
    std::vector<int> columns(size_t(view.model()->columnCount()));
    std::iota(columns.begin(), columns.end(), 0);
    const auto *table = qobject_cast<const QTableView *>(&view);
    const auto *header =
        table ? qobject_cast<const TableHeader *>(table->horizontalHeader()) : nullptr;
    if (header && header->heldSection() >= 0)
        std::swap(columns[0], columns[size_t(header->heldSection())]);
    return columns;
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
    std::vector<PaintedText> texts = paintedTexts(view->viewport());
    std::vector<QRect> covers;
    for (const QWidget *child :
         view->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isVisible())
            covers.push_back(child->geometry());
    }
    QStringList problems;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        for (const int column : columnsFromTop(*view)) {
            const QModelIndex index = view->model()->index(row, column);
            const QRect cell = view->visualRect(index);
            if (cell.isEmpty() || !view->viewport()->rect().intersects(cell))
                continue;
            const std::vector<PaintedText> inside = takeTextsIn(cell, texts);
            problems +=
                problemsIn(cell, inside, covers, index.data(Qt::AccessibleTextRole).toString(),
                           [&] { return index.data(Qt::ToolTipRole).toString(); });
        }
    }
    return problems + beyondCells(texts.size());
}

QStringList paintedHeaderProblems(QTableView *table)
{
    QHeaderView *header = table->horizontalHeader();
    std::vector<PaintedText> texts = paintedTexts(header->viewport());
    const auto *holding = qobject_cast<TableHeader *>(header);
    QStringList problems;
    for (const int section : columnsFromTop(*table)) {
        if (header->isSectionHidden(section))
            continue;
        const QRect cell = holding ? holding->sectionRect(section)
                                   : QRect(header->sectionViewportPosition(section), 0,
                                           header->sectionSize(section), header->height());
        const QPoint centre = cell.center();
        const auto toolTip = [&] {
            QToolTip::hideText();
            QHelpEvent event(QEvent::ToolTip, centre, header->viewport()->mapToGlobal(centre));
            QCoreApplication::sendEvent(header->viewport(), &event);
            return QToolTip::text();
        };
        const std::vector<PaintedText> inside = takeTextsIn(cell, texts);
        problems += problemsIn(cell, inside, {}, QString(), toolTip);
    }
    return problems + beyondCells(texts.size());
}

} // namespace veltrix
