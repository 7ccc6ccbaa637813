// SPDX-License-Identifier: MIT
#ifndef TARVONIX_VISTAX_H
#define TARVONIX_VISTAX_H

#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/tarvonix_export.h>

#include <QWidget>

#include <memory>

class QPainter;

namespace tarvonix {

class IMapaX;
class VistaXPrivate;

/*!
    The base of the two views a frame can hold: the free-layout container
    ContenedorX and the leg view PiernaX.

    It owns what both views do alike: the selection, the rubber band, the
    start of a drag that carries the holding frame's name as plain text,
    scrolling the frame while a drag is near the visible rectangle's edges,
    the press that turns into a band or a drag once the pointer is more than
    5 units away, and the way from Qt's pointer and drag events to the view's
    own steps. Each view keeps its own hit-testing, drawing and gesture rules.

    The keyboard works on the view's elements (the children of a container,
    the positions of a leg): the arrow keys move a focus mark, drawn as the
    style's focus rectangle while the keyboard is in use; Space selects the
    marked element alone, Ctrl+Space toggles it, Shift+arrows extend the
    selection, Ctrl+A selects all and Ctrl+arrows move the selection by one
    unit where the view moves its objects. The elements are also the view's
    accessible children, for screen readers.

    The frame that holds the view is its parent widget. A FrameX is reached
    through IFrameX; any other parent through the members "pActive",
    "setActive", "isActive", "activate", "Resize", "hScroll", "vScroll" and
    "Name" by name. Failures are reported with the view's own name
    ("ContenedorX.MouseDown->", "PiernaX.dragOver->").
*/
class TARVONIX_EXPORT VistaX : public QWidget, public IContenedorX
{
    Q_OBJECT

public:
    ~VistaX() override;

    //! The view seen through its container contract.
    Q_INVOKABLE tarvonix::IContenedorX *cast();
    //! The part of the view that its frame shows, in drawing units; a drag scrolls near its edges.
    Q_INVOKABLE void setViewPort(float left, float top, float right, float bottom);

    //! The object the view shows under \a codigo (case-insensitive), or none; changes nothing.
    virtual ObjetoPtr localizar(const QString &codigo) = 0;
    //! Where the view draws \a objeto, in its own pixels; empty when it does not draw it.
    virtual QRect areaDe(const ObjetoPtr &objeto) = 0;
    //! Makes \a objeto the only selected object and the frame's active one, as a click on it would.
    void revelar(const ObjetoPtr &objeto);

    // IContenedorX
    void setRoot(IMapaX *root) override;
    void setActivo(const ObjetoPtr &objeto, bool valor) override;
    std::shared_ptr<Objetos> getSeleccionados() override;
    void deseleccionarTodos() override;
    //! Ignored unless the view moves its objects.
    void setBloqueo(bool bloqueo) override;
    //! Ignored unless the view places its objects freely.
    void alinearHorizontal(const ObjetoPtr &referencia) override;
    void alinearVertical(const ObjetoPtr &referencia) override;
    void igualarDimension(const ObjetoPtr &referencia) override;
    void distribuirHorizontal() override;
    void distribuirVertical() override;

protected:
    /*!
        \a nombre is the view's class name, which labels its failures;
        \a nombreBanda the name of the rubber band's Dummy child.
    */
    VistaX(const QString &nombre, const QString &nombreBanda, QWidget *parent);

    /*
        The extension points: each view supplies its own hit-testing, drawing
        and gesture rules by overriding these. The base turns Qt's pointer,
        drag and paint events into these calls, each under the view's trap
        label ("<view>.MouseDown->", ...), around the steps every view shares:
        the stored press and its threshold, the band, and activating and
        scrolling the frame.
    */

    //! How the view redraws one object whose selected or active flag changed.
    virtual void redibujarObjeto(const ObjetoPtr &objeto) = 0;
    //! A press; the base has already stored the point, from which the threshold and the band count.
    virtual void MouseDown(int button, int shift, QPointF punto) = 0;
    //! A move with the left button down in the active frame.
    virtual void MouseMove(int shift, QPointF punto) = 0;
    //! The release of a band that enclosed \a rect; the band is already hidden.
    virtual void soltarBanda(const QRect &rect) = 0;
    //! A release that was no band, in the active frame.
    virtual void soltarClick(int button, int shift, QPointF punto) = 0;
    /*!
        A drag of text over the view, once the frame is active: sets \a efecto
        (the proposed action until then), which stands even when the step
        fails later on.
    */
    virtual void dragOver(int shift, QPointF punto, Qt::DropAction &efecto) = 0;
    //! A drop of \a texto; sets \a efecto as dragOver() does.
    virtual void dragDrop(const QString &texto, int shift, QPointF punto, Qt::DropAction &efecto) = 0;
    //! The end of a drag started here, dropped or cancelled; the base does nothing.
    virtual void completeDrag();
    //! Paints the exposed rectangle on the view's drawing surface, which is bound to \a painter meanwhile.
    virtual void pintar(QPainter &painter, const QRect &expuesto) = 0;

    // What the keyboard and screen readers reach: the view's elements, counted from 0.

    //! How many elements the view shows.
    virtual int elementos() = 0;
    //! The object element \a i stands for (an empty leg position: its position object); nullptr outside.
    virtual ObjetoPtr elemento(int i) = 0;
    //! The element's box in the view's pixels.
    virtual QRectF zonaElemento(int i) = 0;
    //! The element next to \a i one step in the direction (\a dx, \a dy), or \a i where there is none.
    virtual int vecino(int i, int dx, int dy) = 0;
    //! The element that shows \a objeto, or -1.
    virtual int indiceDe(const ObjetoPtr &objeto) = 0;
    /*!
        The keyboard's click on element \a i: \a shift 0 selects it alone,
        CtrlMask toggles it, ShiftMask adds it; it becomes active and the root
        hears of it as of a click.
    */
    virtual void pulsarElemento(int i, int shift);
    //! Moves the selection by (\a dx, \a dy) object units; a view whose objects have fixed places does
    //! nothing.
    virtual void moverSeleccion(int dx, int dy);

    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    friend class VistaXPrivate;
    std::unique_ptr<VistaXPrivate> d;
};

} // namespace tarvonix

#endif
