// SPDX-License-Identifier: MIT
#include <tarvonix/map/mapax.h>
#include <tarvonix/output/salida.h>

#include "errorcatcher.h"
#include "naves.h"

#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace tarvonix;
using namespace Qt::StringLiterals;

class tst_Salida : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // No print support plugin: printing goes to PDF here, and the leak checker never meets CUPS.
    void initTestCase() { QCoreApplication::setLibraryPaths({}); }

    void exportarEImprimir_data()
    {
        // 0 to 2 export the map, the frame's whole content, the legend; 3 to 5 print the frame on one page,
        // across pages (1354 x 644 pixels: two across), the map to a printer that is not there.
        QTest::addColumn<int>("que");
        QTest::addColumn<QString>("archivo");
        QTest::addColumn<int>("ppp");
        QTest::addColumn<QString>("textos"); // apart by "|", "!" before one that must not be; or the failure
        QTest::addColumn<int>("paginas");
        QTest::newRow("frame png") << 1 << u"f.png"_s << 192 << QString() << 0;
        QTest::newRow("map png") << 0 << u"m.png"_s << 72 << QString() << 0;
        QTest::newRow("frame svg") << 1 << u"f.svg"_s << 96 << u"AD1|AD2"_s << 0;
        QTest::newRow("legend svg") << 2 << u"l.svg"_s << 96 << u"Tempranillo|!AD1"_s << 0;
        // What the frame's scroll bars hide stays hidden on the map's page.
        QTest::newRow("map pdf") << 0 << u"m.pdf"_s << 96 << u"AD1|Verdejo|!AD2"_s << 1;
        QTest::newRow("print fitted") << 3 << u"p.pdf"_s << 0 << u"NA|AD2|Verdejo"_s << 1;
        QTest::newRow("print on pages") << 4 << u"p.pdf"_s << 0 << u"NA|AD1|AD2"_s << 2;
        QTest::newRow("print, no printer") << 5 << u"p.pdf"_s << 0 << u"Mapa|AD1"_s << 1;
        QTest::newRow("unwritable") << 0 << u"/no/m.pdf"_s << 96 << u"exportarMapa->Cannot write /no/m"_s
                                    << -1;
        QTest::newRow("format") << 0 << u"m.bmp"_s << 96 << u"exportarMapa->Unknown format \"bmp\""_s << -1;
        QTest::newRow("0 dpi") << 0 << u"m.png"_s << 0 << u"exportarMapa->Resolution 0 dpi out of"_s << -1;
        QTest::newRow("9600 dpi") << 0 << u"m.png"_s << 9600 << u"exportarMapa->Resolution 9600 dpi"_s << -1;
        QTest::newRow("too large") << 0 << u"m.png"_s << 2400 << u"exportarMapa->A picture of 35000"_s << -1;
        QTest::newRow("no frame") << 1 << u"f.svg"_s << 96 << u"exportarFrame->Object variable or"_s << -1;
        QTest::newRow("no map") << 2 << u"l.svg"_s << 96 << u"exportarLeyenda->Object variable or"_s << -1;
        QTest::newRow("print, no frame") << 3 << u"p.pdf"_s << 0 << u"imprimir->Control not found"_s << -1;
        QTest::newRow("print to /no") << 4 << u"/no/p.pdf"_s << 0 << u"imprimir->Cannot print to"_s << -1;
    }
    void exportarEImprimir()
    {
        QFETCH(int, que);
        QFETCH(QString, archivo);
        QFETCH(int, ppp);
        QFETCH(QString, textos);
        QFETCH(int, paginas);
        // Room "NA" with keys: "AD1" (red) right of the legend, "AD2" (green) out of its frame's sight.
        ErrorCatcher errors;
        QTemporaryDir carpeta;
        MapaX mapa;
        const ObjetoPtr a = naves::nave(u"A"_s, u"N"_s, true, { { 200, 10, 50, 40 }, { 1300, 600, 50, 40 } });
        for (const ObjetoPtr &k : a->getObjetos()->NewEnum())
            k->setTip(k->getCodigo()), k->setColor(k->getCodigo() == u"AD1"_s ? 0x0000FF : 0x00FF00);
        mapa.resize(1400, 400), mapa.show(), mapa.add(a), mapa.show(a), mapa.ShowReferences();
        const QWidget *vista = mapa.control(u"NA"_s)->findChild<QWidget *>(u"conten"_s);
        const QString ruta = QDir(carpeta.path()).filePath(archivo);
        if (archivo.endsWith(u"pdf"_s) && QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        QPrinter printer(QPrinter::HighResolution);
        if (que == 5) // no printer: Qt prints to PDF, into the documents folder as no file was chosen
            qputenv("HOME", carpeta.path().toLocal8Bit()), QDir(carpeta.path()).mkdir(u"Documents"_s);
        else
            printer.setOutputFileName(ruta), printer.setOutputFormat(QPrinter::PdfFormat);
        const ObjetoPtr frame = paginas >= 0 || que == 4 ? a : que == 3 ? naves::nave(u"Z"_s) : nullptr;
        MapaX *enMapa = paginas < 0 && que == 2 ? nullptr : &mapa;
        const bool hecho = que == 0 ? Salida::exportarMapa(enMapa, ruta, ppp)
            : que == 1              ? Salida::exportarFrame(enMapa, frame, ruta, ppp)
            : que == 2              ? Salida::exportarLeyenda(enMapa, ruta, ppp)
                                    : Salida::imprimir(enMapa, &printer, que < 5 ? frame : nullptr, que == 4);
        if (paginas < 0) { // refused, with no file left behind, not even half of one
            QVERIFY(!hecho && QDir(carpeta.path()).isEmpty() && !QFile::exists(ruta));
            QCOMPARE(errors.messages().size(), 1);
            QCOMPARE(errors.messages().at(0).left(textos.size() + 7), u"Salida."_s + textos);
            return;
        }
        QVERIFY(hecho && errors.messages().isEmpty() && printer.outputFormat() == QPrinter::PdfFormat);
        QVERIFY(que != 5 || printer.outputFileName() == carpeta.filePath(u"Documents/Mapa.pdf"_s));
        QString texto;
        if (archivo.endsWith(u"png"_s)) {
            // The vessels' fills away from their tips; AD2 is out of its frame's sight.
            const QImage imagen(ruta);
            QCOMPARE(imagen.size(), (que ? vista->size() : mapa.size()) * ppp / 96);
            const QPoint ad1 = que ? QPoint(206, 16) : vista->mapTo(&mapa, QPoint(206, 16));
            QCOMPARE(imagen.pixelColor(ad1 * ppp / 96), QColor(Qt::red));
            QVERIFY(que == 0 || imagen.pixelColor(QPoint(1306, 606) * ppp / 96) == Qt::green);
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
            // The vessels' boxes where the view draws them; the legend's colour boxes.
            QVERIFY(!lector.hasError() && rects.contains(que == 2 ? u"7,7"_s : u"1302,602"_s)
                    && rects.contains(u"202,12"_s) != (que == 2));
        } else {
            QProcess pdftotext; // pages apart by form feeds
            pdftotext.start(QStandardPaths::findExecutable(u"pdftotext"_s),
                            { que < 3 ? ruta : printer.outputFileName(), u"-"_s });
            QVERIFY(pdftotext.waitForFinished());
            texto = QString::fromUtf8(pdftotext.readAllStandardOutput());
            QCOMPARE(texto.count(u'\f'), paginas);
        }
        for (const QString &t : textos.split(u'|', Qt::SkipEmptyParts))
            QVERIFY2(texto.contains(t.mid(t.startsWith(u'!'))) != t.startsWith(u'!'), qPrintable(t));
    }
};

QTEST_MAIN(tst_Salida)
#include "tst_salida.moc"
