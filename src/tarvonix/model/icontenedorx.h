// SPDX-License-Identifier: MIT
#ifndef TARVONIX_ICONTENEDORX_H
#define TARVONIX_ICONTENEDORX_H

#include <tarvonix/model/iobjeto.h>

namespace tarvonix {

class IMapaX;
class Objetos;

/*!
    The contract of every control that shows the children of one map object
    and lets the user select, align and move them: the free-layout container
    ContenedorX, the leg view PiernaX and the frame FrameX, which passes it on
    to the control it holds.

    The creator calls setRoot(), then setObjeto(), then setEscala(); the rest
    may follow in any order. Controls reach each other's contract through the
    late-bound member "cast". The sixteen operations stand in this order.
*/
class IContenedorX
{
public:
    virtual ~IContenedorX() = default;

    //! Binds the control to the object whose children it shows.
    virtual void setObjeto(const ObjetoPtr &objeto) = 0;                 //  0
    virtual ObjetoPtr getObjeto() = 0;                                   //  1
    //! The map that receives clicked, rightClicked, droped and moved; not owned.
    virtual void setRoot(IMapaX *root) = 0;                              //  2
    //! Sets the object's active flag and redraws it; the bound object itself is left alone.
    virtual void setActivo(const ObjetoPtr &objeto, bool valor) = 0;    //  3
    //! The live selection collection: changing it changes the control's selection record.
    virtual std::shared_ptr<Objetos> getSeleccionados() = 0;             //  4
    virtual void refrescar() = 0;                                        //  5
    //! Drawing units per object unit.
    virtual void setEscala(float escala) = 0;                            //  6
    //! Forbids moving children while true.
    virtual void setBloqueo(bool bloqueo) = 0;                           //  7
    virtual void alinearHorizontal(const ObjetoPtr &referencia) = 0;     //  8
    virtual void alinearVertical(const ObjetoPtr &referencia) = 0;       //  9
    virtual void igualarDimension(const ObjetoPtr &referencia) = 0;      // 10
    virtual void distribuirHorizontal() = 0;                             // 11
    virtual void distribuirVertical() = 0;                               // 12
    virtual void seleccionarTodos() = 0;                                 // 13
    virtual void deseleccionarTodos() = 0;                               // 14
    virtual void seleccionar(const QString &codigo) = 0;                 // 15

protected:
    IContenedorX() = default;
    IContenedorX(const IContenedorX &) = default;
    IContenedorX &operator=(const IContenedorX &) = default;
};

} // namespace tarvonix

Q_DECLARE_METATYPE(tarvonix::IContenedorX *)

#endif
