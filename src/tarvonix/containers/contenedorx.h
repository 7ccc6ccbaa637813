// SPDX-License-Identifier: MIT
#ifndef TARVONIX_CONTENEDORX_H
#define TARVONIX_CONTENEDORX_H

#include <tarvonix/platform/stylecodes.h>
#include <tarvonix/tarvonix_export.h>
#include <tarvonix/views/vistax.h>

#include <memory>

namespace tarvonix {

/*!
    The free-layout container: shows the children of one map object that may
    contain others, each painted as a shape at its own position and size
    times the scale (escala), and lets the user select, rubber-band, move,
    align and distribute them.

    A child at object position (X, Y) with size (A, H) occupies the drawing
    rectangle (X * escala + 2, Y * escala + 2, A * escala, H * escala); the
    2 is a fixed margin. Drawing units are the widget's pixels.

    Leaves are boxes (forma 1), circles (forma 2) or colour squares with
    their tip to the right (forma 3); child containers are grey frames with
    their tip at the top left; pictures are stretched into their box. A
    selected child is hatched, the active one has a dotted outline. Only
    children that reach into the visible rectangle given with setViewPort()
    are painted.

    The container lives in a frame, its parent widget (see VistaX). Clicks,
    moves and foreign drops go to the root given with setRoot(). A
    Shift-drag moves the selection with outline boxes and commits the move
    at the drop; a plain drag carries the frame's name as text to another
    place of the map. From the keyboard, the arrow keys go to the nearest
    child in their direction and Ctrl+arrows move the selection by one
    object unit, unless moves are locked.

    Every operation and event handler reports its own failures as
    "ContenedorX.<operation>->" followed by the description, and ends
    normally.

    Created by name as "Tarvonix.ContenedorX".
*/
class TARVONIX_EXPORT ContenedorX : public VistaX
{
    Q_OBJECT
    //! BorderNone (0) or BorderSingle (1), a single line around the control.
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE setBorderStyle)

public:
    explicit ContenedorX(QWidget *parent = nullptr);
    ~ContenedorX() override;

    /*!
        Prints \a texto inside the rectangle (\a x, \a y, \a ancho, \a alto)
        with a margin of 2. \a posicion AND 3 aligns horizontally (0 centre,
        1 right, 2 left), \a posicion / 4 vertically (0 middle, 1 top,
        2 bottom). A text that does not fit on one line is printed one
        character per line, or not at all when that column does not fit
        either. Draws only while the control paints.
    */
    Q_INVOKABLE void printX(const QString &texto, float x, float y, float ancho, float alto, qint16 posicion);

    qint16 BorderStyle() const;
    void setBorderStyle(qint16 style);

    //! The child under the point (\a x, \a y) in drawing units; the bound object when there is none.
    ObjetoPtr sobreQuien(float x, float y);

    // IContenedorX
    void setObjeto(const ObjetoPtr &objeto) override;
    ObjetoPtr getObjeto() override;
    void refrescar() override;
    void setEscala(float escala) override;
    void setBloqueo(bool bloqueo) override;
    void alinearHorizontal(const ObjetoPtr &referencia) override;
    void alinearVertical(const ObjetoPtr &referencia) override;
    void igualarDimension(const ObjetoPtr &referencia) override;
    void distribuirHorizontal() override;
    void distribuirVertical() override;
    void seleccionarTodos() override;
    void seleccionar(const QString &codigo) override;

    // VistaX
    ObjetoPtr localizar(const QString &codigo) override;
    QRect areaDe(const ObjetoPtr &objeto) override;

private:
    // VistaX
    void redibujarObjeto(const ObjetoPtr &objeto) override;
    void MouseDown(int button, int shift, QPointF punto) override;
    void MouseMove(int shift, QPointF punto) override;
    void soltarBanda(const QRect &rect) override;
    void soltarClick(int button, int shift, QPointF punto) override;
    void dragOver(int shift, QPointF punto, Qt::DropAction &efecto) override;
    void dragDrop(const QString &texto, int shift, QPointF punto, Qt::DropAction &efecto) override;
    void completeDrag() override;
    void pintar(QPainter &painter, const QRect &expuesto) override;
    int elementos() override;
    ObjetoPtr elemento(int i) override;
    QRectF zonaElemento(int i) override;
    int vecino(int i, int dx, int dy) override;
    int indiceDe(const ObjetoPtr &objeto) override;
    void moverSeleccion(int dx, int dy) override;

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
