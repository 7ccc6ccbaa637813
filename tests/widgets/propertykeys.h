#ifndef TARVONIX_TESTS_PROPERTYKEYS_H
#define TARVONIX_TESTS_PROPERTYKEYS_H

#include <tarvonix/platform/propertybag.h>

#include <QTest>

// One row per persisted property: the key as the control writes it, the property's name, its default
// and a value other than the default. Keys compare without regard to letter case in the bag, so the
// spelling a control reads back needs no row of its own.
inline void addPropertyKeyColumns()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("defaultValue");
    QTest::addColumn<QVariant>("value");
}

// Checks the current row against a Control: defaults are not written, another value is written under
// its key alone and read back by a fresh control, and an empty bag brings the default back.
template<class Control> void checkPropertyKey()
{
    QFETCH(QString, key);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, defaultValue);
    QFETCH(QVariant, value);
    const char *name = property.constData();

    Control control;
    QCOMPARE(control.property(name), defaultValue);
    tarvonix::PropertyBag bag;
    control.writeProperties(bag);
    QVERIFY2(bag.isEmpty(), qPrintable(bag.keys().join(u',')));

    QVERIFY(control.setProperty(name, value));
    control.writeProperties(bag);
    QCOMPARE(bag.keys(), QStringList { key });
    Control read;
    read.readProperties(bag);
    QCOMPARE(read.property(name), value);

    read.readProperties(tarvonix::PropertyBag());
    QCOMPARE(read.property(name), defaultValue);
}

#endif
