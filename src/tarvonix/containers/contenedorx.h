#ifndef TARVONIX_CONTENEDORX_H
#define TARVONIX_CONTENEDORX_H

#include <tarvonix/views/vistax.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/tarvonix_export.h>

#include <QPointer>
#include <QWidget>

#include <memory>

class QMimeData;

namespace tarvonix {

class Dummy;

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

    The container lives in a frame, its parent widget, and calls on it by
    name: "pActive", "setActive", "isActive", "activate", "Resize",
    "hScroll", "vScroll" and "Name". Clicks, moves and foreign drops go to
    the root given with setRoot(). A Shift-drag moves the selection with
    outline boxes and commits the move at the drop; a plain drag carries the
    frame's name as text to another place of the map.

    Every operation and event handler reports its own failures as
    "ContenedorX.<operation>->" followed by the description, and ends
    normally.

    Created by name as "Tarvonix.ContenedorX".
*/
class TARVONIX_EXPORT ContenedorX : public VistaX
{
    Q_OBJECT
    //! 0 none, 1 a single line around the control.
    Q_PROPERTY(qint16 BorderStyle READ BorderStyle WRITE setBorderStyle)

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

    // IContenedorX
    void setObjeto(const ObjetoPtr &objeto) override;
    ObjetoPtr getObjeto() override;
    void setRoot(IMapaX *root) override;
    void setActivo(const ObjetoPtr &objeto, bool valor) override;
    std::shared_ptr<Objetos> getSeleccionados() override;
    void refrescar() override;
    void setEscala(float escala) override;
    void setBloqueo(bool bloqueo) override;
    void alinearHorizontal(const ObjetoPtr &referencia) override;
    void alinearVertical(const ObjetoPtr &referencia) override;
    void igualarDimension(const ObjetoPtr &referencia) override;
    void distribuirHorizontal() override;
    void distribuirVertical() override;
    void seleccionarTodos() override;
    void deseleccionarTodos() override;
    void seleccionar(const QString &codigo) override;

    //! The child under the point (\a x, \a y) in drawing units; the bound object when there is none.
    ObjetoPtr sobreQuien(float x, float y);

    /*!
        One step of a drag over the control: \a datos is what is dragged,
        \a efecto the action proposed, \a shift the 1/2/4 sum. Answers the
        action to take: none for data without text, move for a Shift-drag
        of this control's own selection, copy otherwise. Moves the outline
        boxes, grows the control under them and asks the frame to scroll
        near the visible rectangle's edges.
    */
    Qt::DropAction dragOver(const QMimeData *datos, Qt::DropAction efecto, int button, int shift,
                            QPointF pos);
    /*!
        The drop at \a pos. With Shift alone, commits the move of the
        selection started here (unless locked) and reports each object with
        moved; otherwise reports the drop with droped. Answers the action taken.
    */
    Qt::DropAction dragDrop(const QMimeData *datos, Qt::DropAction efecto, int button, int shift,
                            QPointF pos);
    //! The end of a drag started here, dropped or cancelled: removes the outline boxes.
    void completeDrag();

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    struct Ajuste;
    enum class Eje { Horizontal, Vertical };

    void pintar(const QRect &expuesto);
    void dibujarObjeto(float x, float y, float w, float h, const ObjetoPtr &o);
    void dibujarNuevo(const ObjetoPtr &o);
    void redibujarHijo(const QString &etiqueta, const ObjetoPtr &o);
    void limpiar(const ObjetoPtr &o);
    void validar(const ObjetoPtr &o);
    void validarControl(const ObjetoPtr &cambiado = nullptr);
    void ajustarTamano(int right, int bottom);
    void invalidar(const QRectF &area);

    void MouseDown(int button, int shift, float x, float y);
    void MouseMove(int button, int shift, float x, float y);
    void MouseUp(int button, int shift, float x, float y);
    void unselectAll();
    void alternar(const ObjetoPtr &o);
    void dibujarCaja(float x1, float y1, float x2, float y2);
    Dummy &banda() const;

    void startDrag(int shift, float x, float y);
    void moverConCajas();
    void dibujarOtraCaja(const ObjetoPtr &o, float x, float y);
    void moverOtraCaja(const ObjetoPtr &o, float dx, float dy);
    void borrarOtraCaja(const ObjetoPtr &o);
    void OtraCajaVisible(const ObjetoPtr &o, bool visible);

    void alinear(const QString &label, const ObjetoPtr &referencia, int que);
    void distribuir(const QString &label, Eje eje);

    IMapaX &root() const;
    QVariant llamarFrame(const QString &member, const QVariantList &arguments = {});
    bool framePActive();
    ObjetoPtr frameSetActive(const ObjetoPtr &o);

    ObjetoPtr m_objeto;
    IMapaX *m_root = nullptr;
    std::shared_ptr<Objetos> m_seleccionados;
    float m_escala = 1.0f;
    bool m_bloqueo = false;

    // Pointer and drag state.
    float m_downX = 0, m_downY = 0;
    ObjetoPtr m_actual;
    bool m_pressed = false;
    bool m_rubberBand = false;
    bool m_dragging = false;
    bool m_boxesCreated = false;
    bool m_boxesVisible = false;
    qint32 m_dragX = 0, m_dragY = 0;

    Surface m_surface;
    ChildControls m_cajas;
    QPointer<Dummy> m_box;
    qint16 m_borderStyle = 0;
    int m_invalidaciones = 0;
    std::unique_ptr<Ajuste> m_ajuste;
};

} // namespace tarvonix

#endif
