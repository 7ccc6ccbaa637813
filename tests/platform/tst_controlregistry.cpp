// SPDX-License-Identifier: MIT
#include <tarvonix/core/error.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/controlregistry.h>

#include "../model/modeltest.h"

#include <QTest>

using namespace tarvonix;
using namespace Qt::StringLiterals;

using modeltest::failureOf;

class tst_ControlRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsRegistered_data()
    {
        QTest::addColumn<QString>("progId");
        QTest::addColumn<QString>("clase"); // none: an unknown class fails
        for (const char *nombre : { "MapaX", "FrameX", "FrameRefX", "ContenedorX", "PiernaX", "etiquetas",
                                    "Dummy", "ReferenciasX", "ReferenciaX" })
            QTest::newRow(nombre) << "Tarvonix."_L1 + QLatin1String(nombre)
                                  << "tarvonix::"_L1 + QLatin1String(nombre);
        QTest::newRow("letter case") << u"TARVONIX.DUMMY"_s << u"tarvonix::Dummy"_s;
        QTest::newRow("unknown") << u"Tarvonix.NoSuchControl"_s << QString();
    }
    void everyControlIsRegistered()
    {
        QFETCH(QString, progId);
        QFETCH(QString, clase);
        QWidget parent;
        QCOMPARE(ControlRegistry::instance().contains(progId), !clase.isEmpty());
        if (clase.isEmpty()) {
            QCOMPARE(failureOf([&] { ControlRegistry::instance().create(progId, &parent); }),
                     int(Error::InvalidArgument));
            return;
        }
        QWidget *control = ControlRegistry::instance().create(progId, &parent);
        QCOMPARE(QString::fromLatin1(control->metaObject()->className()), clase);
        QCOMPARE(control->parentWidget(), &parent);
    }

    void childControlsByName()
    {
        QWidget owner;
        ChildControls controls(&owner);
        QWidget *first = controls.add(u"Tarvonix.Dummy"_s, u"D12c"_s);
        QCOMPARE(first->objectName(), u"D12c"_s);
        QCOMPARE(controls.item(u"d12C"_s), first);
        const auto childrenBefore = owner.children().size();
        QCOMPARE(failureOf([&] { controls.add(u"Tarvonix.Dummy"_s, u"D12C"_s); }), int(Error::DuplicateKey));
        QCOMPARE(owner.children().size(), childrenBefore); // nothing was created

        QPointer<QWidget> watched = first;
        controls.remove(u"D12c"_s);
        QVERIFY(!controls.contains(u"D12c"_s) && controls.count() == 0); // out of the collection at once
        QVERIFY(watched); // deleted later
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!watched);
        QCOMPARE(failureOf([&] { controls.remove(u"D12c"_s); }), int(Error::ControlNotFound));
        QCOMPARE(failureOf([&] { controls.item(u"nothing"_s); }), int(Error::ControlNotFound));

        // A control deleted behind the collection's back frees its name.
        delete controls.add(u"Tarvonix.Dummy"_s, u"caja"_s);
        QVERIFY(!controls.find(u"caja"_s));
        QVERIFY(controls.add(u"Tarvonix.Dummy"_s, u"caja"_s));
    }
};

QTEST_MAIN(tst_ControlRegistry)
#include "tst_controlregistry.moc"
