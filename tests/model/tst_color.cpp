// SPDX-License-Identifier: MIT
#include <tarvonix/model/color.h>

#include "modeltest.h"

using namespace tarvonix;

class tst_Color : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void esColorClaro_data()
    {
        QTest::addColumn<qint32>("colour");
        QTest::addColumn<bool>("light");
        QTest::newRow("green 149.685") << 0x00FF00 << false;
        QTest::newRow("yellow") << 0x00FFFF << true;
        QTest::newRow("exactly 150") << 0x50F000 << true;
        QTest::newRow("just below") << 0x4FF000 << false;
        QTest::newRow("system colour") << qint32(0x80000012) << false; // meaningless channels, no crash
    }
    void esColorClaro()
    {
        QFETCH(qint32, colour);
        QFETCH(bool, light);
        QCOMPARE(Color::esColorClaro(colour), light);
    }

    void sombrearColor_data()
    {
        QTest::addColumn<qint32>("colour");
        QTest::addColumn<double>("factor");
        QTest::addColumn<qint32>("result"); // 0 with an overflowing factor: the call fails
        QTest::newRow("darker") << 0x808080 << 0.5 << 0x404040;
        QTest::newRow("past white") << 0x808080 << 2.5 << 0xFFFFFF;
        QTest::newRow("one channel past 255") << 0x2000FF << 1.5 << 0x3000FF;
        QTest::newRow("cut, not rounded") << 0x102030 << 0.999 << 0x0F1F2F;
        QTest::newRow("negative factor") << 0x000001 << -1.0 << -1; // only channels above 255 are cut
        QTest::newRow("overflow") << 0x808080 << -1e300 << 0;
    }
    void sombrearColor()
    {
        QFETCH(qint32, colour);
        QFETCH(double, factor);
        QFETCH(qint32, result);
        if (result)
            QCOMPARE(Color::sombrearColor(colour, factor), result);
        else
            QCOMPARE(modeltest::failureOf([&] { Color::sombrearColor(colour, factor); }),
                     int(Error::Overflow));
    }
};

QTEST_GUILESS_MAIN(tst_Color)
#include "tst_color.moc"
