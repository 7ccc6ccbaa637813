// Times the layout operations of a free-layout container holding many
// selected children: the two distributions (which sort the selection and fit
// the control after every object they move), an alignment, and for scale a
// full paint and a sweep of hit-tests.
//
//     bench_distribuir [number of children, default 10000]

#include <tarvonix/containers/contenedorx.h>
#include <tarvonix/views/imapax.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTextStream>
#include <QWidget>

#include <functional>

using namespace tarvonix;

namespace {

// The frame members a container calls; nothing else.
class Marco : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool pActive READ pActive)

public:
    bool pActive() const { return true; }
    Q_INVOKABLE tarvonix::ObjetoPtr setActive(const tarvonix::ObjetoPtr &obj) { return obj; }
    Q_INVOKABLE void Resize(QWidget *) { ++resizes; }

    int resizes = 0;
};

// A root that only counts what it is told.
class Raiz : public IMapaX
{
public:
    void clicked(const ObjetoPtr &, bool) override { }
    void rightClicked(const ObjetoPtr &, bool) override { }
    void droped(const QString &, const ObjetoPtr &, qint32) override { }
    void moved(const ObjetoPtr &) override { ++movidos; }
    void setActive(const ObjetoPtr &, IContenedorX *, qint16) override { }
    void ensureVisible(QWidget *) override { }
    void remove(const ObjetoPtr &) override { }

    int movidos = 0;
};

double milisegundos(const std::function<void()> &operacion)
{
    QElapsedTimer reloj;
    reloj.start();
    operacion();
    return double(reloj.nsecsElapsed()) / 1.0e6;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int n = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 10000;
    QTextStream out(stdout);

    auto raiz = std::make_shared<Objeto>();
    raiz->setCodigo(QStringLiteral("NAVE"));
    raiz->setPuedeContener(true);
    QRandomGenerator azar(20240611);
    for (int i = 0; i < n; ++i) {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(QStringLiteral("D%1").arg(i));
        o->setPadre(raiz->getCodigo());
        o->setX(qint16(azar.bounded(30000)));
        o->setY(qint16(azar.bounded(20000)));
        o->setAncho(qint16(1 + azar.bounded(5)));
        o->setAlto(qint16(1 + azar.bounded(5)));
        o->setForma(qint16(1 + i % 3));
        o->setColor(qint32(azar.bounded(0x1000000)));
        o->setTip(QString::number(i));
        raiz->getObjetos()->add(o);
    }

    Marco marco;
    Raiz mapa;
    auto *cont = new ContenedorX(&marco);
    cont->setRoot(&mapa);
    cont->setObjeto(raiz);
    cont->setEscala(1);
    cont->setViewPort(0, 0, 32767, 32767);
    cont->seleccionarTodos();
    const int seleccionados = cont->getSeleccionados()->count();

    const double horizontal = milisegundos([&] { cont->distribuirHorizontal(); });
    const double vertical = milisegundos([&] { cont->distribuirVertical(); });
    const int movidos = mapa.movidos;
    const double alineacion = milisegundos([&] { cont->alinearHorizontal(raiz->getObjetos()->Item(1)); });
    const double pintura = milisegundos([&] { cont->grab(QRect(0, 0, 2000, 2000)); });
    const double golpes = milisegundos([&] {
        for (int i = 0; i < 100; ++i)
            cont->sobreQuien(float(i * 300), float(i * 200));
    });

    out << "children selected:            " << seleccionados << '\n'
        << "distribuirHorizontal:         " << horizontal << " ms\n"
        << "distribuirVertical:           " << vertical << " ms\n"
        << "objects reported moved:       " << movidos << '\n'
        << "alinearHorizontal:            " << alineacion << " ms\n"
        << "paint of 2000 x 2000 pixels:  " << pintura << " ms\n"
        << "100 hit-tests:                " << golpes << " ms\n"
        << "control size:                 " << cont->width() << " x " << cont->height() << '\n';
    return 0;
}

#include "bench_distribuir.moc"
