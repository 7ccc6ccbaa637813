// SPDX-License-Identifier: MIT
#ifndef TARVONIX_OBJETOCOMUN_H
#define TARVONIX_OBJETOCOMUN_H

#include <tarvonix/model/iobjeto.h>

#include <optional>

namespace tarvonix {

/*!
    The one implementation of the state that every map object carries.

    Objeto, the kinds (Deposito, Lote, Escala, Ubicacion) and Pierna differ
    only in which of the common fields they store: a field that a kind does
    not store keeps its initial value for ever, so its getter answers a fixed
    value and its setter does nothing. A kind describes itself with a Perfil
    and inherits everything else from here.

    Rules that hold wherever a field is stored: x and y never go below 0
    (a negative value stores 0) while ancho and alto keep negative values;
    descripcion loses its leading and trailing spaces; codigo, tipo, tip and
    padre are kept as given.
*/
class TARVONIX_MODEL_EXPORT ObjetoComun : public IObjeto
{
public:
    ~ObjetoComun() override;

    void setDescripcion(const QString &descripcion) override;
    QString getDescripcion() const override;
    void setCodigo(const QString &codigo) override;
    QString getCodigo() const override;
    QString getTipo() const override;
    void setTipo(const QString &tipo) override;
    qint16 getEmpresa() const override;
    void setEmpresa(qint16 empresa) override;
    qint16 getX() const override;
    void setX(qint16 x) override;
    qint16 getY() const override;
    void setY(qint16 y) override;
    qint16 getAncho() const override;
    void setAncho(qint16 ancho) override;
    qint16 getAlto() const override;
    void setAlto(qint16 alto) override;

    /*!
        Counts the changes of position or size of every object, whoever made
        them: a view that keeps the children's boxes in an index compares it
        with the count it indexed at, so that a host moving a child without a
        word is still seen where it now is.
    */
    static quint64 cambiosDeGeometria();
    qint16 getForma() const override;
    void setForma(qint16 forma) override;
    std::shared_ptr<Imagen> getImagen() const override;
    void setImagen(std::shared_ptr<Imagen> imagen) override;
    QVariant getTag() const override;
    void setTag(const QVariant &tag) override;
    void setColor(qint32 color) override;
    qint32 getColor() const override;
    void setTip(const QString &tip) override;
    QString getTip() const override;
    std::shared_ptr<Objetos> getObjetos() const override;
    bool getPuedeContener() const override;
    void setPuedeContener(bool puedeContener) override;
    bool getSeleccionado() const override;
    void setSeleccionado(bool seleccionado) override;
    bool getActivo() const override;
    void setActivo(bool activo) override;
    void setPadre(const QString &padre) override;
    QString getPadre() const override;
    void setReferencias(std::shared_ptr<Referencias> referencias) override;
    std::shared_ptr<Referencias> getReferencias() const override;

protected:
    //! The common fields that a kind may leave out (answer fixed, ignore stores).
    enum Campo : unsigned {
        ConGeometria = 0x01,   //!< x, y, ancho, alto
        ConForma = 0x02,
        ConImagen = 0x04,
        ConTag = 0x08,
        ConColor = 0x10,
        ConTip = 0x20,
        ConReferencias = 0x40,
        ConContener = 0x80,    //!< puedeContener and objetos
    };
    using Campos = unsigned;

    //! How a kind differs from the plain Objeto.
    struct Perfil
    {
        std::optional<QString> tipoFijo; //!< the fixed kind letter; none: tipo is stored
        Campos guardados = 0;            //!< the fields that are stored, Campo values or'ed
        qint32 colorInicial = 0xFFFFFF;  //!< color before the first store (and for ever if not stored)
    };

    explicit ObjetoComun(const Perfil &perfil);
    ObjetoComun(const ObjetoComun &) = delete;
    ObjetoComun &operator=(const ObjetoComun &) = delete;

private:
    // The fields that most objects leave unset live apart, allocated on the
    // first store of a value, so that a plain object stays small.
    struct Extras
    {
        QString tip;
        QString padre;
        QVariant tag;
        std::shared_ptr<Imagen> imagen;
        std::shared_ptr<Referencias> referencias;
        std::shared_ptr<Objetos> objetos;
    };

    bool guarda(Campo campo) const { return (m_guardados & campo) != 0; }
    Extras &extras();

    QString m_codigo;
    QString m_descripcion;
    QString m_tipo; // the fixed letter of a kind that has one
    std::unique_ptr<Extras> m_extras;
    qint32 m_color;
    qint16 m_empresa = 0;
    qint16 m_x = 0;
    qint16 m_y = 0;
    qint16 m_ancho = 0;
    qint16 m_alto = 0;
    qint16 m_forma = 0;
    quint8 m_guardados;
    bool m_tipoFijo : 1;
    bool m_puedeContener : 1 = false;
    bool m_seleccionado : 1 = false;
    bool m_activo : 1 = false;
};

} // namespace tarvonix

#endif
