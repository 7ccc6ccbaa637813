// SPDX-License-Identifier: MIT
//
// A host of the installed library: a hall holding one vessel, on a map, rendered to an image.
// It fails when the vessel's colour is nowhere in it: a library that links but draws nothing fails.

#include <tarvonix/tarvonix.h>

#include <QApplication>
#include <QImage>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    using namespace tarvonix;

    auto nave = std::make_shared<Objeto>();
    nave->setTipo(QStringLiteral("N")), nave->setCodigo(QStringLiteral("N1"));
    nave->setPuedeContener(true);

    auto deposito = std::make_shared<Deposito>();
    deposito->setCodigo(QStringLiteral("D1"));
    deposito->setX(10), deposito->setY(10), deposito->setAncho(60), deposito->setAlto(60);
    deposito->setForma(1);
    deposito->setColor(0x0000FF); // 0x00BBGGRR: pure red
    deposito->setPadre(nave->getCodigo());
    nave->getObjetos()->add(deposito);

    MapaX mapa;
    mapa.resize(320, 240), mapa.add(nave), mapa.show(nave);

    const QImage image = mapa.grab().toImage();
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            drawn += image.pixelColor(x, y) == QColor(255, 0, 0) ? 1 : 0;
    if (drawn == 0) {
        std::fprintf(stderr, "consumer: the map drew nothing of the vessel\n");
        return 1;
    }
    std::printf("consumer: the map drew the vessel (%d pixels)\n", drawn);
    return 0;
}
