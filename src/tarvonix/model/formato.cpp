// SPDX-License-Identifier: MIT
#include <tarvonix/model/formato.h>

#include <tarvonix/core/error.h>
#include <tarvonix/model/icontenedorx.h>

namespace tarvonix {

void formato::alinearHorizontal(IContenedorX *frame, const ObjetoPtr &obj)
{
    if (!frame)
        throw Error(Error::ObjectNotSet);
    frame->alinearHorizontal(obj);
}

} // namespace tarvonix
