#include <tarvonix/model/formato.h>
#include <tarvonix/model/icontenedorx.h>

#include "modeltest.h"

using namespace tarvonix;

namespace {
// Keeps the references alinearHorizontal receives; any other operation is a stray call.
struct Contenedor : IContenedorX
{
    QList<ObjetoPtr> alineados;
    int otras = 0;
    void alinearHorizontal(const ObjetoPtr &r) override { alineados << r; }
    void setObjeto(const ObjetoPtr &) override { ++otras; }
    ObjetoPtr getObjeto() override { return ++otras, nullptr; }
    void setRoot(IMapaX *) override { ++otras; }
    void setActivo(const ObjetoPtr &, bool) override { ++otras; }
    std::shared_ptr<Objetos> getSeleccionados() override { return ++otras, nullptr; }
    void refrescar() override { ++otras; }
    void setEscala(float) override { ++otras; }
    void setBloqueo(bool) override { ++otras; }
    void alinearVertical(const ObjetoPtr &) override { ++otras; }
    void igualarDimension(const ObjetoPtr &) override { ++otras; }
    void distribuirHorizontal() override { ++otras; }
    void distribuirVertical() override { ++otras; }
    void seleccionarTodos() override { ++otras; }
    void deseleccionarTodos() override { ++otras; }
    void seleccionar(const QString &) override { ++otras; }
};
} // namespace

class tst_formato : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void forwardsTheAlignmentOnly()
    {
        Contenedor frame;
        const ObjetoPtr ejemplo = modeltest::objeto("ejemplo");
        formato().alinearHorizontal(&frame, ejemplo);
        formato().alinearHorizontal(&frame, nullptr); // the container decides what none means
        QCOMPARE(frame.alineados, QList<ObjetoPtr>({ ejemplo, nullptr }));
        QCOMPARE(frame.otras, 0);
        QCOMPARE(modeltest::failureOf([&] { formato().alinearHorizontal(nullptr, ejemplo); }),
                 int(Error::ObjectNotSet));
    }
};

QTEST_GUILESS_MAIN(tst_formato)
#include "tst_formato.moc"
