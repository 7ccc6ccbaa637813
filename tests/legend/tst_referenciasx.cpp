// SPDX-License-Identifier: MIT
#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciasx.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/platform/colorconversion.h>

#include "../widgets/propertykeys.h"
#include "errorcatcher.h"
#include "pixels.h"

#include <QSignalSpy>

using namespace tarvonix;
using namespace Qt::StringLiterals;

namespace {

using Claves = QList<std::pair<QString, QString>>;

// A list of keys, each with its own colour, from (clave, texto) pairs.
std::shared_ptr<Referencias> lista(const Claves &claves)
{
    auto referencias = std::make_shared<Referencias>();
    qint32 color = 0x000080;
    for (const auto &[clave, texto] : claves)
        referencias->add(clave, texto, color += 0x002000);
    return referencias;
}

// The rows the list holds now; rows removed earlier are gone once deferred deletes have run.
QList<ReferenciaX *> rows(ReferenciasX &list)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return list.findChildren<ReferenciaX *>(QString(), Qt::FindDirectChildrenOnly);
}

// A widget that takes a row's clicks and fails on every one.
class FailingHolder : public QWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE void Click(const std::shared_ptr<tarvonix::Referencia> &) { ++calls, throw Error(Error::InvalidArgument); }
    int calls = 0;
};

} // namespace

// The legend: a row (ReferenciaX) shows one colour key, the list (ReferenciasX) stacks a row per key.
class tst_ReferenciasX : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowDrawsBoxAndText()
    {
        ErrorCatcher errors; // nothing to draw is no failure either
        ReferenciaX row;
        const QColor back(255, 255, 128);
        const QString texto = u"Depósito Ñ"_s;
        QFont font = row.font();
        font.setPointSize(13), row.setFont(font);
        row.setBackColor(0x80FFFF), row.resize(5, 31); // an odd height
        row.setReferencia(std::make_shared<Referencias>()->add(u"k"_s, texto, 0xFF0000));
        const QFontMetrics metrics(font);
        QCOMPARE(row.size(), QSize(metrics.horizontalAdvance(texto) + 31, 31));
        QVERIFY(row.toolTip() == texto && row.accessibleName() == texto);
        const QImage image = pixels::grab(&row);
        const QColor fore = toQColor(row.ForeColor(), row.palette());
        // The box spans x 7..16 and ten pixels from (31 - 10) / 2: outlined in the fore colour, filled with the key's.
        const QRect caja(6, Surface::pixel(10.5) - 1, 12, 12);
        QCOMPARE(pixels::count(image, caja, fore), 36);
        QCOMPARE(pixels::count(image, caja.adjusted(2, 2, -2, -2), Qt::blue), 64);
        // The text at x 24, centred on the height of an "X", and nothing between the box and the text.
        QVERIFY(pixels::showsText(image, QPoint(24, Surface::pixel((31 - metrics.height()) / 2.0)), texto, font, fore, back));
        QCOMPARE(pixels::ink(image, QRect(18, 0, 6, 31), back), 0);
        row.setForeColor(0x0000C0);
        QCOMPARE(pixels::count(pixels::grab(&row), caja, QColor(0xC0, 0, 0)), 36);
        // A none key is kept (the row goes blank) and reported to the caller.
        QVERIFY_THROWS_EXCEPTION(Error, row.setReferencia(nullptr));
        QVERIFY(!row.referencia());
        QCOMPARE(pixels::ink(pixels::grab(&row), row.rect(), back), 0);
        QVERIFY(errors.messages().isEmpty());
    }

    void rowsAreStackedClickedAndRebuilt_data()
    {
        QTest::addColumn<int>("borde");
        QTest::newRow("no border") << 0;
        QTest::newRow("border") << 1;
    }
    void rowsAreStackedClickedAndRebuilt()
    {
        QFETCH(int, borde);
        ErrorCatcher errors;
        ReferenciasX list;
        QFont font = list.font();
        font.setPointSize(13), font.setBold(true), list.setFont(font);
        list.setBorderStyle(qint16(borde)), list.setForeColor(0x0000FF), list.show();
        QSignalSpy resized(&list, &ReferenciasX::Resize), clicks(&list, &ReferenciasX::Click), doubles(&list, &ReferenciasX::DblClick);
        const Claves claves { { "1", "Tinto" }, { "Ñ酒", "Depósito Ñ 酒, rosado de la bodega" }, { "B", "Blanco" } };
        const auto referencias = lista(claves);
        list.setReferencias(referencias);
        QCOMPARE(resized.count(), 1);
        const int widest = QFontMetrics(font).horizontalAdvance(claves[1].second) + 31; // the longest text
        QCOMPARE(list.size(), QSize(widest + 2 * borde, 72 + 2 * borde));
        for (int k = 0; k < 3; ++k) {
            ReferenciaX *row = list.findChild<ReferenciaX *>("R" + claves[k].first);
            QVERIFY(row && !row->isHidden());
            QCOMPARE(row->geometry(), QRect(borde, borde + 24 * k, widest, 24));
            QCOMPARE(row->font(), font);
            QCOMPARE(row->referencia(), referencias->find(claves[k].first));
        }
        // The border, in the fore colour, surrounds the rows.
        const QImage image = list.grab().toImage();
        for (const QPoint &p : { QPoint(0, 0), QPoint(widest - 1 + 2 * borde, 30), QPoint(10, 71 + 2 * borde), QPoint(0, 30) })
            QCOMPARE(image.pixel(p) == qRgb(255, 0, 0), bool(borde));
        // Clicks and double clicks on a row are raised with its key; a right click is none.
        QTest::mouseClick(list.findChild<ReferenciaX *>("RB"), Qt::LeftButton, {}, QPoint(5, 12));
        QTest::mouseClick(list.findChild<ReferenciaX *>("RB"), Qt::RightButton);
        QTest::mouseDClick(list.findChild<ReferenciaX *>("R1"), Qt::LeftButton);
        const auto clave = [](const QSignalSpy &spy) { return spy.size() == 1 ? spy.first().first().value<std::shared_ptr<Referencia>>() : nullptr; };
        QCOMPARE(clave(clicks), referencias->find("B"));
        QCOMPARE(clave(doubles), referencias->find("1"));
        // A host that shows another list in answer to a click removes the clicked row under it; every list
        // rebuilds the rows, the old ones out of the way at once even under the same claves.
        const auto second = lista({ { "b", QString(u"x"_s).repeated(300) } });
        connect(&list, &ReferenciasX::Click, &list, [&] { list.setReferencias(second); });
        QTest::mouseClick(list.findChild<ReferenciaX *>("R1"), Qt::LeftButton);
        QCOMPARE(rows(list).size() == 1 ? rows(list).first()->objectName() : QString(), u"Rb"_s);
        QCOMPARE(list.size(), QSize(QFontMetrics(font).horizontalAdvance(second->find("B")->getTexto()) + 31 + 2 * borde, 24 + 2 * borde));
        list.setReferencias(std::make_shared<Referencias>());
        QVERIFY(rows(list).isEmpty());
        QCOMPARE(list.size(), QSize(2 * borde, 2 * borde));
        QCOMPARE(resized.count(), 3); // raised for the empty list too
        list.setReferencias(second);
        QVERIFY_THROWS_EXCEPTION(Error, list.setReferencias(nullptr));
        QVERIFY(rows(list).isEmpty());
        // A row held by anything else calls its holder's members by name, and swallows what fails there.
        FailingHolder failing;
        const std::unique_ptr<ReferenciaX> row(new ReferenciaX(&failing));
        row->setReferencia(second->find(u"b"_s));
        QTest::mouseClick(row.get(), Qt::LeftButton);
        QTest::mouseDClick(row.get(), Qt::LeftButton); // it has no DblClick member
        row->setParent(nullptr); // alone, it has nothing to call
        QTest::mouseClick(row.get(), Qt::LeftButton);
        QCOMPARE(failing.calls, 1);
        QVERIFY(errors.messages().isEmpty());
    }

    void propertyKeysAndDefaults_data()
    {
        propertyKeyRows({ // the properties are named as their keys
                          { "BackColor", qint32(0xFFFFFF), qint32(0x00C0FF) },
                          { "BorderStyle", qint16(0), qint16(1) },
                          { "FontName", QVariant(), u"DejaVu Serif"_s },
                          { "FontBold", false, true },
                          { "FontSize", QVariant(), 14.5f },
                          { "ForeColor", qint32(0x80000012), qint32(0x800000) } });
    }
    void propertyKeysAndDefaults() { checkPropertyKey<ReferenciasX>(); }
};

QTEST_MAIN(tst_ReferenciasX)
#include "tst_referenciasx.moc"
