// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_PIXELS_H
#define TARVONIX_TESTS_PIXELS_H

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <QWidget>

// Pixel checks on what a control paints, through QWidget::grab() on the offscreen platform.
namespace pixels {

inline QImage grab(QWidget *widget)
{
    return widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

//! The colour at (x, y), or an invalid colour outside the image.
inline QColor at(const QImage &image, int x, int y)
{
    return image.rect().contains(x, y) ? image.pixelColor(x, y) : QColor();
}

//! How many pixels of \a rect have exactly \a colour.
inline int count(const QImage &image, const QRect &rect, const QColor &colour)
{
    int n = 0;
    const QRect r = rect.intersected(image.rect());
    for (int y = r.top(); y <= r.bottom(); ++y) {
        for (int x = r.left(); x <= r.right(); ++x)
            n += image.pixelColor(x, y) == colour;
    }
    return n;
}

//! How many pixels of \a rect differ from \a background.
inline int ink(const QImage &image, const QRect &rect, const QColor &background)
{
    const QRect r = rect.intersected(image.rect());
    return r.width() * r.height() - count(image, rect, background);
}

/*!
    Whether \a image shows \a text with its top-left at \a origin (as the control
    computed it, rounded to the pixel), drawn in \a font and \a colour over
    \a background, pixel for pixel against the same text drawn into a reference.
*/
inline bool showsText(const QImage &image, const QPoint &origin, const QString &text, const QFont &font,
                      const QColor &colour, const QColor &background)
{
    const QFontMetrics metrics(font);
    const QSize size(metrics.horizontalAdvance(text), metrics.height());
    QImage reference(size, QImage::Format_RGB32);
    reference.fill(background);
    QFont aliased = font; // the controls draw text without antialiasing
    aliased.setStyleStrategy(QFont::NoAntialias);
    QPainter painter(&reference);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    painter.setFont(aliased);
    painter.setPen(colour);
    painter.drawText(QPoint(0, metrics.ascent()), text);
    painter.end();
    return image.copy(QRect(origin, size)) == reference;
}

} // namespace pixels

#endif
