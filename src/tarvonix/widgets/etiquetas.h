// SPDX-License-Identifier: MIT
#ifndef TARVONIX_ETIQUETAS_H
#define TARVONIX_ETIQUETAS_H

#include <tarvonix/platform/surface.h>
#include <tarvonix/tarvonix_export.h>

#include <QWidget>

#include <memory>

class QMimeData;

namespace tarvonix {

class PropertyBag;

/*!
    A strip of equal slots in a raised three-dimensional look, each labelled
    with a running number or with one fixed text, running across (Sentido 0)
    or down (any other Sentido).

    Slot i (counting from 1 at the left or the top) starts with a separator
    line at (i - 1) * (Separacion + 1) along the strip and shows the number
    Primero + (i - 1) * Paso, or texto when Numerar is false. A label that
    does not fit its slot is left out, not clipped, and the slots go on to
    the end of the control whatever its length: size the strip to the slots
    it numbers.

    The leg view numbers its tiers and positions with two strips; the frames
    use single-slot strips (Numerar false, texto the title, Separacion the
    full width) as their title bar and buttons.

    The events carry the slot's index, not the number it shows; convert with
    Primero + (etiqueta - 1) * Paso where the number is wanted.

    Changing a property does not repaint; call update() (the host's
    "Refresh") when done. The properties round-trip through a PropertyBag
    and are Qt properties for Designer and late-bound hosts; Width, Height
    and Font are the widget's own.

    Created by name as "Tarvonix.etiquetas".
*/
class TARVONIX_EXPORT etiquetas : public QWidget
{
    Q_OBJECT
    //! 0: slots run across, left to right; any other value: down, top to bottom.
    Q_PROPERTY(int Sentido READ Sentido WRITE setSentido)
    //! The inside of a slot along the strip; slots repeat every Separacion + 1 pixels.
    Q_PROPERTY(double Separacion READ Separacion WRITE setSeparacion)
    //! True: each slot shows its number; false: each slot shows texto.
    Q_PROPERTY(bool Numerar READ Numerar WRITE setNumerar)
    //! The step between the numbers of neighbouring slots; may be negative.
    Q_PROPERTY(int Paso READ Paso WRITE setPaso)
    //! The number of the first slot.
    Q_PROPERTY(int Primero READ Primero WRITE setPrimero)
    //! The background, 0x00BBGGRR; the separators are drawn in a shade of it.
    Q_PROPERTY(qint32 BackColor READ BackColor WRITE setBackColor)
    //! The colour of the labels, 0x00BBGGRR.
    Q_PROPERTY(qint32 ForeColor READ ForeColor WRITE setForeColor)
    //! The text of every slot when Numerar is false.
    Q_PROPERTY(QString texto READ texto WRITE setTexto)
    //! When true, a slot is drawn sunken while a button is held down on it.
    Q_PROPERTY(bool Efecto READ Efecto WRITE setEfecto)
    //! 0: drops are refused; any other value: drops are accepted and reported with OLEDragDrop.
    Q_PROPERTY(int OLEDropMode READ OLEDropMode WRITE setOLEDropMode)

public:
    //! Values of Sentido: across names the one direction; any value but 0 runs down.
    enum SentidoCode : qint16 {
        SentidoAcross = 0,
        SentidoDown = 1,
    };
    //! Values of OLEDropMode: any value but 0 accepts drops.
    enum OLEDropModeCode : qint16 {
        OLEDropNone = 0,
        OLEDropManual = 1,
    };

    explicit etiquetas(QWidget *parent = nullptr);
    ~etiquetas() override;

    qint16 Sentido() const;
    void setSentido(qint16 sentido);
    float Separacion() const;
    void setSeparacion(float separacion);
    bool Numerar() const;
    void setNumerar(bool numerar);
    qint16 Paso() const;
    void setPaso(qint16 paso);
    qint16 Primero() const;
    void setPrimero(qint16 primero);
    qint32 BackColor() const;
    void setBackColor(qint32 colour);
    qint32 ForeColor() const;
    void setForeColor(qint32 colour);
    QString texto() const;
    void setTexto(const QString &texto);
    bool Efecto() const;
    void setEfecto(bool efecto);
    qint16 OLEDropMode() const;
    void setOLEDropMode(qint16 mode);

    //! The slot under \a coordenada along the strip (x across, y down), counting from 1.
    int etiquetaEn(double coordenada) const;
    //! The slot drawn sunken, or 0.
    int presionada() const;

    //! Reads every property from \a bag, each with its default; the size from "_extentx" and "_extenty".
    void readProperties(const PropertyBag &bag);
    //! Writes every property into \a bag; values equal to their defaults are not stored.
    void writeProperties(PropertyBag &bag) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    //! The left button went down on slot \a etiqueta.
    void Click(int etiqueta);
    //! The right button went down on slot \a etiqueta.
    void RightClick(int etiqueta);
    /*!
        The pointer moved with the left button down more than 5 pixels from
        where it was pressed, now at (\a x, \a y) over slot \a etiqueta.
        Raised again on every further such move.
    */
    void OLEStartDrag(float x, float y, int etiqueta);
    /*!
        \a Data was dropped on slot \a etiqueta while OLEDropMode is not 0.
        \a Effect comes in as the action the drag proposes (1 copy, 2 move)
        and may be changed by the receiver: 0 refuses the drop.
    */
    void OLEDragDrop(const QMimeData *Data, qint32 *Effect, int Button, int Shift, float x, float y,
                     int etiqueta);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
