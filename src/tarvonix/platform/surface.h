// SPDX-License-Identifier: MIT
#ifndef TARVONIX_SURFACE_H
#define TARVONIX_SURFACE_H

#include <tarvonix/tarvonix_export.h>

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPalette>
#include <QString>

#include <memory>

class QPainter;

namespace tarvonix {

/*!
    The drawing surface of a control: a small state machine over a QPainter.

    A control keeps one Surface for its whole life, so the state (colours,
    fill and draw styles, the current text position, the font) carries over
    from one paint to the next, and binds a QPainter to it for the length of a
    paint with Surface::Painting. Outside a paint the drawing operations do
    nothing; the measuring ones work at any time.

    Coordinates are in the control's pixels and are rounded to the nearest
    pixel; antialiasing is off, for text too, so what is drawn can be
    checked pixel by pixel. Colours are 0x00BBGGRR, or system colours resolved with the
    palette of the painted widget.

    - line() draws from the first point up to, but not including, the second
      one, so a line from (x, y) to (x + n, y) covers n pixels.
    - box() covers both corners: its outline is drawn in the fore colour and
      draw style, its inside is filled with the fill colour in the fill style.
    - circle() is drawn the same way, around a centre with a radius.
    - print() puts the text's top-left corner at the current position, then
      moves that position one text height down, with x back to 0.

    On a device whose engine does not clip the widgets (PDF, SVG, a printer),
    a paint is clipped to the part of the widget that its parents show, up to
    the window or up to the widget whose property raizDeDibujo is true (the
    one being exported, which shows whole).
*/
class TARVONIX_EXPORT Surface
{
public:
    enum FillStyle {
        FillSolid = 0,
        FillTransparent = 1,
        FillHorizontalLine = 2,
        FillVerticalLine = 3,
        FillUpwardDiagonal = 4,
        FillDownwardDiagonal = 5,
        FillCross = 6,
        FillDiagonalCross = 7,
    };
    enum DrawStyle {
        DrawSolid = 0,
        DrawDash = 1,
        DrawDot = 2,
        DrawDashDot = 3,
        DrawDashDotDot = 4,
        DrawInvisible = 5,
        DrawInsideSolid = 6,
    };

    //! The property that marks the widget being rendered whole.
    static constexpr const char *raizDeDibujo = "tarvonixRaizDeDibujo";

    Surface();
    ~Surface();

    qint32 backColor() const;
    void setBackColor(qint32 colour);
    qint32 foreColor() const;
    void setForeColor(qint32 colour);
    qint32 fillColor() const;
    void setFillColor(qint32 colour);
    int fillStyle() const;
    void setFillStyle(int style);
    int drawStyle() const;
    void setDrawStyle(int style);
    double currentX() const;
    void setCurrentX(double x);
    double currentY() const;
    void setCurrentY(double y);
    QFont font() const;
    void setFont(const QFont &font);
    //! Resolves system colours; Painting takes the painted widget's palette.
    void setPalette(const QPalette &palette);

    //! Binds \a painter to \a surface for the lifetime of this object (one paint).
    class TARVONIX_EXPORT Painting
    {
    public:
        Painting(Surface &surface, QPainter &painter);
        ~Painting();
        Painting(const Painting &) = delete;
        Painting &operator=(const Painting &) = delete;

    private:
        Surface &m_surface;
        QPainter *m_previous;
    };

    bool isPainting() const;

    //! Fills the rectangle (x, y, width, height) with the back colour.
    void clear(double x, double y, double width, double height);
    //! A line in the fore colour and draw style; the end point itself is not drawn.
    void line(double x1, double y1, double x2, double y2);
    //! A solid line in \a colour; the end point itself is not drawn.
    void line(double x1, double y1, double x2, double y2, qint32 colour);
    void box(double x1, double y1, double x2, double y2);
    void circle(double centreX, double centreY, double radius);
    //! Paints \a picture stretched into the rectangle, with a plain copy.
    void paintPicture(const QImage &picture, double x, double y, double width, double height);
    //! Prints \a text in the fore colour at the current position and moves it one line down.
    void print(const QString &text);

    double textWidth(const QString &text) const;
    double textHeight(const QString &text) const;

    //! The pixel a coordinate falls on.
    static int pixel(double coordinate);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
