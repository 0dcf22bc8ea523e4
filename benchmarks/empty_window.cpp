// SPDX-License-Identifier: GPL-3.0-or-later
// The least that a program with a window does: the reference for the start of Veltrix.
#include "first_paint.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    veltrix::FirstPaint firstPaint;
    QWidget window;
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
