// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_NAVES_H
#define TARVONIX_TESTS_NAVES_H

#include <tarvonix/model/deposito.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/referencias.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QRect>

// Root objects for the map tests, and what they need around them.
namespace naves {

//! A room \a tipo + \a codigo holding vessels "<codigo>D1", "D2"... at \a sitios, keys T and V if \a claves.
inline auto nave(const QString &codigo, const QString &tipo = QStringLiteral("N"), bool claves = false,
                 const QList<QRect> &sitios = {{10, 10, 50, 40}, {70, 10, 50, 40}, {130, 10, 50, 40}})
{
    auto objeto = std::make_shared<tarvonix::Objeto>();
    objeto->setTipo(tipo);
    objeto->setCodigo(codigo);
    objeto->setPuedeContener(true);
    for (const QRect &sitio : sitios) {
        auto deposito = std::make_shared<tarvonix::Deposito>();
        deposito->setCodigo(codigo + QStringLiteral("D%1").arg(objeto->getObjetos()->count() + 1));
        deposito->setX(qint16(sitio.x()));
        deposito->setY(qint16(sitio.y()));
        deposito->setAncho(qint16(sitio.width()));
        deposito->setAlto(qint16(sitio.height()));
        deposito->setForma(1);
        deposito->setPadre(codigo);
        objeto->getObjetos()->add(deposito);
    }
    if (claves) {
        objeto->setReferencias(std::make_shared<tarvonix::Referencias>());
        objeto->getReferencias()->add(QStringLiteral("T"), QStringLiteral("Tempranillo"), 0x000080);
        objeto->getReferencias()->add(QStringLiteral("V"), QStringLiteral("Verdejo"), 0x00FFFF);
    }
    return objeto;
}

//! Runs the deletions a removal left for later: the removed controls are gone afterwards.
inline void flushDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

//! The pointer moves to \a pos over \a widget with the left button held down, as a drag begins.
inline void arrastrar(QWidget *widget, QPoint pos, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QMouseEvent event(QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace naves

#endif
