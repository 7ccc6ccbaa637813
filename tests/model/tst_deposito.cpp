#include <tarvonix/model/deposito.h>

#include "modeltest.h"

using namespace tarvonix;

class tst_Deposito : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commonField_data()
    {
        modeltest::commonField_data({{"tipo", false, "D"}, {"xy", true, 0}, {"anchoAlto", true, 0},
                                     {"forma", true, 0}, {"imagen", true, false}, {"tag", true, QVariant()},
                                     {"color", true, 0xFFFFFF}, {"tip", true, QString()},
                                     {"referencias", true, false}, {"puedeContener", false, 0}});
    }
    void commonField() { modeltest::commonField(std::make_shared<Deposito>()); }
};

QTEST_GUILESS_MAIN(tst_Deposito)
#include "tst_deposito.moc"
