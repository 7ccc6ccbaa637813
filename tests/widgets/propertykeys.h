#ifndef TARVONIX_TESTS_PROPERTYKEYS_H
#define TARVONIX_TESTS_PROPERTYKEYS_H

#include <tarvonix/platform/propertybag.h>

#include <QTest>

// One row per persisted property: the key as the control writes it, the property's name (the key when
// left out), its default and another value. Keys compare without regard to letter case in the bag, so
// the spelling a control reads back needs no row of its own. An invalid default stands for a value that
// is always written and that an empty bag leaves as it is, as a font's name.
inline void addPropertyKeyColumns()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("defaultValue");
    QTest::addColumn<QVariant>("value");
}

inline void propertyKeyRow(const char *key, const QVariant &defaultValue, const QVariant &value,
                           const char *property = nullptr)
{
    QTest::newRow(key) << QString::fromLatin1(key) << QByteArray(property ? property : key) << defaultValue
                       << value;
}

// Checks the current row against a Control: a default is not written, another value is written under
// its key and read back by a fresh control, and an empty bag brings the default back.
template<class Control> void checkPropertyKey()
{
    QFETCH(QString, key);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, defaultValue);
    QFETCH(QVariant, value);
    const char *name = property.constData();

    Control control;
    tarvonix::PropertyBag fresh;
    control.writeProperties(fresh);
    if (defaultValue.isValid()) {
        QCOMPARE(control.property(name), defaultValue);
        QVERIFY2(!fresh.contains(key), qPrintable(fresh.keys().join(u',')));
    } else {
        QCOMPARE(fresh.readProperty(key, QVariant()), control.property(name));
    }

    QVERIFY(control.setProperty(name, value));
    tarvonix::PropertyBag bag;
    control.writeProperties(bag);
    QCOMPARE(bag.keys().size(), fresh.keys().size() + (defaultValue.isValid() ? 1 : 0));
    QVERIFY2(bag.keys().contains(key), qPrintable(bag.keys().join(u',')));
    Control read;
    read.readProperties(bag);
    QCOMPARE(read.property(name), value);

    read.readProperties(tarvonix::PropertyBag());
    QCOMPARE(read.property(name), defaultValue.isValid() ? defaultValue : value);
}

#endif
