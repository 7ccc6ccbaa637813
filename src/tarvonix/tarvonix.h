// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TARVONIX_H
#define TARVONIX_TARVONIX_H

// Everything a host needs: the map object model, the colour keys, the
// contracts and the controls.

#include <tarvonix/core/error.h>
#include <tarvonix/core/int16.h>
#include <tarvonix/core/keyedcollection.h>

#include <tarvonix/model/caster.h>
#include <tarvonix/model/color.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/formato.h>
#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/imagenes.h>
#include <tarvonix/model/iobjeto.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetocomun.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/referencia.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/model/ubicacion.h>

#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/controlregistry.h>
#include <tarvonix/platform/dragrunner.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/latebinding.h>
#include <tarvonix/platform/propertybag.h>
#include <tarvonix/platform/shiftstate.h>
#include <tarvonix/platform/stylecodes.h>
#include <tarvonix/platform/surface.h>

#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>

#include <tarvonix/views/iframex.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/views/iobjetox.h>
#include <tarvonix/views/vistax.h>

#include <tarvonix/containers/contenedorx.h>

#include <tarvonix/leg/geometriaceldas.h>
#include <tarvonix/leg/piernax.h>

#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/legend/referenciax.h>

#include <tarvonix/map/framerefx.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/map/mapax.h>

#include <tarvonix/output/salida.h>

#endif
