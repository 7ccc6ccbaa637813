// SPDX-License-Identifier: MIT
// Times the keyed collection behind Objetos at N and 10N objects, prints the
// exponent of N between the two sizes for every operation (1 is linear, 2 is
// quadratic), and the heap taken per plain Objeto held in an Objetos.
//
//     bench_modelo [N, default 10000] [runs, default 3]
//
// The times are the median of the runs. Heap is read with mallinfo2(), so the
// figure per object includes the allocator's own overhead.

#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <functional>
#include <malloc.h>
#include <vector>

using namespace tarvonix;

namespace {

struct Tiempos
{
    double agregar = 0;
    double buscar = 0;
    double quitarUnoAUno = 0;
    double quitarEnBloque = 0;
    double posiciones = 0;
};

double milisegundos(const std::function<void()> &operacion)
{
    QElapsedTimer reloj;
    reloj.start();
    operacion();
    return double(reloj.nsecsElapsed()) / 1.0e6;
}

std::vector<ObjetoPtr> crear(int n)
{
    std::vector<ObjetoPtr> objetos;
    objetos.reserve(size_t(n));
    for (int i = 0; i < n; ++i) {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(QStringLiteral("D%1").arg(i));
        o->setX(qint16(i % 30000));
        o->setY(qint16(i / 30000));
        o->setAncho(5);
        o->setAlto(5);
        objetos.push_back(std::move(o));
    }
    return objetos;
}

// Removes every object whose selected flag is set: in one pass where the
// collection offers one, else one by one as a caller would have to.
template<typename Coleccion>
void quitarSeleccionados(Coleccion &coleccion, const std::vector<ObjetoPtr> &objetos)
{
    if constexpr (requires { coleccion.removeIf([](const ObjetoPtr &) { return true; }); }) {
        coleccion.removeIf([](const ObjetoPtr &o) { return o->getSeleccionado(); });
    } else {
        for (const ObjetoPtr &o : objetos) {
            if (o->getSeleccionado())
                coleccion.remove(o);
        }
    }
}

Tiempos medir(int n)
{
    Tiempos t;
    const std::vector<ObjetoPtr> objetos = crear(n);
    QStringList claves; // looked up in another case than they were filed under
    for (const ObjetoPtr &o : objetos)
        claves.append(o->getCodigo().toLower());

    Objetos coleccion;
    t.agregar = milisegundos([&] {
        for (const ObjetoPtr &o : objetos)
            coleccion.add(o);
    });
    int hallados = 0;
    t.buscar = milisegundos([&] {
        for (const QString &clave : std::as_const(claves))
            hallados += coleccion.Item(clave) ? 1 : 0;
    });
    t.quitarUnoAUno = milisegundos([&] {
        for (int i = 0; i < n; i += 2)
            coleccion.remove(objetos[size_t(i)]);
    });
    qsizetype suma = 0;
    t.posiciones = milisegundos([&] {
        for (int i = 1; i <= coleccion.count(); ++i)
            suma += coleccion.Item(i)->getX();
    });

    Objetos otra;
    for (int i = 0; i < n; ++i) {
        objetos[size_t(i)]->setSeleccionado(i % 2 == 1);
        otra.add(objetos[size_t(i)]);
    }
    t.quitarEnBloque = milisegundos([&] { quitarSeleccionados(otra, objetos); });

    if (hallados != n || coleccion.count() != n / 2 || otra.count() != n - n / 2 || suma < 0)
        qFatal("bench_modelo: the collection lost track of its objects");
    return t;
}

Tiempos mediana(int n, int corridas)
{
    std::vector<Tiempos> todas;
    for (int i = 0; i < corridas; ++i)
        todas.push_back(medir(n));
    Tiempos m;
    for (double Tiempos::*campo : {&Tiempos::agregar, &Tiempos::buscar, &Tiempos::quitarUnoAUno,
                                   &Tiempos::quitarEnBloque, &Tiempos::posiciones}) {
        std::vector<double> valores;
        for (const Tiempos &t : todas)
            valores.push_back(t.*campo);
        std::sort(valores.begin(), valores.end());
        m.*campo = valores[valores.size() / 2];
    }
    return m;
}

// Heap growth per object for n objects created and filed in one Objetos.
double bytesPorObjeto(int n, bool conTextos)
{
    malloc_trim(0);
    const size_t antes = mallinfo2().uordblks;
    auto coleccion = std::make_unique<Objetos>();
    for (int i = 0; i < n; ++i) {
        auto o = std::make_shared<Objeto>();
        o->setCodigo(QStringLiteral("D%1").arg(i));
        o->setX(qint16(i % 30000));
        o->setY(qint16(i / 30000));
        o->setAncho(5);
        o->setAlto(5);
        if (conTextos) {
            o->setDescripcion(QStringLiteral("Depósito %1").arg(i));
            o->setTipo(QStringLiteral("D"));
        }
        coleccion->add(o);
    }
    const size_t despues = mallinfo2().uordblks;
    return double(despues - antes) / n;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int n = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 10000;
    const int corridas = argc > 2 ? std::max(1, QString::fromLocal8Bit(argv[2]).toInt()) : 3;
    QTextStream out(stdout);

    const Tiempos chico = mediana(n, corridas);
    const Tiempos grande = mediana(10 * n, corridas);

    out << "operation (median of " << corridas << ")" << qSetFieldWidth(14) << Qt::right
        << QStringLiteral("N=%1 ms").arg(n) << QStringLiteral("N=%1 ms").arg(10 * n) << "exponent"
        << qSetFieldWidth(0) << Qt::left << '\n';
    const auto fila = [&](const char *nombre, double Tiempos::*campo) {
        const double exponente = std::log10(std::max(grande.*campo, 1e-6) / std::max(chico.*campo, 1e-6));
        out << qSetFieldWidth(32) << nombre << qSetFieldWidth(14) << Qt::right << QString::number(chico.*campo, 'f', 2)
            << QString::number(grande.*campo, 'f', 2) << QString::number(exponente, 'f', 2) << qSetFieldWidth(0)
            << Qt::left << '\n';
    };
    fila("add N", &Tiempos::agregar);
    fila("look up N by key", &Tiempos::buscar);
    fila("remove half by key, one by one", &Tiempos::quitarUnoAUno);
    fila("Item(1..N/2) after removals", &Tiempos::posiciones);
    fila("bulk-remove half", &Tiempos::quitarEnBloque);

    out << "heap per plain Objeto in an Objetos (N=" << 10 * n
        << "): " << QString::number(bytesPorObjeto(10 * n, false), 'f', 1) << " B\n"
        << "  the same with descripcion and tipo set:    " << QString::number(bytesPorObjeto(10 * n, true), 'f', 1)
        << " B\n";
    return 0;
}
