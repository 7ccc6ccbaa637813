// SPDX-License-Identifier: MIT
#include "controlcollection.h"

#include "controlplugin.h"

#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/leg/piernax.h>
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/widgets/dummy.h>
#include <tarvonix/widgets/etiquetas.h>

namespace tarvonix::designer {

namespace {

template<class Control> QWidget *create(QWidget *parent)
{
    return new Control(parent);
}

} // namespace

ControlCollection::ControlCollection(QObject *parent)
    : QObject(parent)
{
    const ControlPlugin::Description controls[] = {
        { QStringLiteral("tarvonix::MapaX"), QStringLiteral("tarvonix/map/mapax.h"), QStringLiteral("mapa"),
          QStringLiteral(":/tarvonix/designer/mapax.png"),
          tr("The map of a site: each root object in its own movable frame"),
          tr("The host adds its root objects with add() and shows them with show(); each gets a frame "
             "with a free-layout container, or a grid of tiers and positions for a leg of barrels. "
             "What the user does comes back as Click, RightClick, moved, Drop and Enter."),
          QSize(480, 320), &create<MapaX> },
        { QStringLiteral("tarvonix::ContenedorX"), QStringLiteral("tarvonix/containers/contenedorx.h"),
          QStringLiteral("contenedor"), QStringLiteral(":/tarvonix/designer/contenedorx.png"),
          tr("The children of one map object, laid out freely"),
          tr("Shows the children of the object given with setObjeto() as shapes at their own positions; "
             "the user selects, rubber-bands and moves them."),
          QSize(240, 180), &create<ContenedorX> },
        { QStringLiteral("tarvonix::PiernaX"), QStringLiteral("tarvonix/leg/piernax.h"),
          QStringLiteral("pierna"), QStringLiteral(":/tarvonix/designer/piernax.png"),
          tr("A leg of stacked barrels: tiers and positions as a grid of cells"),
          tr("Shows the leg given with setObjeto() as a grid of cells, its tiers stacked from the bottom up, "
             "numbered along the left and bottom edges."),
          QSize(240, 180), &create<PiernaX> },
        { QStringLiteral("tarvonix::etiquetas"), QStringLiteral("tarvonix/widgets/etiquetas.h"),
          QStringLiteral("etiquetas"), QStringLiteral(":/tarvonix/designer/etiquetas.png"),
          tr("A strip of numbered slots"),
          tr("Equal slots in a raised look, running across or down, each showing a running number "
             "(Primero, Paso) or one fixed text."),
          QSize(200, 20), &create<etiquetas> },
        { QStringLiteral("tarvonix::ReferenciasX"), QStringLiteral("tarvonix/legend/referenciasx.h"),
          QStringLiteral("referencias"), QStringLiteral(":/tarvonix/designer/referenciasx.png"),
          tr("A legend: one row per colour key"),
          tr("Shows the colour keys given with setReferencias(), each as a box in its colour and its text."),
          QSize(160, 120), &create<ReferenciasX> },
        { QStringLiteral("tarvonix::ReferenciaX"), QStringLiteral("tarvonix/legend/referenciax.h"),
          QStringLiteral("referencia"), QStringLiteral(":/tarvonix/designer/referenciax.png"),
          tr("One colour key: a box in its colour and its text"),
          tr("Shows the colour key given with setReferencia(); a click is passed to the control that "
             "holds the row."),
          QSize(160, 24), &create<ReferenciaX> },
        { QStringLiteral("tarvonix::Dummy"), QStringLiteral("tarvonix/widgets/dummy.h"),
          QStringLiteral("dummy"), QStringLiteral(":/tarvonix/designer/dummy.png"),
          tr("A plain box: an outline or a filled rectangle"),
          tr("A box with no behaviour of its own that lets pointer events through to what lies beneath it."),
          QSize(80, 60), &create<Dummy> },
    };
    for (const ControlPlugin::Description &description : controls)
        m_controls.append(new ControlPlugin(description, this));
}

QList<QDesignerCustomWidgetInterface *> ControlCollection::customWidgets() const
{
    return m_controls;
}

} // namespace tarvonix::designer
