// SPDX-License-Identifier: MIT
#include <tarvonix/output/salida.h>

#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/map/framex.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/views/vistax.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPicture>
#include <QPrinter>
#include <QSaveFile>
#include <QStandardPaths>
#include <QSvgGenerator>

#include <cmath>
#include <functional>
#include <memory>

namespace tarvonix {

namespace {

// The screen's units: one pixel at 96 dots per inch, three quarters of a point.
constexpr double pppPantalla = 96;
constexpr int pppMaximo = 2400;
// A PNG larger than this (pixels each way, pixels in all) is refused rather than half made.
constexpr int ladoMaximo = 32767;
constexpr qint64 pixelesMaximos = qint64(1) << 28;
// Between the title line, the drawing and the legend on paper.
constexpr int separacion = 8;

// Something to draw: its size in screen units and how it paints itself at the painter's origin.
struct Dibujo
{
    QSize tamano;
    std::function<void(QPainter &)> pintar;
};

Dibujo dibujoDe(QWidget *widget)
{
    widget->ensurePolished();
    return { widget->size(), [widget](QPainter &painter) {
                // Whole, even where a frame's scroll bars would hide it.
                widget->setProperty(Surface::raizDeDibujo, true);
                widget->render(&painter, QPoint(), QRegion(),
                               QWidget::DrawWindowBackground | QWidget::DrawChildren);
                widget->setProperty(Surface::raizDeDibujo, QVariant());
            } };
}

// A frame's view draws only what the frame shows: for its whole content it is told it all shows.
Dibujo contenidoDe(FrameX *frame)
{
    VistaX *vista = frame->vista();
    Dibujo dibujo = dibujoDe(vista);
    dibujo.pintar = [frame, vista, pintar = dibujo.pintar](QPainter &painter) {
        vista->setViewPort(0, 0, float(vista->width()), float(vista->height()));
        pintar(painter);
        frame->setViewPort(vista);
    };
    return dibujo;
}

FrameX *frameDe(MapaX *mapa, const ObjetoPtr &obj)
{
    if (!mapa || !obj)
        throw Error(Error::ObjectNotSet);
    auto *frame = qobject_cast<FrameX *>(mapa->control(obj->getTipo() + obj->getCodigo()));
    if (!frame)
        throw Error(Error::ControlNotFound);
    if (!frame->vista())
        throw Error(Error::ObjectNotSet);
    return frame;
}

// The legend list of \a obj's colour keys, made for one drawing; none when it has no keys.
std::unique_ptr<ReferenciasX> leyendaDe(const ObjetoPtr &obj)
{
    const std::shared_ptr<Referencias> claves = obj ? obj->getReferencias() : nullptr;
    if (!claves || claves->count() == 0)
        return nullptr;
    auto lista = std::make_unique<ReferenciasX>();
    lista->setReferencias(claves);
    return lista;
}

void escribir(const Dibujo &dibujo, const QString &archivo, int ppp)
{
    if (dibujo.tamano.isEmpty())
        throw Error(Error::InvalidArgument, QStringLiteral("Nothing to draw"));
    const QString formato = QFileInfo(archivo).suffix().toLower();
    if (formato != QLatin1String("png") && formato != QLatin1String("svg") && formato != QLatin1String("pdf"))
        throw Error(
            Error::InvalidArgument,
            QStringLiteral("Unknown format \"%1\": the file must end in .png, .svg or .pdf").arg(formato));
    if (ppp < 1 || ppp > pppMaximo)
        throw Error(Error::InvalidArgument,
                    QStringLiteral("Resolution %1 dpi out of range (1 to %2)").arg(ppp).arg(pppMaximo));
    const double factor = ppp / pppPantalla;
    const QSize pixeles(int(std::ceil(dibujo.tamano.width() * factor)),
                        int(std::ceil(dibujo.tamano.height() * factor)));
    if (formato == QLatin1String("png")
        && (pixeles.width() > ladoMaximo || pixeles.height() > ladoMaximo
            || qint64(pixeles.width()) * pixeles.height() > pixelesMaximos))
        throw Error(Error::InvalidArgument,
                    QStringLiteral("A picture of %1 x %2 pixels is too large")
                        .arg(pixeles.width())
                        .arg(pixeles.height()));

    // Written beside the file and renamed over it at the end: a failure leaves nothing behind.
    QSaveFile salida(archivo);
    bool hecho = salida.open(QIODevice::WriteOnly);
    if (hecho && formato == QLatin1String("png")) {
        // Drawn at the file's resolution by a scaled painter, as on a screen with that pixel
        // ratio; an image's own ratio is not honoured below 1.
        QImage imagen(pixeles, QImage::Format_RGB32);
        imagen.fill(Qt::white);
        {
            QPainter painter(&imagen);
            painter.scale(factor, factor);
            dibujo.pintar(painter);
        }
        imagen.setDotsPerMeterX(qRound(ppp / 0.0254));
        imagen.setDotsPerMeterY(qRound(ppp / 0.0254));
        hecho = imagen.save(&salida, "PNG");
    } else if (hecho && formato == QLatin1String("svg")) {
        QSvgGenerator svg;
        svg.setOutputDevice(&salida);
        svg.setSize(dibujo.tamano);
        svg.setViewBox(QRect(QPoint(), dibujo.tamano));
        svg.setResolution(int(pppPantalla));
        QPainter painter;
        hecho = painter.begin(&svg);
        if (hecho)
            dibujo.pintar(painter);
    } else if (hecho) {
        QPdfWriter pdf(&salida);
        pdf.setResolution(int(pppPantalla));
        pdf.setPageMargins(QMarginsF());
        pdf.setPageSize(QPageSize(QSizeF(dibujo.tamano) * (72 / pppPantalla), QPageSize::Point));
        QPainter painter;
        hecho = painter.begin(&pdf);
        if (hecho)
            dibujo.pintar(painter);
    }
    if (!hecho || !salida.commit())
        throw Error(Error::InvalidArgument,
                    QStringLiteral("Cannot write %1: %2")
                        .arg(QDir::toNativeSeparators(archivo), salida.errorString()));
}

bool exportar(const char *operacion, const QString &archivo, int ppp, const std::function<Dibujo()> &que)
{
    return trap(QStringLiteral("Salida.%1->").arg(QLatin1String(operacion)),
                [&] { escribir(que(), archivo, ppp); });
}

} // namespace

bool Salida::exportarMapa(MapaX *mapa, const QString &archivo, int ppp)
{
    return exportar("exportarMapa", archivo, ppp, [&] {
        if (!mapa)
            throw Error(Error::ObjectNotSet);
        return dibujoDe(mapa);
    });
}

bool Salida::exportarFrame(MapaX *mapa, const ObjetoPtr &obj, const QString &archivo, int ppp)
{
    return exportar("exportarFrame", archivo, ppp, [&] { return contenidoDe(frameDe(mapa, obj)); });
}

bool Salida::exportarLeyenda(MapaX *mapa, const QString &archivo, int ppp)
{
    std::unique_ptr<ReferenciasX> lista;
    return exportar("exportarLeyenda", archivo, ppp, [&] {
        if (!mapa)
            throw Error(Error::ObjectNotSet);
        lista = leyendaDe(mapa->getFrame());
        if (!lista)
            throw Error(Error::InvalidArgument,
                        QStringLiteral("The active frame's object has no colour keys"));
        return dibujoDe(lista.get());
    });
}

bool Salida::imprimir(MapaX *mapa, QPrinter *printer, const ObjetoPtr &obj, int paginas,
                      const QString &titulo)
{
    return trap(QStringLiteral("Salida.imprimir->"), [&] {
        if (!mapa || !printer)
            throw Error(Error::ObjectNotSet);
        const Dibujo dibujo = obj ? contenidoDe(frameDe(mapa, obj)) : dibujoDe(mapa);
        const ObjetoPtr impreso = obj ? obj : mapa->getFrame();
        const std::unique_ptr<ReferenciasX> lista = leyendaDe(impreso);
        QString linea = titulo;
        if (linea.isEmpty())
            linea = obj ? obj->getDescripcion() : QString();
        if (linea.isEmpty())
            linea = obj ? obj->getTipo() + obj->getCodigo() : QStringLiteral("Mapa");

        // With no printer installed Qt prints to PDF: into the user's documents unless a file was chosen.
        if (printer->outputFormat() == QPrinter::PdfFormat && printer->outputFileName().isEmpty())
            printer->setOutputFileName(
                QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                    .filePath(linea + QStringLiteral(".pdf")));

        // The sheet in screen units: the title line, the drawing, the legend below it.
        QFont fuenteTitulo = mapa->font();
        fuenteTitulo.setBold(true);
        fuenteTitulo.setPointSizeF(fuenteTitulo.pointSizeF() * 1.5);
        const QFontMetrics medidas(fuenteTitulo);
        const int altoTitulo = medidas.height() + separacion;
        const QSize leyenda = lista ? lista->size() : QSize();
        const int arribaLeyenda = altoTitulo + dibujo.tamano.height() + separacion;
        const QSize hoja(
            std::max({ dibujo.tamano.width(), leyenda.width(), medidas.horizontalAdvance(linea) }),
            lista ? arribaLeyenda + leyenda.height() : altoTitulo + dibujo.tamano.height());

        // The sheet is recorded once and played onto each page: played, the widgets' text is
        // laid out for the printer, and stays text in a PDF file.
        QPicture grabada;
        {
            QPainter grabador(&grabada);
            grabador.setFont(fuenteTitulo);
            grabador.setPen(Qt::black);
            grabador.drawText(QPointF(0, medidas.ascent()), linea);
            grabador.translate(0, altoTitulo);
            dibujo.pintar(grabador);
            if (lista) {
                grabador.translate(0, arribaLeyenda - altoTitulo);
                dibujoDe(lista.get()).pintar(grabador);
            }
        }
        QPainter painter;
        if (!painter.begin(printer))
            throw Error(Error::InvalidArgument,
                        QStringLiteral("Cannot print to %1")
                            .arg(printer->outputFileName().isEmpty() ? printer->printerName()
                                                                     : printer->outputFileName()));
        const QRect area = printer->pageLayout().paintRectPixels(printer->resolution());
        const QRectF pagina(QPointF(), area.size());
        const double escala = paginas == VariasPaginas
            ? printer->resolution() / pppPantalla
            : std::min(pagina.width() / hoja.width(), pagina.height() / hoja.height());
        const int columnas
            = paginas == VariasPaginas ? int(std::ceil(hoja.width() * escala / pagina.width())) : 1;
        const int filas
            = paginas == VariasPaginas ? int(std::ceil(hoja.height() * escala / pagina.height())) : 1;
        for (int fila = 0; fila < filas; ++fila) {
            for (int columna = 0; columna < columnas; ++columna) {
                if (fila > 0 || columna > 0)
                    printer->newPage();
                painter.save();
                painter.setClipRect(pagina);
                painter.translate(-columna * pagina.width(), -fila * pagina.height());
                // A picture plays at the device's resolution: its own units are taken back out.
                painter.scale(escala * grabada.logicalDpiX() / printer->logicalDpiX(),
                              escala * grabada.logicalDpiY() / printer->logicalDpiY());
                painter.drawPicture(0, 0, grabada);
                painter.restore();
            }
        }
        if (!painter.end())
            throw Error(Error::InvalidArgument, QStringLiteral("The printer did not take the pages"));
    });
}

} // namespace tarvonix
