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

/*
    A common field as the table probes it: store() writes through IObjeto and
    read() reads back; a field that the kind stores then answers probe, a fixed
    one still answers its initial value.
*/
struct Field
{
    const char *name;
    bool everyKind; // stored by every kind
    std::function<void(IObjeto &)> store;
    std::function<QVariant(const IObjeto &)> read;
    QVariant probe;
    QVariant initial; // tipo and color start as the kind says
};

const QList<Field> &fields()
{
    static const QList<Field> all = {
        { "tipo", false, [](IObjeto &o) { o.setTipo("Z"); },
          [](const IObjeto &o) { return QVariant(o.getTipo()); }, "Z", QVariant() },
        { "codigo", true, [](IObjeto &o) { o.setCodigo(" D 1 "); }, // kept as given
          [](const IObjeto &o) { return QVariant(o.getCodigo()); }, " D 1 ", QString() },
        { "descripcion", true, [](IObjeto &o) { o.setDescripcion("  Depósito Ñ 酒 "); }, // spaces trimmed
          [](const IObjeto &o) { return QVariant(o.getDescripcion()); }, QStringLiteral("Depósito Ñ 酒"),
          QString() },
        { "empresa", true, [](IObjeto &o) { o.setEmpresa(-32768); },
          [](const IObjeto &o) { return QVariant(int(o.getEmpresa())); }, -32768, 0 },
        { "padre", true, [](IObjeto &o) { o.setPadre("P1"); },
          [](const IObjeto &o) { return QVariant(o.getPadre()); }, "P1", QString() },
        { "seleccionado", true, [](IObjeto &o) { o.setSeleccionado(true); },
          [](const IObjeto &o) { return QVariant(o.getSeleccionado()); }, true, false },
        { "activo", true, [](IObjeto &o) { o.setActivo(true); },
          [](const IObjeto &o) { return QVariant(o.getActivo()); }, true, false },
        { "xy", false, [](IObjeto &o) { o.setX(7), o.setY(8); },
          [](const IObjeto &o) { return QVariant(o.getX() * 100 + o.getY()); }, 708, 0 },
        { "anchoAlto", false, [](IObjeto &o) { o.setAncho(-5), o.setAlto(-6); },
          [](const IObjeto &o) { return QVariant(o.getAncho() * 100 + o.getAlto()); }, -506, 0 },
        { "forma", false, [](IObjeto &o) { o.setForma(3); },
          [](const IObjeto &o) { return QVariant(int(o.getForma())); }, 3, 0 },
        { "imagen", false, [](IObjeto &o) { o.setImagen(std::make_shared<Imagen>()); },
          [](const IObjeto &o) { return QVariant(bool(o.getImagen())); }, true, false },
        { "tag", false, [](IObjeto &o) { o.setTag("etiqueta"); }, [](const IObjeto &o) { return o.getTag(); },
          "etiqueta", QVariant() },
        { "color", false, [](IObjeto &o) { o.setColor(0x123456); },
          [](const IObjeto &o) { return QVariant(o.getColor()); }, 0x123456, QVariant() },
        { "tip", false, [](IObjeto &o) { o.setTip(" ayuda "); },
          [](const IObjeto &o) { return QVariant(o.getTip()); }, " ayuda ", QString() },
        { "referencias", false, [](IObjeto &o) { o.setReferencias(std::make_shared<Referencias>()); },
          [](const IObjeto &o) { return QVariant(bool(o.getReferencias())); }, true, false },
        { "puedeContener", false, [](IObjeto &o) { o.setPuedeContener(true); },
          [](const IObjeto &o) { return QVariant(o.getPuedeContener()); }, true, false },
        { "objetos", false, [](IObjeto &o) { o.setPuedeContener(true); },
          [](const IObjeto &o) { return QVariant(bool(o.getObjetos())); }, true, false },
    };
    return all;
}

// What sets a kind apart: its fixed kind letter (none: tipo is stored), its
// first colour and the fields it stores besides those that every kind stores.
struct Kind
{
    const char *name;
    std::function<ObjetoPtr()> make;
    QString tipo;
    qint32 color;
    QStringList stored;
};

template<typename T> ObjetoPtr make()
{
    return std::make_shared<T>();
}

} // namespace

class tst_ObjetoComun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commonField_data()
    {
        const QStringList drawn = { "xy", "anchoAlto", "forma", "imagen", "tag", "color", "tip" };
        const Kind kinds[] = {
            { "Objeto", make<Objeto>, QString(), 0xFFFFFF,
              drawn + QStringList { "tipo", "referencias", "puedeContener", "objetos" } },
            { "Deposito", make<Deposito>, "D", 0xFFFFFF, drawn + QStringList { "referencias" } },
            { "Lote", make<Lote>, "L", 0xFFFFFF, drawn },
            { "Escala", make<Escala>, "E", 0, {} },
            { "Ubicacion", make<Ubicacion>, "U", 0, { "forma", "tag", "color", "tip" } }, // black, not white
            { "Pierna", make<Pierna>, "P", 0xFFFFFF, drawn + QStringList { "referencias" } },
        };
        QTest::addColumn<ObjetoPtr>("objeto");
        QTest::addColumn<int>("field");
        QTest::addColumn<bool>("stored");
        QTest::addColumn<QVariant>("initial");
        for (const Kind &kind : kinds) {
            for (int i = 0; i < fields().size(); ++i) {
                const Field &f = fields().at(i);
                const QString name = QString::fromLatin1(f.name);
                if (kind.tipo == QLatin1String("P") && name == QLatin1String("objetos"))
                    continue; // a leg's children come from its grid (tst_pierna)
                const QVariant initial = name == "tipo" ? QVariant(kind.tipo)
                    : name == "color"                   ? QVariant(kind.color)
                                                        : f.initial;
                QTest::addRow("%s/%s", kind.name, f.name)
                    << kind.make() << i << (f.everyKind || kind.stored.contains(name)) << initial;
            }
        }
    }
    void commonField()
    {
        QFETCH(ObjetoPtr, objeto);
        QFETCH(int, field);
        QFETCH(bool, stored);
        QFETCH(QVariant, initial);
        const Field &f = fields().at(field);
        QCOMPARE(f.read(*objeto), initial);
        f.store(*objeto);
        QCOMPARE(f.read(*objeto), stored ? f.probe : initial);
    }

    void geometryClamping_data()
    {
        QTest::addColumn<qint16>("value");
        QTest::addColumn<qint16>("xy"); // x and y never go below 0; ancho and alto keep any value
        QTest::newRow("-5") << qint16(-5) << qint16(0);
        QTest::newRow("min") << qint16(-32768) << qint16(0);
        QTest::newRow("max") << qint16(32767) << qint16(32767);
    }
    void geometryClamping()
    {
        QFETCH(qint16, value);
        QFETCH(qint16, xy);
        Objeto o;
        o.setX(value), o.setY(value), o.setAncho(value), o.setAlto(value);
        QCOMPARE(QList<qint16>({ o.getX(), o.getY(), o.getAncho(), o.getAlto() }),
                 QList<qint16>({ xy, xy, value, value }));
    }

    void texts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("descripcion"); // codigo keeps the text as given
        QTest::newRow("tabs stay") << "\tcon tabulador\t"
                                   << "\tcon tabulador\t";
        QTest::newRow("only spaces") << "   " << QString();
        QTest::newRow("long") << QString(100000, QChar(u'酒')) << QString(100000, QChar(u'酒'));
    }
    void texts()
    {
        QFETCH(QString, text);
        QFETCH(QString, descripcion);
        Objeto o;
        o.setDescripcion(text);
        o.setCodigo(text);
        QCOMPARE(o.getDescripcion(), descripcion);
        QCOMPARE(o.getCodigo(), text);
    }

    void puedeContenerStartsEmptyEveryTime()
    {
        Objeto o;
        o.setPuedeContener(true);
        const auto first = o.getObjetos();
        first->add(modeltest::objeto("a"));
        first->add(modeltest::objeto("b"));
        o.setSeleccionado(true); // nothing reaches the children
        QVERIFY(!first->Item(1)->getSeleccionado());
        o.setPuedeContener(true);
        QCOMPARE(o.getObjetos()->count(), 0);
        QCOMPARE(first->count(), 2); // whoever holds the old collection keeps it
        o.setPuedeContener(false);
        QVERIFY(!o.getObjetos());
    }

    void loteInternoStartsAsZero()
    {
        QCOMPARE(Lote().getInterno(), QStringLiteral("0")); // the text "0", not an empty one
    }

    void tagSharesObjects()
    {
        Objeto o;
        auto otro = modeltest::objeto("antes");
        o.setTag(QVariant::fromValue(otro));
        otro->setCodigo("después");
        QCOMPARE(o.getTag().value<ObjetoPtr>()->getCodigo(), QStringLiteral("después"));
    }
};

QTEST_GUILESS_MAIN(tst_ObjetoComun)
#include "tst_objetocomun.moc"
