// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_PROPERTYKEYS_H
#define TARVONIX_TESTS_PROPERTYKEYS_H

#include <tarvonix/platform/propertybag.h>

#include <QTest>

// A persisted property: the key as the control writes it, its default and another value, and the property's
// name where it is not the key. Keys ignore case in the bag, so the spelling a control reads needs no row. An
// invalid default stands for a value always written and kept by an empty bag, as a font's name.
struct PropertyKey
{
    const char *key;
    QVariant defaultValue, value;
    const char *property = nullptr;
};
Q_DECLARE_METATYPE(PropertyKey)

inline void propertyKeyRows(std::initializer_list<PropertyKey> rows)
{
    QTest::addColumn<PropertyKey>("row");
    for (const PropertyKey &row : rows)
        QTest::newRow(row.key) << row;
}

// A default is not written; another value is, under its key, and a fresh control reads it; an empty bag resets it.
template<class Control> void checkPropertyKey()
{
    QFETCH(PropertyKey, row);
    const QString key = QString::fromLatin1(row.key);
    const char *name = row.property ? row.property : row.key;
    const bool hasDefault = row.defaultValue.isValid();
    Control control, read;
    tarvonix::PropertyBag fresh, bag;
    control.writeProperties(fresh);
    if (hasDefault)
        QCOMPARE(control.property(name), row.defaultValue);
    QCOMPARE(fresh.readProperty(key), hasDefault ? QVariant() : control.property(name));
    QVERIFY(control.setProperty(name, row.value));
    control.writeProperties(bag);
    QCOMPARE(bag.keys().size(), fresh.keys().size() + (hasDefault ? 1 : 0));
    QVERIFY2(bag.keys().contains(key), qPrintable(bag.keys().join(u',')));
    read.readProperties(bag);
    QCOMPARE(read.property(name), row.value);
    read.readProperties(tarvonix::PropertyBag());
    QCOMPARE(read.property(name), hasDefault ? row.defaultValue : row.value);
}

#endif
