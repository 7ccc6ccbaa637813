#include <tarvonix/widgets/dummy.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/controlregistry.h>
#include <tarvonix/core/error.h>

#include <QPushButton>
#include <QTest>

using namespace tarvonix;

class tst_ControlRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsRegistered_data();
    void everyControlIsRegistered();
    void createsRegisteredControlsByName();
    void childControlsByName();
    void removalDuringOwnHandler();
};

void tst_ControlRegistry::everyControlIsRegistered_data()
{
    QTest::addColumn<QString>("progId");
    QTest::addColumn<QString>("clase");
    for (const char *nombre : {"MapaX", "FrameX", "FrameRefX", "ContenedorX", "PiernaX", "etiquetas", "Dummy",
                               "ReferenciasX", "ReferenciaX"}) {
        QTest::newRow(nombre) << QStringLiteral("Tarvonix.") + QLatin1String(nombre)
                              << QStringLiteral("tarvonix::") + QLatin1String(nombre);
    }
}

void tst_ControlRegistry::everyControlIsRegistered()
{
    QFETCH(QString, progId);
    QFETCH(QString, clase);
    QWidget parent;
    QWidget *control = ControlRegistry::instance().create(progId, &parent);
    QVERIFY(control);
    QCOMPARE(QString::fromLatin1(control->metaObject()->className()), clase);
    QCOMPARE(control->parentWidget(), &parent);
}

void tst_ControlRegistry::createsRegisteredControlsByName()
{
    ControlRegistry &registry = ControlRegistry::instance();
    QVERIFY(registry.contains(QStringLiteral("tarvonix.dummy")));
    QWidget parent;
    QWidget *box = registry.create(QStringLiteral("TARVONIX.DUMMY"), &parent);
    QVERIFY(qobject_cast<Dummy *>(box));
    QCOMPARE(box->parentWidget(), &parent);
    try {
        registry.create(QStringLiteral("Tarvonix.NoSuchControl"), &parent);
        QFAIL("an unknown class must fail");
    } catch (const Error &error) {
        QCOMPARE(error.code(), Error::InvalidArgument);
    }
}

void tst_ControlRegistry::childControlsByName()
{
    QWidget owner;
    ChildControls controls(&owner);
    QWidget *first = controls.add(QStringLiteral("Tarvonix.Dummy"), QStringLiteral("D12c"));
    QCOMPARE(first->objectName(), QStringLiteral("D12c"));
    QCOMPARE(controls.item(QStringLiteral("d12C")), first);

    const int childrenBefore = int(owner.children().size());
    try {
        controls.add(QStringLiteral("Tarvonix.Dummy"), QStringLiteral("D12C"));
        QFAIL("a name already taken must fail");
    } catch (const Error &error) {
        QCOMPARE(error.code(), Error::DuplicateKey);
    }
    QCOMPARE(int(owner.children().size()), childrenBefore); // nothing was created

    QPointer<QWidget> watched = first;
    controls.remove(QStringLiteral("D12c"));
    QVERIFY(!controls.contains(QStringLiteral("D12c"))); // out of the collection at once
    QVERIFY(watched);                                    // deleted later
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!watched);

    for (const QString &missing : {QStringLiteral("D12c"), QStringLiteral("nothing")}) {
        try {
            controls.remove(missing);
            QFAIL("removing a name that is not there must fail");
        } catch (const Error &error) {
            QCOMPARE(error.code(), Error::ControlNotFound);
        }
    }
    QVERIFY_THROWS_EXCEPTION(Error, controls.item(QStringLiteral("nothing")));

    // A control deleted behind the collection's back frees its name.
    delete controls.add(QStringLiteral("Tarvonix.Dummy"), QStringLiteral("caja"));
    QVERIFY(!controls.find(QStringLiteral("caja")));
    QVERIFY(controls.add(QStringLiteral("Tarvonix.Dummy"), QStringLiteral("caja")));
}

void tst_ControlRegistry::removalDuringOwnHandler()
{
    ControlRegistry::instance().add(QStringLiteral("Test.Button"),
                                    [](QWidget *parent) { return new QPushButton(parent); });
    QWidget owner;
    ChildControls controls(&owner);
    auto *button = qobject_cast<QPushButton *>(controls.add(QStringLiteral("Test.Button"), QStringLiteral("cerrar")));
    QVERIFY(button);
    QPointer<QPushButton> watched = button;
    QObject::connect(button, &QPushButton::clicked, &owner, [&] { controls.remove(QStringLiteral("cerrar")); });
    button->show();
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(controls.count(), 0);
    QTRY_VERIFY(!watched);
}

QTEST_MAIN(tst_ControlRegistry)
#include "tst_controlregistry.moc"
