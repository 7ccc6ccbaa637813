// SPDX-License-Identifier: MIT
#ifndef TARVONIX_PIERNAX_H
#define TARVONIX_PIERNAX_H

#include <tarvonix/tarvonix_export.h>
#include <tarvonix/views/vistax.h>

#include <memory>

namespace tarvonix {

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
    with "Resize".

    The user selects cells by pressing, Ctrl-clicking, Shift-clicking a
    rectangle, rubber-banding ("Caja") or picking a whole tier on the tier
    strip, drags cells out as the holding frame's name in plain text, and
    drops text on cells, empty positions, tiers or the leg. From the
    keyboard, the arrow keys go to the neighbouring position, Up and Down to
    the tier above and below. Every gesture is
    reported to the root (IMapaX): clicked, rightClicked, droped. The frame
    that holds the control takes part as told in VistaX.

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
    Q_PROPERTY(int FontSize READ FontSize WRITE setFontSize)

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
    void refrescar() override;
    void setEscala(float escala) override;
    // The lock, alignment and distribution are VistaX's: the grid fixes every cell's place.
    void seleccionarTodos() override;
    void seleccionar(const QString &codigo) override;

    // VistaX
    ObjetoPtr localizar(const QString &codigo) override;
    QRect areaDe(const ObjetoPtr &objeto) override;

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;

private:
    // VistaX
    void redibujarObjeto(const ObjetoPtr &objeto) override;
    void MouseDown(int button, int shift, QPointF punto) override;
    void MouseMove(int shift, QPointF punto) override;
    void soltarBanda(const QRect &rect) override;
    void soltarClick(int button, int shift, QPointF punto) override;
    void dragOver(int shift, QPointF punto, Qt::DropAction &efecto) override;
    void dragDrop(const QString &texto, int shift, QPointF punto, Qt::DropAction &efecto) override;
    void pintar(QPainter &painter, const QRect &expuesto) override;
    int elementos() override;
    ObjetoPtr elemento(int i) override;
    QRectF zonaElemento(int i) override;
    int vecino(int i, int dx, int dy) override;
    int indiceDe(const ObjetoPtr &objeto) override;
    void pulsarElemento(int i, int shift) override;

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
