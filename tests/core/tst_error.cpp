// SPDX-License-Identifier: MIT
#include <tarvonix/core/error.h>
#include <tarvonix/core/int16.h>
#include <tarvonix/platform/errortrap.h>

#include "../model/modeltest.h"
#include "errorcatcher.h"

#include <QLoggingCategory>
#include <QTest>

#include <limits>

using namespace tarvonix;
using namespace Qt::StringLiterals;

static QStringList logged;

class tst_Error : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trapReportsLabelAndDescription()
    {
        QStringList outer;
        const ErrorHandler original = setErrorHandler([&](const QString &m) { outer.append(m); });
        {
            ErrorCatcher catcher; // replaces the handler while it lives
            QVERIFY(!trap(u"MapaX.add->"_s, [] { throw Error(Error::DuplicateKey); }));
            trap(u"PiernaX.MouseDown->"_s, [] { throw std::runtime_error("boom"); }); // any std::exception
            QVERIFY(trap(u"X.y->"_s, [] {}));
            QVERIFY(!trapSilently([] { throw Error(Error::ObjectNotSet); }));
            QCOMPARE(catcher.messages(),
                     (QStringList { u"MapaX.add->This key is already associated with an element of this collection"_s,
                                    u"PiernaX.MouseDown->boom"_s }));
        }
        reportError(u"two"_s);
        setErrorHandler(original);
        QCOMPARE(outer, QStringList { u"two"_s });
        QCOMPARE(Error(Error::InvalidArgument, u"Ubicación inválida"_s).description(), u"Ubicación inválida"_s);
    }

    void fallbackReportGoesToTheLoggingCategory()
    {
        // A handler that fails must not take the trap down: the text falls back to "tarvonix.error".
        const ErrorHandler previous = setErrorHandler([](const QString &) { throw std::logic_error("broke"); });
        const QtMessageHandler qtHandler = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &context, const QString &message) {
                logged.append(QLatin1String(context.category) + u':' + message);
            });
        QVERIFY(!trap(u"Etiquetas.UserControl_Paint->"_s, [] { throw Error(Error::Overflow); }));
        // No handler on the offscreen platform: the same category, which a host can silence.
        setErrorHandler({});
        reportError(u"MapaX.add->Overflow"_s);
        QLoggingCategory::setFilterRules(u"tarvonix.error=false"_s);
        reportError(u"MapaX.remove->Overflow"_s);
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(qtHandler);
        setErrorHandler(previous);
        QCOMPARE(logged, (QStringList { u"tarvonix.error:Etiquetas.UserControl_Paint->Overflow"_s,
                                        u"tarvonix.error:MapaX.add->Overflow"_s }));
    }

    void int16Conversions_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("expected"); // -1 for a value that does not fit 16 bits
        QTest::newRow("tie down to even") << 2.5 << 2;
        QTest::newRow("tie up to even") << 7.5 << 8;
        QTest::newRow("largest") << 32767.4 << 32767;
        QTest::newRow("rounds past the largest") << 32767.5 << -1;
        QTest::newRow("smallest") << -32768.0 << -32768;
        QTest::newRow("below the smallest") << -32769.0 << -1;
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << -1;
    }
    void int16Conversions()
    {
        QFETCH(double, value);
        QFETCH(int, expected);
        if (expected == -1)
            QCOMPARE(modeltest::failureOf([&] { toInt16(value); }), int(Error::Overflow));
        else
            QCOMPARE(int(toInt16(value)), expected);
    }
};

QTEST_GUILESS_MAIN(tst_Error)
#include "tst_error.moc"
