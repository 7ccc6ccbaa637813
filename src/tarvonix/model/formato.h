// SPDX-License-Identifier: MIT
#ifndef TARVONIX_FORMATO_H
#define TARVONIX_FORMATO_H

#include <tarvonix/model/iobjeto.h>

namespace tarvonix {

class IContenedorX;

/*!
    Forwards a horizontal alignment to a container: the selected children of
    \a frame take the top edge of the example object. Nothing else happens
    here; a none container fails with Error::ObjectNotSet.
*/
class TARVONIX_MODEL_EXPORT formato
{
public:
    void alinearHorizontal(IContenedorX *frame, const ObjetoPtr &obj);
};

} // namespace tarvonix

#endif
