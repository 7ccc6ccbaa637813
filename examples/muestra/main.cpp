// SPDX-License-Identifier: MIT
// Builds a small winery site with the map object model and prints it: a hall
// with vessels and a batch, a leg of barrels with its generated tiers and
// positions, and the hall's colour keys.

#include <tarvonix/model/referencias.h>
#include <tarvonix/model/caster.h>
#include <tarvonix/model/color.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

#include <QTextStream>

using namespace tarvonix;

namespace {

QTextStream out(stdout);

QString hex(qint32 colour)
{
    return QStringLiteral("0x") + QString::number(quint32(colour), 16).toUpper().rightJustified(6, QLatin1Char('0'));
}

void printObject(const ObjetoPtr &o, int depth)
{
    out << QString(depth * 2, QLatin1Char(' ')) << o->getTipo() << ' ' << o->getCodigo() << "  \""
        << o->getDescripcion() << "\"  at (" << o->getX() << ", " << o->getY() << ") size " << o->getAncho()
        << " x " << o->getAlto() << "  shape " << o->getForma() << "  colour " << hex(o->getColor())
        << (Color::esColorClaro(o->getColor()) ? " (light)" : " (dark)");
    if (const auto lote = Caster::toLote(o))
        out << "  batch " << lote->getProducto() << ' ' << lote->getAnada() << " interno " << lote->getInterno();
    if (const auto deposito = Caster::toDeposito(o))
        out << "  vessel no. " << deposito->getNumero() << ' ' << deposito->getProducto();
    out << '\n';
    if (const auto hijos = o->getObjetos()) {
        for (const ObjetoPtr &hijo : *hijos)
            printObject(hijo, depth + 1);
    }
}

} // namespace

int main()
{
    // A hall that contains vessels and a batch.
    auto nave = std::make_shared<Objeto>();
    nave->setCodigo(QStringLiteral("N1"));
    nave->setTipo(QStringLiteral("N"));
    nave->setDescripcion(QStringLiteral("  Nave de crianza "));
    nave->setPuedeContener(true);

    auto referencias = std::make_shared<Referencias>();
    referencias->add(QStringLiteral("T"), QStringLiteral("Tempranillo"), 0x000080);
    referencias->add(QStringLiteral("V"), QStringLiteral("Verdejo"), 0x00FFFF);
    nave->setReferencias(referencias);

    const struct { const char *codigo; int x; int numero; qint32 color; const char *producto; } vessels[] = {
        {"D1", 10, 1, 0x000080, "Tempranillo"},
        {"D2", 80, 2, 0x00FFFF, "Verdejo"},
        {"D3", 150, 3, 0x000080, "Tempranillo"},
    };
    for (const auto &v : vessels) {
        auto deposito = std::make_shared<Deposito>();
        deposito->setCodigo(QString::fromLatin1(v.codigo));
        deposito->setDescripcion(QStringLiteral("Depósito %1").arg(v.numero));
        deposito->setNumero(v.numero);
        deposito->setProducto(QString::fromLatin1(v.producto));
        deposito->setX(qint16(v.x));
        deposito->setY(20);
        deposito->setAncho(50);
        deposito->setAlto(50);
        deposito->setForma(2);
        deposito->setColor(v.color);
        deposito->setTip(QString::fromLatin1(v.codigo));
        deposito->setPadre(nave->getCodigo());
        nave->getObjetos()->add(deposito);
    }
    auto lote = std::make_shared<Lote>();
    lote->setCodigo(QStringLiteral("L2019"));
    lote->setProducto(QStringLiteral("Tempranillo"));
    lote->setAnada(2019);
    lote->setX(-5); // kept at 0: positions are never negative
    lote->setAncho(30);
    lote->setAlto(-10); // sizes keep what they are given
    lote->setForma(3);
    lote->setPadre(nave->getCodigo());
    nave->getObjetos()->add(lote);

    // A leg of barrels: two tiers of four positions, one barrel placed.
    auto pierna = std::make_shared<Pierna>();
    pierna->setCodigo(QStringLiteral("P01"));
    pierna->setDescripcion(QStringLiteral("Pierna 1"));
    pierna->setEscalas(2);
    pierna->setEscala(1, 4);
    pierna->setEscala(2, 4);
    auto barrica = std::make_shared<Lote>();
    barrica->setCodigo(QStringLiteral("B1"));
    barrica->setAnada(2021);
    barrica->setForma(2);
    barrica->setColor(0x000080);
    pierna->setObjeto(2, 3, barrica);

    out << "Hall\n";
    printObject(nave, 1);

    out << "\nColour keys of " << nave->getCodigo() << '\n';
    for (const auto &referencia : *nave->getReferencias())
        out << "  " << referencia->getClave() << "  " << referencia->getTexto() << "  " << hex(referencia->getColor())
            << '\n';

    out << "\nLeg " << pierna->getCodigo() << ", " << pierna->getFilas() << " tiers\n";
    for (qint16 e = 1; e <= pierna->getFilas(); ++e) {
        const auto escala = pierna->getEscala(e);
        out << "  " << escala->getCodigo() << "  \"" << escala->getDescripcion() << "\"  " << escala->getLargo()
            << " positions\n";
    }
    const auto ubicacion = pierna->getUbicacion(2, 5);
    out << "  position (2, 5): " << ubicacion->getCodigo() << "  \"" << ubicacion->getDescripcion() << "\"  in "
        << ubicacion->getPadre() << '\n';
    out << "  placed: " << pierna->getObjetos()->count() << " object(s), (2, 3) holds "
        << pierna->getObjeto(2, 3)->getCodigo() << '\n';

    auto alta = std::make_shared<Pierna>();
    alta->setCodigo(QStringLiteral("P"));
    alta->setEscalas(33);
    out << "  tier 33 of leg P: " << alta->getEscala(33)->getCodigo() << " (16-bit codes wrap)\n";

    out << "\nShading 0x808080 by 0.5: " << hex(Color::sombrearColor(0x808080, 0.5)) << '\n';
    return 0;
}
