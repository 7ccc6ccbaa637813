#include <tarvonix/model/formato.h>
#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/model/objeto.h>

#include "modeltest.h"

using namespace tarvonix;

namespace {
// A container that writes down every operation called on it.
class RecordingContenedor : public IContenedorX
{
public:
    QStringList calls;
    ObjetoPtr referencia;

    void setObjeto(const ObjetoPtr &) override { calls << "setObjeto"; }
    ObjetoPtr getObjeto() override { return calls << "getObjeto", nullptr; }
    void setRoot(IMapaX *) override { calls << "setRoot"; }
    void setActivo(const ObjetoPtr &, bool) override { calls << "setActivo"; }
    std::shared_ptr<Objetos> getSeleccionados() override { return calls << "getSeleccionados", nullptr; }
    void refrescar() override { calls << "refrescar"; }
    void setEscala(float) override { calls << "setEscala"; }
    void setBloqueo(bool) override { calls << "setBloqueo"; }
    void alinearHorizontal(const ObjetoPtr &r) override { calls << "alinearHorizontal", referencia = r; }
    void alinearVertical(const ObjetoPtr &) override { calls << "alinearVertical"; }
    void igualarDimension(const ObjetoPtr &) override { calls << "igualarDimension"; }
    void distribuirHorizontal() override { calls << "distribuirHorizontal"; }
    void distribuirVertical() override { calls << "distribuirVertical"; }
    void seleccionarTodos() override { calls << "seleccionarTodos"; }
    void deseleccionarTodos() override { calls << "deseleccionarTodos"; }
    void seleccionar(const QString &) override { calls << "seleccionar"; }
};
} // namespace

class tst_formato : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void forwardsTheAlignmentOnly()
    {
        RecordingContenedor frame;
        const ObjetoPtr ejemplo = std::make_shared<Objeto>();
        formato().alinearHorizontal(&frame, ejemplo);
        QCOMPARE(frame.calls, QStringList { "alinearHorizontal" });
        QCOMPARE(frame.referencia, ejemplo);
        formato().alinearHorizontal(&frame, nullptr); // the container decides what none means
        QCOMPARE(frame.calls.size(), 2);
        QVERIFY(!frame.referencia);
        QCOMPARE(modeltest::failureOf([&] { formato().alinearHorizontal(nullptr, ejemplo); }),
                 int(Error::ObjectNotSet));
    }
};

QTEST_GUILESS_MAIN(tst_formato)
#include "tst_formato.moc"
