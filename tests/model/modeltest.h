#ifndef TARVONIX_TESTS_MODELTEST_H
#define TARVONIX_TESTS_MODELTEST_H

#include <tarvonix/core/error.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/referencias.h>

#include <QHash>
#include <QTest>

#include <functional>

// Helpers shared by the tests of the map object model.
namespace modeltest {

//! The code of the failure \a operation ends with, or 0 when it ends normally.
inline int failureOf(const std::function<void()> &operation)
{
    try {
        operation();
    } catch (const tarvonix::Error &error) {
        return error.code();
    }
    return 0;
}

inline tarvonix::ObjetoPtr objeto(const QString &codigo)
{
    auto o = std::make_shared<tarvonix::Objeto>();
    o->setCodigo(codigo);
    return o;
}

/*
    The matrix of common fields that a kind stores or answers fixed. A kind's
    test lists per field whether it is stored and what a new object answers;
    commonField() writes a probe through IObjeto and reads it back: a stored
    field answers the probe, a fixed one still its first answer.
*/
struct Field
{
    std::function<void(tarvonix::IObjeto &)> store;
    std::function<QVariant(const tarvonix::IObjeto &)> read;
    QVariant probe;
};

inline const QHash<QString, Field> &fields()
{
    using tarvonix::IObjeto;
    static const QHash<QString, Field> all = {
        { "tipo",
          { [](IObjeto &o) { o.setTipo("Z"); }, [](const IObjeto &o) { return QVariant(o.getTipo()); },
            "Z" } },
        { "xy",
          { [](IObjeto &o) { o.setX(7), o.setY(8); },
            [](const IObjeto &o) { return QVariant(o.getX() * 100 + o.getY()); }, 708 } },
        { "anchoAlto",
          { [](IObjeto &o) { o.setAncho(-5), o.setAlto(-6); },
            [](const IObjeto &o) { return QVariant(o.getAncho() * 100 + o.getAlto()); }, -506 } },
        { "forma",
          { [](IObjeto &o) { o.setForma(3); }, [](const IObjeto &o) { return QVariant(int(o.getForma())); },
            3 } },
        { "imagen",
          { [](IObjeto &o) { o.setImagen(std::make_shared<tarvonix::Imagen>()); },
            [](const IObjeto &o) { return QVariant(bool(o.getImagen())); }, true } },
        { "tag",
          { [](IObjeto &o) { o.setTag("etiqueta"); }, [](const IObjeto &o) { return o.getTag(); },
            "etiqueta" } },
        { "color",
          { [](IObjeto &o) { o.setColor(0x123456); }, [](const IObjeto &o) { return QVariant(o.getColor()); },
            0x123456 } },
        { "tip",
          { [](IObjeto &o) { o.setTip(" ayuda "); }, [](const IObjeto &o) { return QVariant(o.getTip()); },
            " ayuda " } },
        { "referencias",
          { [](IObjeto &o) { o.setReferencias(std::make_shared<tarvonix::Referencias>()); },
            [](const IObjeto &o) { return QVariant(bool(o.getReferencias())); }, true } },
        { "puedeContener",
          { [](IObjeto &o) { o.setPuedeContener(true); },
            [](const IObjeto &o) { return QVariant(o.getPuedeContener() * 10 + bool(o.getObjetos())); },
            11 } },
        { "padreYFlags", // stored by every kind
          { [](IObjeto &o) {
               o.setPadre("P1"), o.setSeleccionado(true), o.setActivo(true), o.setEmpresa(-32768);
           },
            [](const IObjeto &o) {
                return QVariant(QStringLiteral("%1 %2 %3 %4")
                                    .arg(o.getPadre())
                                    .arg(o.getSeleccionado())
                                    .arg(o.getActivo())
                                    .arg(o.getEmpresa()));
            },
            "P1 1 1 -32768" } },
    };
    return all;
}

inline void commonField_data(const QList<std::tuple<const char *, bool, QVariant>> &rows)
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("stored");
    QTest::addColumn<QVariant>("initial");
    for (const auto &[field, stored, initial] : rows)
        QTest::newRow(field) << QString::fromLatin1(field) << stored << initial;
    QTest::newRow("padreYFlags") << QStringLiteral("padreYFlags") << true << QVariant(" 0 0 0");
}

inline void commonField(const tarvonix::ObjetoPtr &objeto)
{
    QFETCH(QString, field);
    QFETCH(bool, stored);
    QFETCH(QVariant, initial);
    const Field &f = fields()[field];
    QCOMPARE(f.read(*objeto), initial);
    f.store(*objeto);
    QCOMPARE(f.read(*objeto), stored ? f.probe : initial);
}

} // namespace modeltest

#endif
