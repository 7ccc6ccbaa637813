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
#include <QFile>
#include <QHash>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QSet>

#include <algorithm>
#include <cmath>

using namespace tarvonix;

namespace {

// What a site may hold: enough for any real winery, little enough that a
// hostile file cannot make the demo build millions of objects.
constexpr int maxObjetos = 20000;
constexpr int maxEscalas = 99;      // tier e's codes count e × 1000: 99 tiers keep them apart
constexpr int maxPosiciones = 999;  // and 999 positions keep a position's code off the next tier's
constexpr int maxTexto = 1000;

struct Producto
{
    QString texto;
    qint32 color = 0xFFFFFF;
};

// A text of the file as a message quotes it: on one line, and not too long to read.
QString citado(const QString &texto)
{
    QString cita = texto.left(40);
    for (QChar &c : cita) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line
            || c.category() == QChar::Separator_Paragraph)
            c = QChar(0xFFFD);
    }
    return u'"' + cita + (texto.size() > cita.size() ? QStringLiteral("…\"") : QStringLiteral("\""));
}

// The first thing wrong in the file, with where it is.
struct Problema
{
    QString texto;
};

/*
    Reads values out of the JSON tree, checking each one, and keeps the path
    of what it reads ("piernas[1].escalas[3]") so that a problem names its place.
    A missing member reads as zero, false or an empty text, as it always did.
*/
class Lector
{
public:
    class Lugar
    {
    public:
        Lugar(Lector &lector, const QString &paso)
            : m_lector(lector)
            , m_largo(lector.m_lugar.size())
        {
            m_lector.m_lugar += paso;
        }
        ~Lugar() { m_lector.m_lugar.truncate(m_largo); }
        Lugar(const Lugar &) = delete;
        Lugar &operator=(const Lugar &) = delete;

    private:
        Lector &m_lector;
        qsizetype m_largo;
    };

    Lugar miembro(const QString &clave)
    {
        return Lugar(*this, m_lugar.isEmpty() ? clave : QLatin1Char('.') + clave);
    }
    Lugar elemento(qsizetype indice) { return Lugar(*this, QStringLiteral("[%1]").arg(indice)); }

    [[noreturn]] void fallar(const QString &que) const
    {
        throw Problema{(m_lugar.isEmpty() ? QString() : m_lugar + QStringLiteral(": ")) + que};
    }

    QJsonObject objeto(const QJsonValue &valor)
    {
        if (!valor.isObject() && !valor.isUndefined() && !valor.isNull())
            fallar(QStringLiteral("an object was expected"));
        return valor.toObject();
    }

    QJsonArray lista(const QJsonValue &valor)
    {
        if (!valor.isArray() && !valor.isUndefined() && !valor.isNull())
            fallar(QStringLiteral("a list was expected"));
        return valor.toArray();
    }

    int numero(const QJsonValue &valor, int minimo = -32768, int maximo = 32767)
    {
        if (valor.isUndefined() || valor.isNull())
            return std::clamp(0, minimo, maximo);
        const double d = valor.toDouble(qQNaN());
        if (!valor.isDouble() || d != std::floor(d))
            fallar(QStringLiteral("a whole number was expected"));
        if (d < minimo || d > maximo)
            fallar(QStringLiteral("%1 is not between %2 and %3").arg(d, 0, 'g', 12).arg(minimo).arg(maximo));
        return int(d);
    }

    QString texto(const QJsonValue &valor)
    {
        if (!valor.isString() && !valor.isUndefined() && !valor.isNull())
            fallar(QStringLiteral("a text was expected"));
        const QString texto = valor.toString();
        if (texto.size() > maxTexto)
            fallar(QStringLiteral("a text of %1 characters; at most %2 are allowed")
                       .arg(texto.size())
                       .arg(maxTexto));
        return texto;
    }

    bool siNo(const QJsonValue &valor)
    {
        if (!valor.isBool() && !valor.isUndefined() && !valor.isNull())
            fallar(QStringLiteral("true or false was expected"));
        return valor.toBool();
    }

    // A colour as "0xBBGGRR".
    qint32 color(const QJsonValue &valor, qint32 siFalta)
    {
        if (valor.isUndefined() || valor.isNull())
            return siFalta;
        bool ok = false;
        const uint color = texto(valor).toUInt(&ok, 16);
        if (!ok || color > 0xFFFFFF)
            fallar(QStringLiteral("a colour from 0x000000 to 0xFFFFFF was expected"));
        return qint32(color);
    }

    // Counts what the site will hold, before it is built.
    void contar(qsizetype objetos)
    {
        m_objetos += objetos;
        if (m_objetos > maxObjetos)
            fallar(QStringLiteral("more than %1 objects in the site").arg(maxObjetos));
    }

    // A product by its key: a key nobody defined is a mistake in the file.
    Producto producto(const QHash<QString, Producto> &productos, const QJsonValue &valor)
    {
        const QString clave = texto(valor);
        if (!clave.isEmpty() && !productos.contains(clave))
            fallar(QStringLiteral("no product has the key %1").arg(citado(clave)));
        return productos.value(clave);
    }

    // Reads the list \a clave of \a datos, each object in its place, all of them counted against the limit.
    template<typename Leer>
    void cadaObjeto(const QJsonObject &datos, const char *clave, Leer &&leerUno)
    {
        const auto aqui = miembro(QLatin1String(clave));
        const QJsonArray elementos = lista(datos.value(QLatin1String(clave)));
        contar(elementos.size());
        for (qsizetype i = 0; i < elementos.size(); ++i) {
            const auto enElemento = elemento(i);
            leerUno(objeto(elementos.at(i)));
        }
    }

private:
    QString m_lugar;
    qsizetype m_objetos = 0;
};

// A member of \a datos, read with the member's name in the place.
QString leerTexto(Lector &lector, const QJsonObject &datos, const char *clave)
{
    const auto aqui = lector.miembro(QLatin1String(clave));
    return lector.texto(datos.value(QLatin1String(clave)));
}

int leerNumero(Lector &lector, const QJsonObject &datos, const char *clave)
{
    const auto aqui = lector.miembro(QLatin1String(clave));
    return lector.numero(datos.value(QLatin1String(clave)));
}

bool leerSiNo(Lector &lector, const QJsonObject &datos, const char *clave)
{
    const auto aqui = lector.miembro(QLatin1String(clave));
    return lector.siNo(datos.value(QLatin1String(clave)));
}

qint32 leerColor(Lector &lector, const QJsonObject &datos, const char *clave, qint32 siFalta)
{
    const auto aqui = lector.miembro(QLatin1String(clave));
    return lector.color(datos.value(QLatin1String(clave)), siFalta);
}

Producto leerProducto(Lector &lector, const QHash<QString, Producto> &productos, const QJsonObject &datos)
{
    const auto aqui = lector.miembro(QStringLiteral("producto"));
    return lector.producto(productos, datos.value(QLatin1String("producto")));
}

// Where in the text the parser stopped, as the editors count: line and column from 1.
QString lineaYColumna(const QByteArray &json, int offset)
{
    const QByteArray antes = json.left(offset);
    const qsizetype linea = antes.count('\n') + 1;
    const qsizetype columna = QString::fromUtf8(antes.mid(antes.lastIndexOf('\n') + 1)).size() + 1;
    return QStringLiteral("line %1, column %2").arg(linea).arg(columna);
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

namespace {

// Adds to a container's collection; a code already there is the file's mistake.
void agregar(Lector &lector, Objetos &objetos, const ObjetoPtr &objeto)
{
    if (objetos.contains(objeto->getCodigo()))
        lector.fallar(QStringLiteral("the code %1 is used twice").arg(citado(objeto->getCodigo())));
    objetos.add(objeto);
}

void leer(Sitio &sitio, Lector &lector, const QJsonObject &raiz, const QString &carpetaImagenes)
{
    // Products: the colour keys of the hall and the colours of what holds them.
    QHash<QString, Producto> productos;
    auto claves = std::make_shared<Referencias>();
    {
        const auto aqui = lector.miembro(QStringLiteral("productos"));
        const QJsonArray lista = lector.lista(raiz.value(QLatin1String("productos")));
        for (qsizetype i = 0; i < lista.size(); ++i) {
            const auto enLista = lector.elemento(i);
            const QJsonObject p = lector.objeto(lista.at(i));
            const QString clave = leerTexto(lector, p, "clave");
            const Producto producto{leerTexto(lector, p, "texto"), leerColor(lector, p, "color", 0)};
            try {
                claves->add(clave, producto.texto, producto.color);
            } catch (const tarvonix::Error &) {
                // The colour keys are told apart without regard to case.
                lector.fallar(QStringLiteral("the key %1 is used twice").arg(citado(clave)));
            }
            productos.insert(clave, producto);
        }
    }
    lector.contar(productos.size());

    sitio.imagenes = std::make_shared<Imagenes>();
    qint16 numero = 0;
    for (const QString &nombre : {QStringLiteral("tolva"), QStringLiteral("prensa")}) {
        const QString archivo = QDir(carpetaImagenes).filePath(nombre + QStringLiteral(".png"));
        if (!QFile::exists(archivo))
            dibujo(nombre).save(archivo);
        sitio.imagenes->add(++numero, archivo);
    }

    auto contenedor = [&lector](const QJsonObject &datos) {
        auto objeto = std::make_shared<Objeto>();
        objeto->setCodigo(leerTexto(lector, datos, "codigo"));
        objeto->setTipo(leerTexto(lector, datos, "tipo"));
        objeto->setDescripcion(leerTexto(lector, datos, "descripcion"));
        objeto->setColor(leerColor(lector, datos, "color", 0));
        objeto->setTip(objeto->getDescripcion());
        objeto->setPuedeContener(true);
        return objeto;
    };

    // The hall: rows of vessels, and batches waiting on the floor.
    {
        const auto enNave = lector.miembro(QStringLiteral("nave"));
        const QJsonObject datosNave = lector.objeto(raiz.value(QLatin1String("nave")));
        auto nave = contenedor(datosNave);
        nave->setReferencias(claves);
        int numeroDeposito = 0;
        {
            const auto enFilas = lector.miembro(QStringLiteral("filas"));
            const QJsonArray filas = lector.lista(datosNave.value(QLatin1String("filas")));
            for (qsizetype f = 0; f < filas.size(); ++f) {
                const auto enFila = lector.elemento(f);
                const QJsonObject fila = lector.objeto(filas.at(f));
                int x = leerNumero(lector, fila, "x");
                const int paso = leerNumero(lector, fila, "paso");
                const qint16 y = qint16(leerNumero(lector, fila, "y"));
                const qint16 ancho = qint16(leerNumero(lector, fila, "ancho"));
                const qint16 alto = qint16(leerNumero(lector, fila, "alto"));
                const qint16 forma = qint16(leerNumero(lector, fila, "forma"));
                const auto enDepositos = lector.miembro(QStringLiteral("depositos"));
                const QJsonArray depositos = lector.lista(fila.value(QLatin1String("depositos")));
                lector.contar(depositos.size());
                for (qsizetype i = 0; i < depositos.size(); ++i) {
                    const auto enDeposito = lector.elemento(i);
                    const QJsonArray par = lector.lista(depositos.at(i));
                    if (par.size() != 2)
                        lector.fallar(QStringLiteral("a code and a product key were expected"));
                    if (x < -32768 || x > 32767)
                        lector.fallar(QStringLiteral("the row runs past x = %1").arg(x));
                    QString codigo;
                    Producto producto;
                    {
                        const auto enCodigo = lector.elemento(0);
                        codigo = lector.texto(par.at(0));
                    }
                    {
                        const auto enProducto = lector.elemento(1);
                        producto = lector.producto(productos, par.at(1));
                    }
                    auto deposito = std::make_shared<Deposito>();
                    deposito->setCodigo(codigo);
                    deposito->setNumero(++numeroDeposito);
                    deposito->setProducto(producto.texto);
                    deposito->setDescripcion(QStringLiteral("Depósito %1 · %2").arg(numeroDeposito).arg(producto.texto));
                    deposito->setX(qint16(x));
                    deposito->setY(y);
                    deposito->setAncho(ancho);
                    deposito->setAlto(alto);
                    deposito->setForma(forma);
                    deposito->setColor(producto.color);
                    deposito->setTip(deposito->getCodigo());
                    deposito->setPadre(nave->getCodigo());
                    agregar(lector, *nave->getObjetos(), deposito);
                    x += paso;
                }
            }
        }
        lector.cadaObjeto(datosNave, "lotes", [&](const QJsonObject &datos) {
            const Producto producto = leerProducto(lector, productos, datos);
            auto lote = std::make_shared<Lote>();
            lote->setCodigo(leerTexto(lector, datos, "codigo"));
            lote->setProducto(producto.texto);
            lote->setAnada(qint16(leerNumero(lector, datos, "anada")));
            lote->setDescripcion(QStringLiteral("Lote %1 %2").arg(producto.texto).arg(lote->getAnada()));
            lote->setX(qint16(leerNumero(lector, datos, "x")));
            lote->setY(qint16(leerNumero(lector, datos, "y")));
            lote->setAncho(qint16(leerNumero(lector, datos, "ancho")));
            lote->setAlto(qint16(leerNumero(lector, datos, "alto")));
            lote->setForma(3);
            lote->setColor(producto.color);
            lote->setTip(lote->getCodigo());
            lote->setPadre(nave->getCodigo());
            agregar(lector, *nave->getObjetos(), lote);
        });
        sitio.nave = nave;
    }

    // The yard, with pictures for its machines.
    {
        const auto enPatio = lector.miembro(QStringLiteral("patio"));
        const QJsonObject datosPatio = lector.objeto(raiz.value(QLatin1String("patio")));
        auto patio = contenedor(datosPatio);
        lector.cadaObjeto(datosPatio, "objetos", [&](const QJsonObject &datos) {
            auto objeto = std::make_shared<Objeto>();
            objeto->setCodigo(leerTexto(lector, datos, "codigo"));
            objeto->setTipo(QStringLiteral("M"));
            objeto->setDescripcion(leerTexto(lector, datos, "descripcion"));
            objeto->setX(qint16(leerNumero(lector, datos, "x")));
            objeto->setY(qint16(leerNumero(lector, datos, "y")));
            objeto->setAncho(qint16(leerNumero(lector, datos, "ancho")));
            objeto->setAlto(qint16(leerNumero(lector, datos, "alto")));
            objeto->setForma(qint16(leerNumero(lector, datos, "forma")));
            objeto->setColor(leerColor(lector, datos, "color", 0));
            objeto->setTip(objeto->getCodigo());
            const QString imagen = leerTexto(lector, datos, "imagen");
            if (imagen == QLatin1String("tolva"))
                objeto->setImagen(sitio.imagenes->Item(1));
            else if (imagen == QLatin1String("prensa"))
                objeto->setImagen(sitio.imagenes->Item(2));
            objeto->setPadre(patio->getCodigo());
            agregar(lector, *patio->getObjetos(), objeto);
        });
        sitio.patio = patio;
    }

    // The legs: barrels of several vintages, a few positions left empty.
    lector.cadaObjeto(raiz, "piernas", [&](const QJsonObject &datos) {
        auto pierna = std::make_shared<Pierna>();
        pierna->setCodigo(leerTexto(lector, datos, "codigo"));
        pierna->setDescripcion(leerTexto(lector, datos, "descripcion"));
        pierna->setClasica(leerSiNo(lector, datos, "clasica"));
        pierna->setLinea(qint16(leerNumero(lector, datos, "linea")));
        const Producto producto = leerProducto(lector, productos, datos);
        QList<int> largos;
        {
            const auto enEscalas = lector.miembro(QStringLiteral("escalas"));
            const QJsonArray lista = lector.lista(datos.value(QLatin1String("escalas")));
            if (lista.size() > maxEscalas)
                lector.fallar(
                    QStringLiteral("%1 tiers; a leg has at most %2").arg(lista.size()).arg(maxEscalas));
            for (qsizetype e = 0; e < lista.size(); ++e) {
                const auto enEscala = lector.elemento(e);
                largos.append(lector.numero(lista.at(e), 0, maxPosiciones));
                lector.contar(largos.last());
            }
        }
        QList<int> anadas;
        {
            const auto enAnadas = lector.miembro(QStringLiteral("anadas"));
            const QJsonArray lista = lector.lista(datos.value(QLatin1String("anadas")));
            if (lista.size() > largos.size())
                lector.fallar(
                    QStringLiteral("%1 vintages for %2 tiers").arg(lista.size()).arg(largos.size()));
            for (qsizetype e = 0; e < lista.size(); ++e) {
                const auto enAnada = lector.elemento(e);
                anadas.append(lector.numero(lista.at(e)));
            }
        }
        QSet<QPair<int, int>> vacias;
        {
            const auto enVacias = lector.miembro(QStringLiteral("vacias"));
            const QJsonArray lista = lector.lista(datos.value(QLatin1String("vacias")));
            for (qsizetype v = 0; v < lista.size(); ++v) {
                const auto enVacia = lector.elemento(v);
                const QJsonArray par = lector.lista(lista.at(v));
                if (par.size() != 2)
                    lector.fallar(QStringLiteral("a tier and a position were expected"));
                vacias.insert({lector.numero(par.at(0)), lector.numero(par.at(1))});
            }
        }
        pierna->setEscalas(qint16(largos.size()));
        for (qint16 e = 1; e <= largos.size(); ++e) {
            pierna->setEscala(e, qint16(largos.at(e - 1)));
            const int anada = anadas.value(e - 1);
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
    });

    // Each root has a frame named by its type and code: two alike would be one frame.
    QSet<QString> nombres;
    const std::vector<ObjetoPtr> raices = sitio.raices();
    for (size_t i = 0; i < raices.size(); ++i) {
        const QString nombre = raices[i]->getTipo() + raices[i]->getCodigo();
        if (nombres.contains(nombre.toLower())) {
            Lector enRaiz; // the place is the root's own, not the last one read
            const auto aqui = enRaiz.miembro(i == 0   ? QStringLiteral("nave")
                                                 : i == 1 ? QStringLiteral("patio")
                                                          : QStringLiteral("piernas[%1]").arg(i - 2));
            enRaiz.fallar(QStringLiteral("another root has the frame name %1").arg(citado(nombre)));
        }
        nombres.insert(nombre.toLower());
    }
}

} // namespace

Sitio Sitio::desdeJson(const QByteArray &json, const QString &carpetaImagenes)
{
    Sitio sitio;
    QJsonParseError problema;
    const QJsonDocument documento = QJsonDocument::fromJson(json, &problema);
    if (problema.error != QJsonParseError::NoError) {
        sitio.error = lineaYColumna(json, problema.offset) + QStringLiteral(": ") + problema.errorString();
        return sitio;
    }
    Lector lector;
    try {
        if (!documento.isObject())
            lector.fallar(QStringLiteral("the site must be a JSON object"));
        leer(sitio, lector, documento.object(), carpetaImagenes);
    } catch (const Problema &p) {
        sitio = Sitio();
        sitio.error = p.texto;
    }
    return sitio;
}
