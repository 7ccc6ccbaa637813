// SPDX-License-Identifier: MIT
#include "sitio.h"

#include <tarvonix/model/referencias.h>
#include <tarvonix/model/color.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

#include <QDir>
#include <QHash>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QSet>

using namespace tarvonix;

namespace {

struct Producto
{
    QString texto;
    qint32 color = 0xFFFFFF;
};

qint32 colorDe(const QJsonValue &valor)
{
    return qint32(valor.toString().toUInt(nullptr, 16));
}

// Two small drawings for the machines of the yard.
QImage dibujo(const QString &nombre)
{
    QImage imagen(64, 64, QImage::Format_RGB32);
    imagen.fill(QColor(0xE8, 0xEE, 0xF2));
    QPainter p(&imagen);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(0x30, 0x3A, 0x48), 3));
    if (nombre == QLatin1String("tolva")) {
        p.setBrush(QColor(0x8F, 0xA8, 0xB8));
        p.drawPolygon(QPolygon({QPoint(6, 10), QPoint(58, 10), QPoint(38, 40), QPoint(26, 40)}));
        p.drawRect(26, 40, 12, 16);
    } else {
        p.setBrush(QColor(0xB8, 0x9F, 0x8F));
        p.drawRoundedRect(8, 16, 48, 32, 14, 14);
        p.drawLine(8, 32, 56, 32);
        p.drawLine(32, 6, 32, 16);
    }
    return imagen;
}

} // namespace

std::vector<ObjetoPtr> Sitio::raices() const
{
    std::vector<ObjetoPtr> todas{nave, patio};
    todas.insert(todas.end(), piernas.begin(), piernas.end());
    return todas;
}

Sitio Sitio::desdeJson(const QByteArray &json, const QString &carpetaImagenes)
{
    Sitio sitio;
    QJsonParseError problema;
    const QJsonObject raiz = QJsonDocument::fromJson(json, &problema).object();
    if (problema.error != QJsonParseError::NoError) {
        sitio.error = problema.errorString();
        return sitio;
    }

    // Products: the colour keys of the hall and the colours of what holds them.
    QHash<QString, Producto> productos;
    auto claves = std::make_shared<Referencias>();
    for (const QJsonValue &valor : raiz.value(QLatin1String("productos")).toArray()) {
        const QJsonObject p = valor.toObject();
        const QString clave = p.value(QLatin1String("clave")).toString();
        productos.insert(clave, Producto{p.value(QLatin1String("texto")).toString(), colorDe(p.value(QLatin1String("color")))});
        claves->add(clave, productos.value(clave).texto, productos.value(clave).color);
    }

    sitio.imagenes = std::make_shared<Imagenes>();
    qint16 numero = 0;
    for (const QString &nombre : {QStringLiteral("tolva"), QStringLiteral("prensa")}) {
        const QString archivo = QDir(carpetaImagenes).filePath(nombre + QStringLiteral(".png"));
        dibujo(nombre).save(archivo);
        sitio.imagenes->add(++numero, archivo);
    }

    auto contenedor = [](const QJsonObject &datos) {
        auto objeto = std::make_shared<Objeto>();
        objeto->setCodigo(datos.value(QLatin1String("codigo")).toString());
        objeto->setTipo(datos.value(QLatin1String("tipo")).toString());
        objeto->setDescripcion(datos.value(QLatin1String("descripcion")).toString());
        objeto->setColor(colorDe(datos.value(QLatin1String("color"))));
        objeto->setTip(objeto->getDescripcion());
        objeto->setPuedeContener(true);
        return objeto;
    };

    // The hall: rows of vessels, and batches waiting on the floor.
    const QJsonObject datosNave = raiz.value(QLatin1String("nave")).toObject();
    auto nave = contenedor(datosNave);
    nave->setReferencias(claves);
    int numeroDeposito = 0;
    for (const QJsonValue &valorFila : datosNave.value(QLatin1String("filas")).toArray()) {
        const QJsonObject fila = valorFila.toObject();
        int x = fila.value(QLatin1String("x")).toInt();
        for (const QJsonValue &valor : fila.value(QLatin1String("depositos")).toArray()) {
            const QJsonArray par = valor.toArray();
            const Producto producto = productos.value(par.at(1).toString());
            auto deposito = std::make_shared<Deposito>();
            deposito->setCodigo(par.at(0).toString());
            deposito->setNumero(++numeroDeposito);
            deposito->setProducto(producto.texto);
            deposito->setDescripcion(QStringLiteral("Depósito %1 · %2").arg(numeroDeposito).arg(producto.texto));
            deposito->setX(qint16(x));
            deposito->setY(qint16(fila.value(QLatin1String("y")).toInt()));
            deposito->setAncho(qint16(fila.value(QLatin1String("ancho")).toInt()));
            deposito->setAlto(qint16(fila.value(QLatin1String("alto")).toInt()));
            deposito->setForma(qint16(fila.value(QLatin1String("forma")).toInt()));
            deposito->setColor(producto.color);
            deposito->setTip(deposito->getCodigo());
            deposito->setPadre(nave->getCodigo());
            nave->getObjetos()->add(deposito);
            x += fila.value(QLatin1String("paso")).toInt();
        }
    }
    for (const QJsonValue &valor : datosNave.value(QLatin1String("lotes")).toArray()) {
        const QJsonObject datos = valor.toObject();
        const Producto producto = productos.value(datos.value(QLatin1String("producto")).toString());
        auto lote = std::make_shared<Lote>();
        lote->setCodigo(datos.value(QLatin1String("codigo")).toString());
        lote->setProducto(producto.texto);
        lote->setAnada(qint16(datos.value(QLatin1String("anada")).toInt()));
        lote->setDescripcion(QStringLiteral("Lote %1 %2").arg(producto.texto).arg(lote->getAnada()));
        lote->setX(qint16(datos.value(QLatin1String("x")).toInt()));
        lote->setY(qint16(datos.value(QLatin1String("y")).toInt()));
        lote->setAncho(qint16(datos.value(QLatin1String("ancho")).toInt()));
        lote->setAlto(qint16(datos.value(QLatin1String("alto")).toInt()));
        lote->setForma(3);
        lote->setColor(producto.color);
        lote->setTip(lote->getCodigo());
        lote->setPadre(nave->getCodigo());
        nave->getObjetos()->add(lote);
    }
    sitio.nave = nave;

    // The yard, with pictures for its machines.
    const QJsonObject datosPatio = raiz.value(QLatin1String("patio")).toObject();
    auto patio = contenedor(datosPatio);
    for (const QJsonValue &valor : datosPatio.value(QLatin1String("objetos")).toArray()) {
        const QJsonObject datos = valor.toObject();
        auto objeto = std::make_shared<Objeto>();
        objeto->setCodigo(datos.value(QLatin1String("codigo")).toString());
        objeto->setTipo(QStringLiteral("M"));
        objeto->setDescripcion(datos.value(QLatin1String("descripcion")).toString());
        objeto->setX(qint16(datos.value(QLatin1String("x")).toInt()));
        objeto->setY(qint16(datos.value(QLatin1String("y")).toInt()));
        objeto->setAncho(qint16(datos.value(QLatin1String("ancho")).toInt()));
        objeto->setAlto(qint16(datos.value(QLatin1String("alto")).toInt()));
        objeto->setForma(qint16(datos.value(QLatin1String("forma")).toInt()));
        objeto->setColor(colorDe(datos.value(QLatin1String("color"))));
        objeto->setTip(objeto->getCodigo());
        const QString imagen = datos.value(QLatin1String("imagen")).toString();
        if (imagen == QLatin1String("tolva"))
            objeto->setImagen(sitio.imagenes->Item(1));
        else if (imagen == QLatin1String("prensa"))
            objeto->setImagen(sitio.imagenes->Item(2));
        objeto->setPadre(patio->getCodigo());
        patio->getObjetos()->add(objeto);
    }
    sitio.patio = patio;

    // The legs: barrels of several vintages, a few positions left empty.
    for (const QJsonValue &valorPierna : raiz.value(QLatin1String("piernas")).toArray()) {
        const QJsonObject datos = valorPierna.toObject();
        auto pierna = std::make_shared<Pierna>();
        pierna->setCodigo(datos.value(QLatin1String("codigo")).toString());
        pierna->setDescripcion(datos.value(QLatin1String("descripcion")).toString());
        pierna->setClasica(datos.value(QLatin1String("clasica")).toBool());
        pierna->setLinea(qint16(datos.value(QLatin1String("linea")).toInt()));
        const QJsonArray largos = datos.value(QLatin1String("escalas")).toArray();
        const QJsonArray anadas = datos.value(QLatin1String("anadas")).toArray();
        const Producto producto = productos.value(datos.value(QLatin1String("producto")).toString());
        QSet<QPair<int, int>> vacias;
        for (const QJsonValue &vacia : datos.value(QLatin1String("vacias")).toArray())
            vacias.insert({vacia.toArray().at(0).toInt(), vacia.toArray().at(1).toInt()});
        pierna->setEscalas(qint16(largos.size()));
        for (qint16 e = 1; e <= largos.size(); ++e) {
            pierna->setEscala(e, qint16(largos.at(e - 1).toInt()));
            const int anada = anadas.at(e - 1).toInt();
            for (qint16 p = 1; p <= pierna->getLargo(e); ++p) {
                if (vacias.contains({e, p}))
                    continue;
                auto barrica = std::make_shared<Lote>();
                barrica->setCodigo(QStringLiteral("%1-%2-%3").arg(pierna->getCodigo()).arg(e).arg(p, 2, 10, QLatin1Char('0')));
                barrica->setProducto(producto.texto);
                barrica->setAnada(qint16(anada));
                barrica->setDescripcion(QStringLiteral("Barrica %1 %2").arg(producto.texto).arg(anada));
                barrica->setForma(2);
                // Older vintages are darker.
                barrica->setColor(Color::sombrearColor(producto.color, 0.75 + 0.08 * (anada % 10) / 2.0));
                barrica->setTip(QString::number(anada % 100));
                barrica->setPadre(pierna->getUbicacion(e, p)->getCodigo());
                pierna->setObjeto(e, p, barrica);
            }
        }
        sitio.piernas.push_back(pierna);
    }
    return sitio;
}
