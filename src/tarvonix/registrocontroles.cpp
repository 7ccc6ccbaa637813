// SPDX-License-Identifier: MIT
// Every control of the library under its ProgID. This file sits above every
// folder: it is the one place that names them all, and the registry reaches it
// on first use, so linking the registry links every control with it.

#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/map/framerefx.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/platform/controlregistry.h>
#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>

namespace tarvonix {

namespace {

template<typename Control> void registrar(ControlRegistry &registry, const QString &progId)
{
    registry.add(progId, [](QWidget *parent) { return new Control(parent); });
}

} // namespace

void registerLibraryControls(ControlRegistry &registry)
{
    registrar<Dummy>(registry, QStringLiteral("Tarvonix.Dummy"));
    registrar<etiquetas>(registry, QStringLiteral("Tarvonix.etiquetas"));
    registrar<ContenedorX>(registry, QStringLiteral("Tarvonix.ContenedorX"));
    registrar<PiernaX>(registry, QStringLiteral("Tarvonix.PiernaX"));
    registrar<ReferenciaX>(registry, QStringLiteral("Tarvonix.ReferenciaX"));
    registrar<ReferenciasX>(registry, QStringLiteral("Tarvonix.ReferenciasX"));
    registrar<FrameX>(registry, QStringLiteral("Tarvonix.FrameX"));
    registrar<FrameRefX>(registry, QStringLiteral("Tarvonix.FrameRefX"));
    registrar<MapaX>(registry, QStringLiteral("Tarvonix.MapaX"));
}

} // namespace tarvonix
