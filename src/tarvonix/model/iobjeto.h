// SPDX-License-Identifier: MIT
#ifndef TARVONIX_IOBJETO_H
#define TARVONIX_IOBJETO_H

#include <tarvonix/tarvonixmodel_export.h>

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <memory>

namespace tarvonix {

class Imagen;
class Objetos;
class Referencias;

/*!
    The shapes a view draws a map object in (IObjeto::getForma()); the API
    keeps the number, these name its values.
*/
enum Forma : qint16 {
    FormaNinguna = 0, //!< drawn as nothing in particular; a leg does not redraw its cell
    FormaCaja = 1,    //!< a box
    FormaCirculo = 2, //!< a circle as wide as the box
    FormaCuadro = 3,  //!< a colour square at the left, the text to its right
};

/*!
    The contract of every map object.

    A map object is a plain record that the host fills and the controls read;
    the controls write back only positions, sizes and the selected and active
    flags. The 37 operations stand in a fixed order, which is part of the
    contract. Every get answers the current value of its field and every set
    replaces it, except where a kind answers a fixed value (see the kinds).

    Geometry is in 16-bit object units; colours are 0x00BBGGRR. A child refers
    to its parent only by the parent's code (getPadre), never by reference.
*/
class TARVONIX_MODEL_EXPORT IObjeto
{
public:
    virtual ~IObjeto();

    virtual void setDescripcion(const QString &descripcion) = 0; //  1
    virtual QString getDescripcion() const = 0;                   //  2
    virtual void setCodigo(const QString &codigo) = 0;            //  3
    virtual QString getCodigo() const = 0;                        //  4
    virtual QString getTipo() const = 0;                          //  5
    virtual void setTipo(const QString &tipo) = 0;                //  6
    virtual qint16 getEmpresa() const = 0;                        //  7
    virtual void setEmpresa(qint16 empresa) = 0;                  //  8
    virtual qint16 getX() const = 0;                              //  9
    virtual void setX(qint16 x) = 0;                              // 10
    virtual qint16 getY() const = 0;                              // 11
    virtual void setY(qint16 y) = 0;                              // 12
    virtual qint16 getAncho() const = 0;                          // 13
    virtual void setAncho(qint16 ancho) = 0;                      // 14
    virtual qint16 getAlto() const = 0;                           // 15
    virtual void setAlto(qint16 alto) = 0;                        // 16
    virtual qint16 getForma() const = 0;                          // 17
    virtual void setForma(qint16 forma) = 0;                      // 18
    virtual std::shared_ptr<Imagen> getImagen() const = 0;        // 19
    virtual void setImagen(std::shared_ptr<Imagen> imagen) = 0;   // 20
    virtual QVariant getTag() const = 0;                          // 21
    virtual void setTag(const QVariant &tag) = 0;                 // 22
    virtual void setColor(qint32 color) = 0;                      // 23
    virtual qint32 getColor() const = 0;                          // 24
    virtual void setTip(const QString &tip) = 0;                  // 25
    virtual QString getTip() const = 0;                           // 26
    virtual std::shared_ptr<Objetos> getObjetos() const = 0;      // 27
    virtual bool getPuedeContener() const = 0;                    // 28
    virtual void setPuedeContener(bool puedeContener) = 0;        // 29
    virtual bool getSeleccionado() const = 0;                     // 30
    virtual void setSeleccionado(bool seleccionado) = 0;          // 31
    virtual bool getActivo() const = 0;                           // 32
    virtual void setActivo(bool activo) = 0;                      // 33
    virtual void setPadre(const QString &padre) = 0;              // 34
    virtual QString getPadre() const = 0;                         // 35
    virtual void setReferencias(std::shared_ptr<Referencias> referencias) = 0; // 36
    virtual std::shared_ptr<Referencias> getReferencias() const = 0;           // 37

protected:
    IObjeto() = default;
    IObjeto(const IObjeto &) = default;
    IObjeto &operator=(const IObjeto &) = default;
};

//! A shared reference to a map object; nullptr is none.
using ObjetoPtr = std::shared_ptr<IObjeto>;

} // namespace tarvonix

// Map objects travel through late-bound calls and in tags as QVariant.
Q_DECLARE_METATYPE(tarvonix::ObjetoPtr)

#endif
