// SPDX-License-Identifier: MIT
#ifndef TARVONIX_DEPOSITO_H
#define TARVONIX_DEPOSITO_H

#include <tarvonix/model/objetocomun.h>

namespace tarvonix {

/*!
    A vessel. getTipo() answers "D"; it stores the common fields except that
    it never contains children, and it carries a number, a product and the
    flag that says whether it holds several batches.
*/
class TARVONIX_MODEL_EXPORT Deposito : public ObjetoComun
{
public:
    Deposito();
    ~Deposito() override;

    qint32 getNumero() const;
    void setNumero(qint32 numero);
    QString getProducto() const;
    void setProducto(const QString &producto);
    bool getMultiLote() const;
    void setMultiLote(bool multiLote);

private:
    qint32 m_numero = 0;
    QString m_producto;
    bool m_multiLote = false;
};

} // namespace tarvonix

#endif
