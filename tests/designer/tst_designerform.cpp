// SPDX-License-Identifier: MIT
#include "ui_form.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QTest>
#include <QUiLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>

using namespace Qt::StringLiterals;

// form.ui holds every control of the Designer plugin with properties set away from their defaults,
// as Designer saves them. The form is built by uic's code and loaded by QUiLoader through the plugin,
// and every value must come back from both.
class tst_DesignerForm : public QObject
{
    Q_OBJECT

    QUiLoader m_loader;
    QWidget m_compiled;
    std::unique_ptr<QWidget> m_loaded;

private Q_SLOTS:
    void initTestCase()
    {
        m_loader.clearPluginPaths(); // the plugin of this build, not one installed
        m_loader.addPluginPath(QFileInfo(QString::fromUtf8(TARVONIX_DESIGNER_PLUGIN)).absolutePath());
        Ui::Form().setupUi(&m_compiled);
        QFile form(QString::fromUtf8(TARVONIX_FORM));
        QVERIFY(form.open(QIODevice::ReadOnly));
        m_loaded.reset(m_loader.load(&form));
        QVERIFY2(m_loaded, qPrintable(m_loader.errorString()));
    }

    void properties_data()
    {
        QTest::addColumn<bool>("loaded");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("value");
        // Two rows to a line, as the form lists them.
        // clang-format off
        const struct {
            const char *control;
            const char *property;
            QVariant value;
        } rows[] = {
            {"mapa", "FontName", u"DejaVu Serif"_s}, {"mapa", "FontSize", 14},
            {"mapa", "BackColor", 0x808080}, {"contenedor", "BorderStyle", 1},
            {"pierna", "FontName", u"DejaVu Sans Mono"_s}, {"pierna", "FontSize", 11},
            {"etiquetas", "Sentido", 1}, {"etiquetas", "Separacion", 12.5}, {"etiquetas", "Numerar", false},
            {"etiquetas", "Paso", -2}, {"etiquetas", "Primero", 7}, {"etiquetas", "BackColor", 0x00FFFF},
            {"etiquetas", "ForeColor", 0x000080}, {"etiquetas", "texto", u"Fila"_s},
            {"etiquetas", "Efecto", false}, {"etiquetas", "OLEDropMode", 1},
            {"referencias", "BackColor", 0xC0FFFF}, {"referencias", "BorderStyle", 1},
            {"referencias", "FontName", u"DejaVu Serif"_s}, {"referencias", "FontBold", true},
            {"referencias", "FontSize", 14.5}, {"referencias", "ForeColor", 0x800000},
            {"referencia", "BackColor", 0xF0F0F0}, {"referencia", "ForeColor", 0x008000},
            {"dummy", "BackStyle", 1}, {"dummy", "BackColor", 0x0000FF}, {"dummy", "BorderStyle", 0},
        };
        // clang-format on
        for (const bool loaded : { false, true }) {
            for (const auto &row : rows) {
                QTest::addRow("%s %s.%s", loaded ? "QUiLoader" : "uic", row.control, row.property)
                    << loaded << QString::fromLatin1(row.control) << QByteArray(row.property) << row.value;
            }
        }
    }

    void properties()
    {
        QFETCH(bool, loaded);
        QFETCH(QString, control);
        QFETCH(QByteArray, property);
        QFETCH(QVariant, value);
        const QWidget *widget = (loaded ? m_loaded.get() : &m_compiled)->findChild<QWidget *>(control);
        QVERIFY(widget);
        const QVariant read = widget->property(property.constData());
        QCOMPARE(read, value);
        // The property editor shows the types it edits, and Designer saves only what it shows.
        QCOMPARE(read.metaType(), value.metaType());
        // A value the control starts with would prove nothing.
        const std::unique_ptr<QWidget> fresh(
            m_loader.createWidget(QLatin1String(widget->metaObject()->className())));
        QVERIFY(fresh);
        QVERIFY(fresh->property(property.constData()) != value);
    }

    void badPropertiesKeepTheDefaults()
    {
        // A form saved by another version of the plugin: a value of the wrong kind and a property the
        // control no longer has. The rest of the form still applies.
        QByteArray ui = R"(<ui version="4.0"><widget class="QWidget" name="Form">
            <widget class="tarvonix::etiquetas" name="etiquetas">
             <property name="Paso"><string>dos</string></property>
             <property name="Sentidos"><number>1</number></property>
             <property name="Primero"><number>5</number></property>
            </widget></widget></ui>)";
        QTest::ignoreMessage(QtWarningMsg,
            R"(tarvonix::etiquetas "etiquetas" has no property "Sentidos"; the form's value is not used)");
        QBuffer buffer(&ui);
        buffer.open(QIODevice::ReadOnly);
        const std::unique_ptr<QWidget> form(m_loader.load(&buffer));
        QVERIFY(form);
        const QWidget *strip = form->findChild<QWidget *>(u"etiquetas"_s);
        QVERIFY(strip);
        QCOMPARE(QVariantList({ strip->property("Paso"), strip->property("Sentido"), strip->property("Primero") }),
                 QVariantList({ 1, 0, 5 }));
    }

    void reportsInDesignerGoToTheLog()
    {
        // Designer initializes the plugin; a leg view then has no leg and reports so when it paints.
        QPluginLoader plugin(QString::fromUtf8(TARVONIX_DESIGNER_PLUGIN));
        auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(plugin.instance());
        QVERIFY(collection);
        for (QDesignerCustomWidgetInterface *control : collection->customWidgets())
            control->initialize(nullptr);
        const std::unique_ptr<QWidget> leg(m_loader.createWidget(u"tarvonix::PiernaX"_s));
        // Without a screen the library logs its reports itself; only the plugin's log counts here.
        QLoggingCategory::setFilterRules(u"tarvonix.error.warning=false"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^PiernaX\\.dibujarTodo->"_s));
        leg->grab();
    }
};

QTEST_MAIN(tst_DesignerForm)
#include "tst_designerform.moc"
