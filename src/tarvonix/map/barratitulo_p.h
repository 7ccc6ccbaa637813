// SPDX-License-Identifier: MIT
#ifndef TARVONIX_BARRATITULO_P_H
#define TARVONIX_BARRATITULO_P_H

//
//  W A R N I N G
//  -------------
//
// This file is not part of the Tarvonix API. It is shared by the two frame
// controls and may change from version to version.
//

#include <QPoint>
#include <QPointer>
#include <QString>

class QWidget;

namespace tarvonix {

class etiquetas;

/*!
    \internal
    The title bar that both frames wear: the title "titulo" with the
    description, the minimise/restore button "mini" and the close button
    "cerrar", all three label strips; the navy/white and silver/black looks
    of an active and an inactive frame; the minimised state; and the raised
    border around the frame, drawn above everything the frame holds.

    Every frame child stands inside a border of borde pixels, so positions
    handed to colocar() and read with izquierda()/arriba() are measured from
    the inside of that border, as the frame's own layout counts them.
*/
class BarraTitulo
{
public:
    static constexpr int borde = 3;
    static constexpr int altoTitulo = 18;

    //! Makes the title and the buttons of \a frame; the buttons are \a anchoBoton wide.
    BarraTitulo(QWidget *frame, int anchoBoton);

    etiquetas *titulo() const { return m_titulo; }
    etiquetas *mini() const { return m_mini; }
    etiquetas *cerrar() const { return m_cerrar; }

    //! The active look (navy, white, bold title) or the inactive one (silver, black).
    void mostrarActivo(bool activo);
    void setTexto(const QString &texto);

    //! Places the buttons at the right end of an inside \a ancho wide and fits the title before them.
    void distribuir(int ancho);

    bool minimizado() const { return m_minimizado; }
    /*!
        Toggles the minimised state: minimising keeps the frame's height and
        leaves only the title; restoring gives the height back. Answers true
        when the frame is now minimised.
    */
    bool alternarMinimizado();

    /*!
        The title was dragged with the pointer at (\a x, \a y) in it: keeps
        that point as the grab offset from the frame's top-left corner and asks
        the frame's parent (the map) to move the frame.
    */
    void iniciarMovimiento(float x, float y);
    float dragX() const { return m_dragX; }
    float dragY() const { return m_dragY; }

    //! Keeps the border above the frame's children; call after creating one.
    void alFrente();

    // Positions inside the border.
    static void colocar(QWidget *control, int izquierda, int arriba);
    static int izquierda(const QWidget *control);
    static int arriba(const QWidget *control);

private:
    QWidget *m_frame;
    QPointer<etiquetas> m_titulo;
    QPointer<etiquetas> m_mini;
    QPointer<etiquetas> m_cerrar;
    QPointer<QWidget> m_borde;
    bool m_minimizado = false;
    int m_altoGuardado = 0;
    float m_dragX = 0;
    float m_dragY = 0;
    QPoint m_posicionAlArrastrar;
};

} // namespace tarvonix

#endif
