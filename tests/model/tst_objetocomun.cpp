// SPDX-License-Identifier: MIT
#include <tarvonix/model/caster.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/model/ubicacion.h>

#include "modeltest.h"

using namespace tarvonix;

namespace {

// A common field as the table probes it: store writes through IObjeto and read reads back; a field
// that the kind stores then answers probe, a fixed one still answers its initial value.
struct Field
{
    const char *name;
    bool everyKind; // stored by every kind
    std::function<void(IObjeto &)> store;
    std::function<QVariant(const IObjeto &)> read;
    QVariant probe;
    QVariant initial; // tipo and color start as the kind says
};

// clang-format off
#define FIELD(name, every, store, read, probe, initial) \
    { name, every, [](IObjeto &o) { store; }, [](const IObjeto &o) { return QVariant(read); }, probe, initial }
// clang-format on

const QList<Field> fields = {
    FIELD("tipo", false, o.setTipo("Z"), o.getTipo(), "Z", {}),
    FIELD("codigo", true, o.setCodigo(" D 1 "), o.getCodigo(), " D 1 ", QString()), // kept as given
    FIELD("descripcion", true, o.setDescripcion("  Depósito Ñ 酒 "), o.getDescripcion(),
          QStringLiteral("Depósito Ñ 酒"), QString()), // spaces trimmed
    FIELD("empresa", true, o.setEmpresa(-32768), int(o.getEmpresa()), -32768, 0),
    FIELD("padre", true, o.setPadre("P1"), o.getPadre(), "P1", QString()),
    FIELD("seleccionado", true, o.setSeleccionado(true), o.getSeleccionado(), true, false),
    FIELD("activo", true, o.setActivo(true), o.getActivo(), true, false),
    FIELD("xy", false, (o.setX(7), o.setY(8)), o.getX() * 100 + o.getY(), 708, 0),
    FIELD("anchoAlto", false, (o.setAncho(-5), o.setAlto(-6)), o.getAncho() * 100 + o.getAlto(), -506, 0),
    FIELD("forma", false, o.setForma(3), int(o.getForma()), 3, 0),
    FIELD("imagen", false, o.setImagen(std::make_shared<Imagen>()), bool(o.getImagen()), true, false),
    FIELD("tag", false, o.setTag("etiqueta"), o.getTag(), "etiqueta", {}),
    FIELD("color", false, o.setColor(0x123456), o.getColor(), 0x123456, {}),
    FIELD("tip", false, o.setTip(" ayuda "), o.getTip(), " ayuda ", QString()),
    FIELD("referencias", false, o.setReferencias(std::make_shared<Referencias>()), bool(o.getReferencias()),
          true, false),
    FIELD("puedeContener", false, o.setPuedeContener(true), o.getPuedeContener(), true, false),
};

template<typename T> ObjetoPtr make()
{
    return std::make_shared<T>();
}

// What sets a kind apart: its fixed kind letter (none: tipo is stored), its
// first colour and the fields it stores besides those that every kind stores.
struct Kind
{
    const char *name;
    ObjetoPtr (*make)();
    QString tipo;
    qint32 color;
    QStringList stored;
};

const QStringList drawn = { "xy", "anchoAlto", "forma", "imagen", "tag", "color", "tip" };
const Kind kinds[] = {
    { "Objeto", make<Objeto>, QString(), 0xFFFFFF,
      drawn + QStringList { "tipo", "referencias", "puedeContener" } },
    { "Deposito", make<Deposito>, "D", 0xFFFFFF, drawn + QStringList { "referencias" } },
    { "Lote", make<Lote>, "L", 0xFFFFFF, drawn },
    { "Escala", make<Escala>, "E", 0, {} },
    { "Ubicacion", make<Ubicacion>, "U", 0, { "forma", "tag", "color", "tip" } }, // black, not white
    { "Pierna", make<Pierna>, "P", 0xFFFFFF, drawn + QStringList { "referencias" } },
};

} // namespace

class tst_ObjetoComun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commonField_data()
    {
        QTest::addColumn<ObjetoPtr>("objeto");
        QTest::addColumn<int>("field");
        QTest::addColumn<bool>("stored");
        QTest::addColumn<QVariant>("initial");
        for (const Kind &kind : kinds) {
            for (int i = 0; i < fields.size(); ++i) {
                const QString name = QString::fromLatin1(fields.at(i).name);
                const QVariant initial = name == "tipo" ? QVariant(kind.tipo)
                    : name == "color"                   ? QVariant(kind.color)
                                                        : fields.at(i).initial;
                QTest::addRow("%s/%s", kind.name, fields.at(i).name)
                    << kind.make() << i << (fields.at(i).everyKind || kind.stored.contains(name)) << initial;
            }
        }
    }
    void commonField()
    {
        QFETCH(ObjetoPtr, objeto);
        QFETCH(int, field);
        QFETCH(bool, stored);
        QFETCH(QVariant, initial);
        const Field &f = fields.at(field);
        QCOMPARE(f.read(*objeto), initial);
        f.store(*objeto);
        QCOMPARE(f.read(*objeto), stored ? f.probe : initial);
    }

    void castsToTheKindOnly_data()
    {
        QTest::addColumn<ObjetoPtr>("objeto");
        QTest::addColumn<QString>("kind"); // the one cast that succeeds, by kind letter
        for (const Kind &kind : kinds)
            QTest::newRow(kind.name) << kind.make() << kind.tipo;
        auto disfrazado = std::make_shared<Objeto>();
        disfrazado->setTipo("D"); // a plain object that calls itself a vessel
        QTest::newRow("disguised Objeto") << ObjetoPtr(disfrazado) << QString();
        QTest::newRow("none") << ObjetoPtr() << QString();
    }
    void castsToTheKindOnly()
    {
        QFETCH(ObjetoPtr, objeto);
        QFETCH(QString, kind);
        const QList<ObjetoPtr> casts
            = { Caster::toDeposito(objeto), Caster::toLote(objeto), Caster::toUbicacion(objeto),
                Caster::toEscala(objeto), Caster::toPierna(objeto) };
        for (int i = 0; i < casts.size(); ++i)
            QCOMPARE(casts.at(i), QStringLiteral("DLUEP").mid(i, 1) == kind ? objeto : ObjetoPtr());
    }

    void valuesOutsideTheUsualRange()
    {
        Objeto o;
        o.setX(-5), o.setY(-32768); // x and y never go below 0
        QCOMPARE(QPoint(o.getX(), o.getY()), QPoint(0, 0));
        for (auto [text, descripcion] :
             { std::pair { "\tcon tabulador\t", "\tcon tabulador\t" }, { "   ", "" } }) {
            o.setDescripcion(text); // only spaces are trimmed
            QCOMPARE(o.getDescripcion(), QString::fromUtf8(descripcion));
        }
        QCOMPARE(Lote().getInterno(), QStringLiteral("0")); // the text "0", not an empty one
    }

    void ownFieldsApart()
    {
        // Each field of a kind's own keeps what it was given, none written into another.
        Lote l;
        l.setReferencia("r"), l.setProducto("p"), l.setAnada(-3), l.setInterno("i"), l.setEstado("e");
        QCOMPARE(QStringList({ l.getReferencia(), l.getProducto(), QString::number(l.getAnada()),
                               l.getInterno(), l.getEstado() }),
                 QStringList({ "r", "p", "-3", "i", "e" }));
        Deposito d;
        d.setNumero(-70000), d.setProducto("p"), d.setMultiLote(true);
        QVERIFY(d.getNumero() == -70000 && d.getProducto() == "p" && d.getMultiLote());
        Ubicacion u;
        u.setConjunto("c"), u.setEscala(-2), u.setUbicacion(9);
        QVERIFY(u.getConjunto() == "c" && u.getEscala() == -2 && u.getUbicacion() == 9);
    }

    void puedeContenerStartsEmptyEveryTime()
    {
        Objeto o;
        o.setPuedeContener(true);
        const auto first = o.getObjetos();
        first->add(modeltest::objeto("a"));
        o.setSeleccionado(true); // nothing reaches the children
        QVERIFY(!first->Item(1)->getSeleccionado());
        o.setPuedeContener(true);
        QVERIFY(o.getObjetos()->count() == 0 && first->count() == 1); // the old collection stays whole
        o.setPuedeContener(false);
        QVERIFY(!o.getObjetos());
    }
};

QTEST_GUILESS_MAIN(tst_ObjetoComun)
#include "tst_objetocomun.moc"
