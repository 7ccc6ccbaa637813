// SPDX-License-Identifier: MIT
#ifndef TARVONIX_REFERENCIAX_H
#define TARVONIX_REFERENCIAX_H

#include <tarvonix/model/referencia.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/tarvonix_export.h>

#include <QWidget>

#include <memory>

namespace tarvonix {

/*!
    One row of the legend: a small box in a colour key's colour followed by
    the key's text.

    The legend list (ReferenciasX) creates one row per key, by the name
    "Tarvonix.ReferenciaX", and gives it its font, its place and a height of
    24 pixels before calling setReferencia(). The row then makes itself as
    wide as its text plus 31 pixels: the colour box spans x 7 to 16 and the
    text starts at x 24. Both are centred vertically in the row.

    A click or a double click with the left button is passed to the control
    that holds the row, by calling its "Click" or "DblClick" member with the
    row's Referencia; if that control cannot take it, nothing happens.

    Font, Name, Visible, Width, Height, Move and Refresh are the widget's
    own (font(), objectName(), ...). The row starts white with the system's
    button-text colour for text and outlines.
*/
class TARVONIX_EXPORT ReferenciaX : public QWidget
{
    Q_OBJECT
    //! Background colour, 0x00BBGGRR or a system colour.
    Q_PROPERTY(qint32 BackColor READ BackColor WRITE setBackColor)
    //! Colour of the text and of the colour box's outline.
    Q_PROPERTY(qint32 ForeColor READ ForeColor WRITE setForeColor)

public:
    explicit ReferenciaX(QWidget *parent = nullptr);
    ~ReferenciaX() override;

    qint32 BackColor() const;
    void setBackColor(qint32 colour);
    qint32 ForeColor() const;
    void setForeColor(qint32 colour);

    /*!
        Shows \a referencia: the row takes its text as tooltip, becomes as wide
        as the text in the row's font plus 31 and repaints. A none key fails
        with Error::ObjectNotSet after it has been kept, so the row then shows
        nothing.
    */
    Q_INVOKABLE void setReferencia(const std::shared_ptr<tarvonix::Referencia> &referencia);
    //! The key the row shows, or nullptr.
    std::shared_ptr<Referencia> referencia() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
