// SPDX-License-Identifier: MIT
#ifndef TARVONIX_VISTAX_P_H
#define TARVONIX_VISTAX_P_H

//
//  W A R N I N G
//  -------------
//
// This file is not part of the Tarvonix API. It is shared by the view base
// and the views built on it, and may change from version to version.
//

#include <tarvonix/platform/surface.h>
#include <tarvonix/views/indiceespacial.h>
#include <tarvonix/views/vistax.h>

#include <QAccessible>
#include <QPixmap>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>

namespace tarvonix {

class Dummy;
class IFrameX;
class IMapaX;
class Objetos;

/*!
    \internal
    What VistaX keeps and does for the views built on it: the selection, the
    rubber band, the press and its threshold, the start of a drag, the calls
    to the holding frame, the visible rectangle and the drawing surface.

    A view reaches it with get() and keeps the pointer for its own life, which
    the base outlives. Steps that belong to the view itself (redrawing an
    object, ending a drag) are called back through \c q.
*/
class VistaXPrivate
{
public:
    VistaXPrivate(VistaX *vista, const QString &nombreVista);

    static VistaXPrivate *get(VistaX *vista) { return vista->d.get(); }

    //! "<view>.<operacion>->", the label of a trapped operation.
    QString etiqueta(const char *operacion) const;
    //! The root given with setRoot(); fails with Error::ObjectNotSet when there is none.
    IMapaX &raiz() const;
    //! The bound object; fails with Error::ObjectNotSet when there is none.
    ObjetoPtr ligado();

    // The selection: each object's flag and the collection kept in step.
    void seleccionarObjeto(const ObjetoPtr &objeto);
    void alternar(const ObjetoPtr &objeto);
    //! Clears every selected object's flag, redraws it and empties the selection.
    void unselectAll();

    // The frame, through IFrameX or, for a host's own widget, by name.
    bool framePActive();
    //! The frame makes \a objeto active and answers the object the view takes as current.
    ObjetoPtr frameSetActive(const ObjetoPtr &objeto);
    //! The view changed its size: the frame fits itself to it.
    void frameResize();
    //! The frame's name, which a drag from this view carries.
    QString frameName();
    //! A drag over the view activates its frame first.
    void activarFrame();
    void desplazarFrame(Qt::Orientation sentido, qint16 paso);

    // Gestures.
    /*!
        Whether the press turns into a band or a drag now: true once per
        press, when the pointer has moved more than 5 units away from it.
    */
    bool tomarPulsacion(QPointF punto);
    //! Starts the band at the pointer's threshold, or follows the pointer with it.
    void seguirBanda(QPointF punto);
    //! Shows the band between two corners, at least one pixel wide and high.
    void mostrarBanda(QPointF desde, QPointF hasta);
    //! The band's box; fails with Error::ControlNotFound once it is gone.
    Dummy &cajaBanda() const;
    //! Starts a drag of \a texto, copy or move; \a cursorMover replaces the platform's move cursor.
    void arrastrar(const QString &texto, const QPixmap &cursorMover = QPixmap());

    /*!
        Sets the text position for a text of size \a texto in the room
        \a libre (the box less the view's margin): \a across 0 centre,
        1 right, 2 left; \a down 0 middle, 1 top, 2 bottom; other codes leave
        that coordinate alone. Each view derives the two codes from its
        posicion argument in its own way (the container truncates
        posicion / 4, the leg view takes its floor).
    */
    void colocarTexto(int across, int down, const QRectF &libre, QSizeF texto);

    // The keyboard and screen readers.
    int cuantos() { return q->elementos(); }
    ObjetoPtr elemento(int i) { return q->elemento(i); }
    QRectF zona(int i) { return q->zonaElemento(i); }
    int elementoDe(const ObjetoPtr &objeto) { return q->indiceDe(objeto); }
    void pulsar(int i, int shift) { q->pulsarElemento(i, shift); }
    //! Moves the focus mark to element \a i, scrolls it into view and tells screen readers.
    void ponerFoco(int i);
    //! The mark's element; the first selected one, else the first, when the mark has none yet.
    int focoActual();
    //! The pixels the focus mark covers around element \a i.
    QRect zonaMarca(int i);
    //! Whether the mark shows: the view has the focus and the keyboard is in use.
    bool marcaVisible() const;
    //! Tells screen readers about element \a objeto: selection and focus changes.
    void avisar(const ObjetoPtr &objeto, QAccessible::Event tipo);
    void avisarIndice(int i, QAccessible::Event tipo);

    VistaX *const q;
    QString nombre;
    // The rectangle last given to setViewPort().
    float viewLeft = 0;
    float viewTop = 0;
    float viewRight = 0;
    float viewBottom = 0;

    // The frame that holds the view when it fulfils IFrameX; otherwise it is called by name.
    IFrameX *frame = nullptr;
    IMapaX *root = nullptr;
    std::shared_ptr<Objetos> seleccionados;
    // Bound to the view's painter while it paints; text is measured with it at any time.
    Surface surface;

    QPointF pulsado;
    bool armado = false; // a press happened that no band or drag has used yet
    bool enBanda = false;
    QPointer<Dummy> banda;
    // The children's boxes, for a view whose children stand anywhere; the view fills it.
    IndiceEspacial indice;

    int foco = -1; // the element under the focus mark
    bool teclado = false; // the keyboard is in use: the mark shows while the view has the focus
    bool movible = false; // the view moves its objects and is not locked
};

} // namespace tarvonix

#endif
