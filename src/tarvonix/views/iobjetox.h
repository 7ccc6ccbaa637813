// SPDX-License-Identifier: MIT
#ifndef TARVONIX_IOBJETOX_H
#define TARVONIX_IOBJETOX_H

#include <tarvonix/model/iobjeto.h>

class QObject;

namespace tarvonix {

class IMapaX;

/*!
    The published contract of a single visual item: a control that stands for
    one map object. No control of the library implements it yet; hosts and
    later controls may. The 24 operations stand in this order.
*/
class IObjetoX
{
public:
    virtual ~IObjetoX() = default;

    virtual float getDragX() = 0; // pointer offset in the item when a drag started
    virtual float getDragY() = 0;
    virtual void Move(qint32 left, qint32 top) = 0;
    virtual ObjetoPtr getObjeto() = 0;
    virtual void setObjeto(const ObjetoPtr &objeto) = 0;
    virtual void setRoot(IMapaX *root) = 0;
    virtual float getX() = 0;
    virtual float getY() = 0;
    virtual float getWidth() = 0;
    virtual float getHeight() = 0;
    virtual QString getName() = 0;
    virtual bool getSelected() = 0;
    virtual void setSelected(bool selected) = 0;
    virtual bool getMovable() = 0;
    virtual void setMovable(bool movable) = 0;
    virtual bool getResizable() = 0;
    virtual void setResizable(bool resizable) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual bool getVisible() = 0;
    virtual bool getContenedor() = 0; // whether the item is itself a container
    virtual void setActive(qint32 value) = 0;
    virtual bool getActive() = 0;
    virtual QObject *getParent() = 0; // the container that holds the item
    virtual void Refresh() = 0;

protected:
    IObjetoX() = default;
    IObjetoX(const IObjetoX &) = default;
    IObjetoX &operator=(const IObjetoX &) = default;
};

} // namespace tarvonix

#endif
