// SPDX-License-Identifier: GPL-3.0-or-later
// A screenshot as large as the window allows.
#pragma once

#include "model/url.h"
#include "ui_kit/widgets/sheet_frame.h"

#include <QList>

namespace veltrix
{

class ArtworkImages;
class Button;

/// Shows one of several pictures; arrow keys and buttons lead to the others.
class ScreenshotViewer final : public SheetFrame
{
    Q_OBJECT

public:
    /// `nameStart` begins the accessible name of the picture.
    ScreenshotViewer(const QList<Url> &urls, int index, ArtworkImages &images,
                     const QString &nameStart, QWidget *parent = nullptr);

    /// 0-based.
    [[nodiscard]] int index() const { return m_index; }

private:
    class Canvas;

    void showPicture(int index);

    QList<Url> m_urls;
    QString m_nameStart;
    int m_index = -1;
    Canvas *m_canvas;
    Button *m_previous;
    Button *m_next;
};

} // namespace veltrix
