#ifndef TARVONIX_PIERNAX_H
#define TARVONIX_PIERNAX_H

#include <tarvonix/views/vistax.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/tarvonix_export.h>

#include <QWidget>

class QMimeData;

namespace tarvonix {

class Dummy;
class GeometriaCeldas;
class IMapaX;
class Objetos;
class Pierna;
class etiquetas;

/*!
    The leg view: one leg (Pierna) shown as a grid of square cells, its tiers
    stacked from the bottom up and the positions of each tier side by side.

    Each cell is drawn from the map object that the leg holds there: filled
    with its colour (a box for forma 1, a circle for forma 2), or its picture,
    with its tip text centred when it fits; hatched when selected, outlined
    with dots when active. A position that holds nothing shows a circle with
    a plus. In the classic arrangement (Pierna::getClasica()) every tier is
    shifted half a cell right against the one below and overlaps it; in the
    plain one a line is drawn in front of every getLinea()-th position.

    Two child strips number the grid: "escalas" down the left edge (the top
    slot is the highest tier) and "Ubicaciones" along the bottom. The control
    sizes itself to the leg's first tier and asks its container to adapt
    with the late-bound member "Resize".

    The user selects cells by pressing, Ctrl-clicking, Shift-clicking a
    rectangle, rubber-banding ("Caja") or picking a whole tier on the tier
    strip, drags cells out as the holding frame's name in plain text, and
    drops text on cells, empty positions, tiers or the leg. Every gesture is
    reported to the root (IMapaX): clicked, rightClicked, droped. The frame
    that holds the control takes part through the late-bound members
    "pActive", "setActive", "isActive", "activate", "hScroll" and "vScroll".

    Every operation runs under its own error trap and reports a failure with
    its label ("PiernaX.MouseDown->" ...) instead of passing it on.

    Created by name as "Tarvonix.PiernaX".
*/
class TARVONIX_EXPORT PiernaX : public VistaX
{
    Q_OBJECT
    //! The family of the drawing font.
    Q_PROPERTY(QString FontName READ FontName WRITE setFontName)
    //! The size of the drawing font in points, rounded when read.
    Q_PROPERTY(qint16 FontSize READ FontSize WRITE setFontSize)

public:
    explicit PiernaX(QWidget *parent = nullptr);
    ~PiernaX() override;


    /*!
        Prints \a texto in the box (\a margenx, \a margeny, \a ancho, \a alto)
        during a paint, or nothing when it does not fit inside the box's
        border. \a posicion and 3 aligns across (0 centre, 1 right, 2 left,
        3 as it is); \a posicion / 4 down (0 centre, 1 top, 2 bottom, other
        as it is).
    */
    Q_INVOKABLE void printX(const QString &texto, float margenx, float margeny, float ancho, float alto,
                            qint16 posicion);

    QString FontName() const;
    void setFontName(const QString &name);
    qint16 FontSize() const;
    void setFontSize(qint16 size);


    //! Drops a tier picked on the tier strip from the selection, before cells are selected.
    Q_INVOKABLE void escalaSeleccionada();

    // IContenedorX
    void setObjeto(const ObjetoPtr &objeto) override;
    ObjetoPtr getObjeto() override;
    void setRoot(IMapaX *root) override;
    void setActivo(const ObjetoPtr &objeto, bool valor) override;
    std::shared_ptr<Objetos> getSeleccionados() override;
    void refrescar() override;
    void setEscala(float escala) override;
    //! Ignored: nothing in a grid can be moved.
    void setBloqueo(bool bloqueo) override;
    //! Ignored: the grid fixes every cell's place.
    void alinearHorizontal(const ObjetoPtr &referencia) override;
    //! Ignored: the grid fixes every cell's place.
    void alinearVertical(const ObjetoPtr &referencia) override;
    //! Ignored: every cell has the same size.
    void igualarDimension(const ObjetoPtr &referencia) override;
    //! Ignored: the grid fixes every cell's place.
    void distribuirHorizontal() override;
    //! Ignored: the grid fixes every cell's place.
    void distribuirVertical() override;
    void seleccionarTodos() override;
    void deseleccionarTodos() override;
    void seleccionar(const QString &codigo) override;

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    GeometriaCeldas geometria() const;
    std::shared_ptr<Pierna> pierna() const;
    QWidget *contenedor() const;
    IMapaX &root() const;
    ObjetoPtr activarEnContenedor(const ObjetoPtr &objeto);
    void recortarControles(bool recortar);

    // Layout and drawing
    void validarControl();
    void dibujarEscalas();
    void dibujarUbicaciones();
    void dibujarTodo(double margen, const QRect &expuesto);
    void dibujarCelda(const ObjetoPtr &objeto);
    void dibujarObjeto(double x, double y, double ancho, double alto, const ObjetoPtr &objeto);
    void dibujarVacia(double x, double y, double lado);

    // Selection
    void sobreQuien(double x, double y);
    void selectRectangle(int fila1, int columna1, int fila2, int columna2);
    void unselectAll();
    void seleccionarObjeto(const ObjetoPtr &objeto);
    void alternarObjeto(const ObjetoPtr &objeto);
    void mostrarCaja(double x1, double y1, double x2, double y2);

    // Gestures
    void mouseDown(int button, int shift, double x, double y);
    void mouseMove(int button, int shift, double x, double y);
    void mouseUp(int button, int shift, double x, double y);
    void soltarBanda();
    void soltarClick(int button, int shift, double x, double y);
    void startDrag();
    void completeDrag();
    void dragOver(const QMimeData *datos, qint32 &effect, int button, int shift, double x, double y);
    void dragDrop(const QMimeData *datos, qint32 &effect, int button, int shift, double x, double y);
    using PasoArrastre = void (PiernaX::*)(const QMimeData *, qint32 &, int, int, double, double);
    void responderArrastre(QDropEvent *event, const QString &etiqueta, PasoArrastre paso);

    // The tier strip
    void escalasClick(int etiqueta, bool derecho);
    void escalasOLEStartDrag();
    void escalasOLEDragDrop(const QMimeData *datos, qint32 *effect, int button, int shift, int etiqueta);

    std::shared_ptr<Pierna> m_pierna;
    IMapaX *m_root = nullptr;
    std::shared_ptr<Objetos> m_seleccionados;
    float m_escala = 1.0f;

    ObjetoPtr m_actual;
    qint16 m_fila = 0;
    qint16 m_columna = 0;
    double m_downX = 0;
    double m_downY = 0;
    bool m_rubberBand = false;
    bool m_armed = false;

    Surface m_surface;
    etiquetas *m_ubicaciones;
    etiquetas *m_escalas;
    Dummy *m_caja;
};

} // namespace tarvonix

#endif
