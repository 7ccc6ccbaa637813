#include <QTest>
class tst_PiernaX : public QObject { Q_OBJECT };
QTEST_MAIN(tst_PiernaX)
#include "tst_piernax.moc"
