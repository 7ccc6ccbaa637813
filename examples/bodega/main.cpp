// SPDX-License-Identifier: MIT
// The demo host: a winery's site on the map. With a display it opens a
// window; without one, or with --screenshot FILE, it renders the map to a
// PNG file and says where; --export FILE writes the whole map to a PNG, SVG
// or PDF file, by the file's extension, through the library's export.

#include "sitio.h"
#include "ventanabodega.h"

#include <tarvonix/output/salida.h>
#include <tarvonix/platform/errortrap.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

namespace {

bool hayPantalla()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// Platforms that draw into memory only: a window there would never be seen.
bool sinVentanas()
{
    const QString plataforma = QGuiApplication::platformName();
    return plataforma == QLatin1String("offscreen") || plataforma == QLatin1String("minimal");
}

} // namespace

int main(int argc, char *argv[])
{
    if (!hayPantalla())
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    const bool sinPantalla = sinVentanas();
    app.setApplicationName(QStringLiteral("Bodega"));

    QCommandLineParser opciones;
    opciones.setApplicationDescription(QStringLiteral("A winery's site on the Tarvonix map."));
    opciones.addHelpOption();
    const QCommandLineOption captura(QStringLiteral("screenshot"),
                                     QStringLiteral("Render the map to the PNG file <file> and quit."),
                                     QStringLiteral("file"));
    const QCommandLineOption archivoSitio(QStringLiteral("sitio"),
                                          QStringLiteral("Read the site from the JSON file <file>."),
                                          QStringLiteral("file"));
    const QCommandLineOption exportacion(
        QStringLiteral("export"), QStringLiteral("Write the whole map to <file> (.png, .svg or .pdf) and quit."),
        QStringLiteral("file"));
    opciones.addOption(captura);
    opciones.addOption(exportacion);
    opciones.addOption(archivoSitio);
    opciones.process(app);

    QTextStream salida(stdout);
    QFile fuente(opciones.isSet(archivoSitio) ? opciones.value(archivoSitio) : QStringLiteral(":/bodega/bodega.json"));
    if (!fuente.open(QIODevice::ReadOnly)) {
        QTextStream(stderr) << "Cannot read " << fuente.fileName() << '\n';
        return 1;
    }
    // A site is a few kilobytes; a file of many megabytes is a mistake, not worth the memory.
    constexpr qint64 maximo = 16 * 1024 * 1024;
    if (fuente.size() > maximo) {
        QTextStream(stderr) << fuente.fileName() << ": larger than " << maximo / (1024 * 1024) << " MiB, not a site\n";
        return 1;
    }
    QTemporaryDir imagenes;
    Sitio sitio = Sitio::desdeJson(fuente.read(maximo + 1), imagenes.path());
    if (!sitio.error.isEmpty()) {
        QTextStream(stderr) << fuente.fileName() << ": " << sitio.error << '\n';
        return 1;
    }

    const bool sinVentana = sinPantalla || opciones.isSet(captura) || opciones.isSet(exportacion);
    if (sinVentana) {
        // Nobody to answer a message box: failures go to the terminal.
        tarvonix::setErrorHandler([](const QString &mensaje) { QTextStream(stderr) << mensaje << '\n'; });
    }

    VentanaBodega ventana(std::move(sitio));
    ventana.show();

    if (opciones.isSet(exportacion)) {
        const QString archivo = QDir::current().absoluteFilePath(opciones.value(exportacion));
        QCoreApplication::processEvents();
        if (!tarvonix::Salida::exportarMapa(ventana.mapa(), archivo))
            return 1;
        salida << "The map was exported to " << archivo << '\n';
        return 0;
    }
    if (sinPantalla || opciones.isSet(captura)) {
        const QString archivo = QDir::current().absoluteFilePath(
            opciones.isSet(captura) ? opciones.value(captura) : QStringLiteral("bodega.png"));
        QCoreApplication::processEvents();
        if (!ventana.grab().save(archivo)) {
            QTextStream(stderr) << "Cannot write " << archivo << '\n';
            return 1;
        }
        salida << (sinPantalla ? "No display here: the map" : "The map") << " was rendered to " << archivo << '\n';
        return 0;
    }
    return app.exec();
}
