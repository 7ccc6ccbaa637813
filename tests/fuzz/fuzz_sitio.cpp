// SPDX-License-Identifier: MIT
// libFuzzer entry for the demo's site reader: any bytes give a site or one
// message, never a crash, a hang or a blow-up (scripts/fuzz.sh builds and runs it).

#include "sitio.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir imagenes;
    const Sitio sitio = Sitio::desdeJson(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)),
                                         imagenes.path());
    // Either a whole site or nothing but the message saying why not.
    const bool entero = sitio.nave && sitio.patio && sitio.imagenes;
    const bool vacio = !sitio.nave && !sitio.patio && sitio.piernas.empty();
    if (sitio.error.isEmpty() ? !entero : (!vacio || sitio.error.contains(QLatin1Char('\n')))) {
        fprintf(stderr, "%s\n", qPrintable(sitio.error));
        std::abort();
    }
    return 0;
}
