#include <tarvonix/model/ubicacion.h>

#include "modeltest.h"

using namespace tarvonix;

class tst_Ubicacion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commonField_data()
    {
        // Black, not white, to start with.
        modeltest::commonField_data({{"tipo", false, "U"}, {"xy", false, 0}, {"anchoAlto", false, 0},
                                     {"forma", true, 0}, {"imagen", false, false}, {"tag", true, QVariant()},
                                     {"color", true, 0}, {"tip", true, QString()},
                                     {"referencias", false, false}, {"puedeContener", false, 0}});
    }
    void commonField() { modeltest::commonField(std::make_shared<Ubicacion>()); }
};

QTEST_GUILESS_MAIN(tst_Ubicacion)
#include "tst_ubicacion.moc"
