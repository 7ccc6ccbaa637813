// SPDX-License-Identifier: MIT
#ifndef TARVONIX_IFRAMEX_H
#define TARVONIX_IFRAMEX_H

#include <tarvonix/model/iobjeto.h>

class QWidget;

namespace tarvonix {

/*!
    What a view (ContenedorX, PiernaX) asks of the frame that holds it: the
    frame's activation, its scroll bars and a new fit after the view changed
    its size. The frame's name, which a drag carries, is its objectName().

    FrameX fulfils it. A view whose parent does not (a host's own widget)
    calls the same members on it by name: "pActive", "setActive", "isActive",
    "activate", "Resize", "hScroll", "vScroll" and "Name".
*/
class IFrameX
{
public:
    virtual ~IFrameX() = default;

    //! Whether the frame is the active one; an inactive frame's view ignores drags and releases.
    virtual bool pActive() const = 0;
    //! Makes \a obj the frame's active object, activating the frame first if need be; answers the object the view takes as current.
    virtual ObjetoPtr setActive(const ObjetoPtr &obj) = 0;
    virtual bool isActive() const = 0;
    //! Activates the frame when it is not active.
    virtual void activate() = 0;
    //! \a micontrol changed its size: the frame fits itself and its scroll bars to it.
    virtual void Resize(QWidget *micontrol) = 0;
    //! Scrolls one step in \a value's direction (-1 or 1).
    virtual void hScroll(qint16 value) = 0;
    virtual void vScroll(qint16 value) = 0;

protected:
    IFrameX() = default;
    IFrameX(const IFrameX &) = default;
    IFrameX &operator=(const IFrameX &) = default;
};

} // namespace tarvonix

#endif
