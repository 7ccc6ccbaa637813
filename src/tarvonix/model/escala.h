// SPDX-License-Identifier: MIT
#ifndef TARVONIX_ESCALA_H
#define TARVONIX_ESCALA_H

#include <tarvonix/model/objetocomun.h>

namespace tarvonix {

/*!
    A tier of a leg. getTipo() answers "E". It stores only the code,
    description, company, parent and the two flags: its geometry, shape and
    colour answer 0, its picture and colour keys none, its tag and tip empty.
    It carries its tier number (escala) and its number of positions (largo).
*/
class TARVONIX_MODEL_EXPORT Escala : public ObjetoComun
{
public:
    Escala();
    ~Escala() override;

    qint16 getEscala() const;
    void setEscala(qint16 escala);
    qint16 getLargo() const;
    void setLargo(qint16 largo);

private:
    qint16 m_escala = 0;
    qint16 m_largo = 0;
};

} // namespace tarvonix

#endif
