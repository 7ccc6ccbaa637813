// SPDX-License-Identifier: MIT
#ifndef TARVONIX_IMAPAX_H
#define TARVONIX_IMAPAX_H

#include <tarvonix/model/iobjeto.h>

class QWidget;

namespace tarvonix {

class IContenedorX;

/*!
    The callback contract of the map: every container and frame holds the map
    that created it as its root and reports user gestures upward through these
    eight operations, in this order. A container or frame is given its root by
    setRoot() and reaches the map in no other way.

    Modifier states are the 1 (Shift) + 2 (Ctrl) + 4 (Alt) sum and are
    compared as exact values.
*/
class IMapaX
{
public:
    //! What setActive() reports as active.
    enum Activacion : qint16 {
        ObjetoActivo = 1, //!< an object inside a frame
        FrameActivo = 2,  //!< the frame itself
    };

    virtual ~IMapaX() = default;

    //! The user clicked \a obj; \a multi is true when several objects are selected.
    virtual void clicked(const ObjetoPtr &obj, bool multi) = 0;
    virtual void rightClicked(const ObjetoPtr &obj, bool multi) = 0;
    //! Objects dragged out of the frame named \a origen were dropped on \a destino.
    virtual void droped(const QString &origen, const ObjetoPtr &destino, qint32 shift) = 0;
    //! The user moved \a obj: its position or size changed.
    virtual void moved(const ObjetoPtr &obj) = 0;
    //! An object (ObjetoActivo) or a frame itself (FrameActivo) became active.
    virtual void setActive(const ObjetoPtr &obj, IContenedorX *frame, qint16 op) = 0;
    //! Asks the root to bring \a control into view.
    virtual void ensureVisible(QWidget *control) = 0;
    //! Asks the root to remove the frame that shows \a frame.
    virtual void remove(const ObjetoPtr &frame) = 0;
    //! The user zoomed the frame that shows \a frame to \a factor (wheel with Ctrl, pinch).
    virtual void escalado(const ObjetoPtr &frame, float factor) = 0;

protected:
    IMapaX() = default;
    IMapaX(const IMapaX &) = default;
    IMapaX &operator=(const IMapaX &) = default;
};

} // namespace tarvonix

Q_DECLARE_METATYPE(tarvonix::IMapaX *)

#endif
