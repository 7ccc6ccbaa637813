#include <tarvonix/model/escala.h>

#include "modeltest.h"

using namespace tarvonix;

class tst_Escala : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commonField_data()
    {
        modeltest::commonField_data({{"tipo", false, "E"}, {"xy", false, 0}, {"anchoAlto", false, 0},
                                     {"forma", false, 0}, {"imagen", false, false}, {"tag", false, QVariant()},
                                     {"color", false, 0}, {"tip", false, QString()},
                                     {"referencias", false, false}, {"puedeContener", false, 0}});
    }
    void commonField() { modeltest::commonField(std::make_shared<Escala>()); }
};

QTEST_GUILESS_MAIN(tst_Escala)
#include "tst_escala.moc"
