// SPDX-License-Identifier: MIT
#include <tarvonix/map/framex.h>
#include <tarvonix/map/mapax.h>
#include <tarvonix/output/salida.h>
#include <tarvonix/views/vistax.h>

#include "errorcatcher.h"
#include "naves.h"

#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {
// A shown 1400 x 400 map with the legend and room "NA": "AD1" (red) in view, "AD2" (green) below what its
// frame shows.
struct Banco
{
    ErrorCatcher errors;
    QTemporaryDir carpeta;
    MapaX mapa;
    ObjetoPtr a = naves::nave(u"A"_s, u"N"_s, true, { { 10, 10, 50, 40 }, { 1300, 600, 50, 40 } });
    const QList<QColor> colores { Qt::red, Qt::green };
    Banco()
    {
        for (const ObjetoPtr &k : a->getObjetos()->NewEnum()) {
            k->setTip(k->getCodigo());
            k->setColor(k->getCodigo() == u"AD1"_s ? 0x0000FF : 0x00FF00);
        }
        mapa.resize(1400, 400);
        mapa.show();
        mapa.add(a);
        mapa.show(a);
        mapa.ShowReferences();
    }
    VistaX *vista() const { return qobject_cast<FrameX *>(mapa.control(u"NA"_s))->vista(); }
};

// The text of a PDF file as pdftotext reads it, pages apart by form feeds.
QString textoDe(const QString &archivo)
{
    QProcess pdftotext;
    pdftotext.start(QStandardPaths::findExecutable(u"pdftotext"_s), { archivo, u"-"_s });
    return pdftotext.waitForFinished() ? QString::fromUtf8(pdftotext.readAllStandardOutput()) : QString();
}
} // namespace

class tst_Salida : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
    }

    void exportar_data()
    {
        QTest::addColumn<int>("que"); // 0 the map, 1 the frame's content, 2 the legend
        QTest::addColumn<QString>("archivo");
        QTest::addColumn<int>("ppp");
        QTest::addColumn<QStringList>("textos");
        QTest::addColumn<QStringList>("ausentes");
        QTest::newRow("frame png") << 1 << u"f.png"_s << 192 << QStringList() << QStringList();
        QTest::newRow("map png") << 0 << u"m.png"_s << 72 << QStringList() << QStringList();
        QTest::newRow("frame svg") << 1 << u"f.svg"_s << 96 << QStringList { u"AD1"_s, u"AD2"_s }
                                   << QStringList();
        QTest::newRow("legend svg") << 2 << u"l.svg"_s << 96 << QStringList { u"Tempranillo"_s, u"Verdejo"_s }
                                    << QStringList { u"AD1"_s };
        QTest::newRow("frame pdf") << 1 << u"f.pdf"_s << 96 << QStringList { u"AD1"_s, u"AD2"_s }
                                   << QStringList();
        // What the frame's scroll bars hide stays hidden on the map's page.
        QTest::newRow("map pdf") << 0 << u"m.pdf"_s << 96 << QStringList { u"AD1"_s, u"Tempranillo"_s }
                                 << QStringList { u"AD2"_s };
    }
    void exportar()
    {
        QFETCH(int, que);
        QFETCH(QString, archivo);
        QFETCH(int, ppp);
        QFETCH(QStringList, textos);
        QFETCH(QStringList, ausentes);
        Banco b;
        const QString ruta = b.carpeta.filePath(archivo);
        QVERIFY(que == 0       ? Salida::exportarMapa(&b.mapa, ruta, ppp)
                    : que == 1 ? Salida::exportarFrame(&b.mapa, b.a, ruta, ppp)
                               : Salida::exportarLeyenda(&b.mapa, ruta, ppp));
        QVERIFY(b.errors.messages().isEmpty());
        QString texto;
        if (archivo.endsWith(u"png"_s)) {
            // A vessel's fill, away from its tip, where the view draws it (2 from its edge), at the file's
            // resolution.
            const QImage imagen(ruta);
            QCOMPARE(imagen.size(), (que ? b.vista()->size() : b.mapa.size()) * ppp / 96);
            int i = 0;
            for (const ObjetoPtr &k : b.a->getObjetos()->NewEnum()) {
                QPoint punto(k->getX() + 2 + 4, k->getY() + 2 + 4);
                const QColor color = b.colores.at(i++);
                if (que == 0 && !b.vista()->visibleRegion().contains(punto))
                    continue;
                if (que == 0)
                    punto = b.vista()->mapTo(&b.mapa, punto);
                QCOMPARE(imagen.pixelColor(punto * ppp / 96), color);
            }
        } else if (archivo.endsWith(u"svg"_s)) {
            QFile svg(ruta);
            QVERIFY(svg.open(QIODevice::ReadOnly));
            QXmlStreamReader lector(&svg);
            QStringList rects;
            while (!lector.atEnd()) {
                if (lector.readNext() == QXmlStreamReader::StartElement && lector.name() == u"text"_s)
                    texto += lector.readElementText() + u'\n';
                else if (lector.isStartElement() && lector.name() == u"rect"_s)
                    rects += u"%1,%2"_s.arg(lector.attributes().value(u"x"_s),
                                            lector.attributes().value(u"y"_s));
            }
            QVERIFY(!lector.hasError());
            // The vessels' boxes at their places in the view, the legend's colour boxes.
            QVERIFY2(que == 2 ? rects.contains(u"7,7"_s)
                              : rects.contains(u"12,12"_s) && rects.contains(u"1302,602"_s),
                     qPrintable(rects.join(u' ')));
        } else {
            texto = textoDe(ruta);
        }
        for (const QString &t : textos)
            QVERIFY2(texto.contains(t), qPrintable(t));
        for (const QString &t : ausentes)
            QVERIFY2(!texto.contains(t), qPrintable(t));
    }

    void refusesBadInput_data()
    {
        QTest::addColumn<QString>("archivo");
        QTest::addColumn<int>("ppp");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("unwritable") << u"/nonexistent/m.pdf"_s << 96
                                    << u"Cannot write /nonexistent/m.pdf: "_s;
        QTest::newRow("format") << u"m.bmp"_s << 96
                                << u"Unknown format \"bmp\": the file must end in .png, .svg or .pdf"_s;
        QTest::newRow("zero dpi") << u"m.png"_s << 0 << u"Resolution 0 dpi out of range (1 to 2400)"_s;
        QTest::newRow("huge dpi") << u"m.png"_s << 9600 << u"Resolution 9600 dpi out of range (1 to 2400)"_s;
        QTest::newRow("too large") << u"m.png"_s << 2400
                                   << u"A picture of 35000 x 10000 pixels is too large"_s;
    }
    void refusesBadInput()
    {
        QFETCH(QString, archivo);
        QFETCH(int, ppp);
        QFETCH(QString, mensaje);
        Banco b;
        QVERIFY(!Salida::exportarMapa(&b.mapa, QDir(b.carpeta.path()).filePath(archivo), ppp));
        QCOMPARE(b.errors.messages().size(), 1);
        QVERIFY2(b.errors.messages().at(0).startsWith(u"Salida.exportarMapa->"_s + mensaje),
                 qPrintable(b.errors.messages().at(0)));
        QVERIFY(QDir(b.carpeta.path()).isEmpty() && !QFile::exists(archivo)); // no file, not even half of one
        QVERIFY(!Salida::exportarLeyenda(nullptr, b.carpeta.filePath(u"l.svg"_s)));
        QVERIFY(!Salida::exportarFrame(&b.mapa, naves::nave(u"Z"_s), b.carpeta.filePath(u"f.svg"_s)));
        QCOMPARE(b.errors.messages().mid(1),
                 (QStringList { u"Salida.exportarLeyenda->Object variable or With block variable not set"_s,
                                u"Salida.exportarFrame->Control not found"_s }));
    }

    void imprimir_data()
    {
        QTest::addColumn<bool>("marco");
        QTest::addColumn<int>("paginas");
        QTest::addColumn<QString>("titulo");
        QTest::newRow("frame on one page") << true << int(Salida::AjustarAPagina) << u"NA"_s;
        QTest::newRow("frame across pages") << true << int(Salida::VariasPaginas) << u"NA"_s;
        QTest::newRow("map, no printer") << false << int(Salida::AjustarAPagina) << u"Mapa"_s;
    }
    void imprimir()
    {
        QFETCH(bool, marco);
        QFETCH(int, paginas);
        QFETCH(QString, titulo);
        Banco b;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFileName(b.carpeta.filePath(u"p.pdf"_s));
        if (!marco) {
            if (!QPrinterInfo::availablePrinters().isEmpty())
                QSKIP("A printer is installed here");
            printer.setOutputFormat(QPrinter::NativeFormat);
        }
        QVERIFY(Salida::imprimir(&b.mapa, &printer, marco ? b.a : nullptr, paginas));
        QCOMPARE(printer.outputFormat(), QPrinter::PdfFormat);
        const QString texto = textoDe(printer.outputFileName());
        for (const QString &t : { titulo, u"AD1"_s, u"Tempranillo"_s })
            QVERIFY2(texto.contains(t), qPrintable(texto));
        // 1354 x 644 pixels at their natural size take two pages across and one down.
        QCOMPARE(texto.count(u'\f'), paginas == Salida::VariasPaginas ? 2 : 1);
        QVERIFY(b.errors.messages().isEmpty());
    }
};

QTEST_MAIN(tst_Salida)
#include "tst_salida.moc"
