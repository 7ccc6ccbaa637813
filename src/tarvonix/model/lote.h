// SPDX-License-Identifier: MIT
#ifndef TARVONIX_LOTE_H
#define TARVONIX_LOTE_H

#include <tarvonix/model/objetocomun.h>

namespace tarvonix {

/*!
    A batch of product held in a vessel or a position. getTipo() answers "L";
    it stores the common fields except children and colour keys, and carries
    a reference, a product, a vintage year (anada), an internal code and a
    state. The internal code of a new batch is the text "0", not an empty one.
*/
class TARVONIX_MODEL_EXPORT Lote : public ObjetoComun
{
public:
    Lote();
    ~Lote() override;

    QString getReferencia() const;
    void setReferencia(const QString &referencia);
    QString getProducto() const;
    void setProducto(const QString &producto);
    qint16 getAnada() const;
    void setAnada(qint16 anada);
    QString getInterno() const;
    void setInterno(const QString &interno);
    QString getEstado() const;
    void setEstado(const QString &estado);

private:
    QString m_referencia;
    QString m_producto;
    qint16 m_anada = 0;
    QString m_interno = QStringLiteral("0");
    QString m_estado;
};

} // namespace tarvonix

#endif
