#include <tarvonix/core/error.h>
#include <tarvonix/platform/errortrap.h>
#include <tarvonix/core/int16.h>

#include "errorcatcher.h"

#include <QLoggingCategory>
#include <QTest>

#include <limits>

using namespace tarvonix;

class tst_Error : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trapReportsLabelAndDescription();
    void fallbackReportGoesToTheLoggingCategory();
    void handlersAreReplacedAndRestored();
    void int16Conversions_data();
    void int16Conversions();
};

void tst_Error::trapReportsLabelAndDescription()
{
    ErrorCatcher catcher;
    bool reachedEnd = false;
    const bool ok = trap(QStringLiteral("MapaX.add->"), [&] {
        throw Error(Error::DuplicateKey);
        reachedEnd = true;
    });
    QVERIFY(!ok);
    QVERIFY(!reachedEnd);
    QCOMPARE(catcher.messages(),
             QStringList{QStringLiteral("MapaX.add->This key is already associated with an element of this collection")});

    // Any std::exception is caught, with its own text.
    trap(QStringLiteral("PiernaX.MouseDown->"), [] { throw std::runtime_error("boom"); });
    QCOMPARE(catcher.messages().last(), QStringLiteral("PiernaX.MouseDown->boom"));

    QVERIFY(trap(QStringLiteral("X.y->"), [] {}));
    QCOMPARE(catcher.messages().size(), 2);

    QVERIFY(!trapSilently([] { throw Error(Error::ObjectNotSet); }));
    QCOMPARE(catcher.messages().size(), 2);

    const Error custom(Error::InvalidArgument, QStringLiteral("Ubicación inválida"));
    QCOMPARE(custom.code(), Error::InvalidArgument);
    QCOMPARE(custom.description(), QStringLiteral("Ubicación inválida"));
}

namespace {
QStringList logged;
void recordLog(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    logged.append(QLatin1String(context.category) + QLatin1Char(':') + message);
}
} // namespace

void tst_Error::fallbackReportGoesToTheLoggingCategory()
{
    // A handler that fails must not take the trap down: the text falls back to "tarvonix.error".
    const ErrorHandler previous = setErrorHandler([](const QString &) { throw std::logic_error("handler broke"); });
    logged.clear();
    const QtMessageHandler qtHandler = qInstallMessageHandler(recordLog);
    QVERIFY(!trap(QStringLiteral("Etiquetas.UserControl_Paint->"), [] { throw Error(Error::Overflow); }));
    // No handler on the offscreen platform: the same category, which a host can silence.
    setErrorHandler({});
    reportError(QStringLiteral("MapaX.add->Overflow"));
    QLoggingCategory::setFilterRules(QStringLiteral("tarvonix.error=false"));
    reportError(QStringLiteral("MapaX.remove->Overflow"));
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(qtHandler);
    setErrorHandler(previous);
    QCOMPARE(logged, (QStringList{QStringLiteral("tarvonix.error:Etiquetas.UserControl_Paint->Overflow"),
                                  QStringLiteral("tarvonix.error:MapaX.add->Overflow")}));
}

void tst_Error::handlersAreReplacedAndRestored()
{
    QStringList outer;
    const ErrorHandler original = setErrorHandler([&](const QString &m) { outer.append(m); });
    {
        ErrorCatcher inner;
        reportError(QStringLiteral("one"));
        QCOMPARE(inner.messages(), QStringList{QStringLiteral("one")});
    }
    reportError(QStringLiteral("two"));
    QCOMPARE(outer, QStringList{QStringLiteral("two")});
    setErrorHandler(original);
}

void tst_Error::int16Conversions_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("fits");
    QTest::addColumn<int>("expected");
    QTest::newRow("tie down to even") << 2.5 << true << 2;
    QTest::newRow("tie up to even") << 7.5 << true << 8;
    QTest::newRow("negative tie") << -2.5 << true << -2;
    QTest::newRow("largest") << 32767.4 << true << 32767;
    QTest::newRow("rounds past the largest") << 32767.5 << false << 0;
    QTest::newRow("smallest") << -32768.0 << true << -32768;
    QTest::newRow("below the smallest") << -32769.0 << false << 0;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << false << 0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << false << 0;
}

void tst_Error::int16Conversions()
{
    QFETCH(double, value);
    QFETCH(bool, fits);
    QFETCH(int, expected);
    if (fits) {
        QCOMPARE(int(toInt16(value)), expected);
        return;
    }
    try {
        toInt16(value);
        QFAIL("a value that does not fit 16 bits must fail");
    } catch (const Error &error) {
        QCOMPARE(error.code(), Error::Overflow);
        QCOMPARE(error.description(), QStringLiteral("Overflow"));
    }
}

QTEST_GUILESS_MAIN(tst_Error)
#include "tst_error.moc"
