#include <tarvonix/model/caster.h>
#include <tarvonix/model/deposito.h>
#include <tarvonix/model/escala.h>
#include <tarvonix/model/lote.h>
#include <tarvonix/model/objeto.h>
#include <tarvonix/model/pierna.h>
#include <tarvonix/model/ubicacion.h>

#include <QTest>

using namespace tarvonix;

class tst_Caster : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void castsToTheKindOnly_data()
    {
        QTest::addColumn<ObjetoPtr>("objeto");
        QTest::addColumn<QString>("kind"); // the one cast that succeeds, by kind letter
        QTest::newRow("Deposito") << ObjetoPtr(std::make_shared<Deposito>()) << "D";
        QTest::newRow("Lote") << ObjetoPtr(std::make_shared<Lote>()) << "L";
        QTest::newRow("Ubicacion") << ObjetoPtr(std::make_shared<Ubicacion>()) << "U";
        QTest::newRow("Escala") << ObjetoPtr(std::make_shared<Escala>()) << "E";
        QTest::newRow("Pierna") << ObjetoPtr(std::make_shared<Pierna>()) << "P";
        auto disfrazado = std::make_shared<Objeto>();
        disfrazado->setTipo(QStringLiteral("D")); // a plain object that calls itself a vessel
        QTest::newRow("Objeto") << ObjetoPtr(disfrazado) << QString();
        QTest::newRow("none") << ObjetoPtr() << QString();
    }
    void castsToTheKindOnly()
    {
        QFETCH(ObjetoPtr, objeto);
        QFETCH(QString, kind);
        const std::pair<QString, ObjetoPtr> casts[] = {
            {"D", Caster::toDeposito(objeto)}, {"L", Caster::toLote(objeto)}, {"U", Caster::toUbicacion(objeto)},
            {"E", Caster::toEscala(objeto)}, {"P", Caster::toPierna(objeto)}};
        for (const auto &[letter, cast] : casts)
            QCOMPARE(cast, letter == kind ? objeto : ObjetoPtr());
        if (!kind.isEmpty())
            QCOMPARE(objeto->getTipo(), kind);
    }
};

QTEST_GUILESS_MAIN(tst_Caster)
#include "tst_caster.moc"
