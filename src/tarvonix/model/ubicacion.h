// SPDX-License-Identifier: MIT
#ifndef TARVONIX_UBICACION_H
#define TARVONIX_UBICACION_H

#include <tarvonix/model/objetocomun.h>

namespace tarvonix {

/*!
    A storage position in a leg. getTipo() answers "U". Its geometry answers
    0 whatever is stored, it has no picture and no colour keys; it stores its
    shape, tag, tip and colour, whose default is 0 (black), not white. It
    carries a set name (conjunto), its tier (escala) and its position number
    within the tier (ubicacion).
*/
class TARVONIX_MODEL_EXPORT Ubicacion : public ObjetoComun
{
public:
    Ubicacion();
    ~Ubicacion() override;

    void setConjunto(const QString &conjunto);
    QString getConjunto() const;
    qint16 getEscala() const;
    void setEscala(qint16 escala);
    qint16 getUbicacion() const;
    void setUbicacion(qint16 ubicacion);

private:
    QString m_conjunto;
    qint16 m_escala = 0;
    qint16 m_ubicacion = 0;
};

} // namespace tarvonix

#endif
