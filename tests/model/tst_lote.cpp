#include <tarvonix/model/lote.h>

#include "modeltest.h"

using namespace tarvonix;

class tst_Lote : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newBatchInternoIsZero()
    {
        Lote l;
        QCOMPARE(l.getInterno(), QStringLiteral("0")); // the text "0", not an empty one
        QCOMPARE(l.getEstado(), QString());
    }
};

QTEST_GUILESS_MAIN(tst_Lote)
#include "tst_lote.moc"
