#include <QTest>
class tst_Referencias : public QObject
{
    Q_OBJECT
};
QTEST_GUILESS_MAIN(tst_Referencias)
#include "tst_referencias.moc"
