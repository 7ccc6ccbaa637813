#include <tarvonix/model/lote.h>

#include "modeltest.h"

using namespace tarvonix;

class tst_Lote : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commonField_data()
    {
        modeltest::commonField_data({{"tipo", false, "L"}, {"xy", true, 0}, {"anchoAlto", true, 0},
                                     {"forma", true, 0}, {"imagen", true, false}, {"tag", true, QVariant()},
                                     {"color", true, 0xFFFFFF}, {"tip", true, QString()},
                                     {"referencias", false, false}, {"puedeContener", false, 0}});
    }
    void commonField() { modeltest::commonField(std::make_shared<Lote>()); }

    void newBatchInternoIsZero()
    {
        Lote l;
        QCOMPARE(l.getInterno(), QStringLiteral("0")); // the text "0", not an empty one
        QCOMPARE(l.getEstado(), QString());
    }
};

QTEST_GUILESS_MAIN(tst_Lote)
#include "tst_lote.moc"
