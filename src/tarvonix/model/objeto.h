// SPDX-License-Identifier: MIT
#ifndef TARVONIX_OBJETO_H
#define TARVONIX_OBJETO_H

#include <tarvonix/model/objetocomun.h>

namespace tarvonix {

/*!
    The general map object: it stores every common field, its tipo is
    whatever the host gives, and it may contain children.

    While getPuedeContener() is true the object holds its children in
    getObjetos(); setPuedeContener(true) always starts a new, empty
    collection (also when the object could already contain), and
    setPuedeContener(false) drops it.
*/
class TARVONIX_MODEL_EXPORT Objeto : public ObjetoComun
{
public:
    Objeto();
    ~Objeto() override;
};

} // namespace tarvonix

#endif
