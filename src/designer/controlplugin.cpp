// SPDX-License-Identifier: MIT
#include "controlplugin.h"

#include <tarvonix/platform/errortrap.h>

#include <QDynamicPropertyChangeEvent>
#include <QIcon>
#include <QLoggingCategory>
#include <QWidget>

namespace tarvonix::designer {

namespace {
Q_LOGGING_CATEGORY(lcDesigner, "tarvonix.designer")
}

ControlPlugin::ControlPlugin(const Description &description, QObject *parent)
    : QObject(parent)
    , m_description(description)
{ }

QString ControlPlugin::name() const
{
    return m_description.className;
}

QString ControlPlugin::group() const
{
    return QStringLiteral("Tarvonix");
}

QString ControlPlugin::toolTip() const
{
    return m_description.toolTip;
}

QString ControlPlugin::whatsThis() const
{
    return m_description.whatsThis;
}

QString ControlPlugin::includeFile() const
{
    // The angle brackets make uic write #include <...>, as a host includes
    // an installed library's header.
    return QLatin1Char('<') + m_description.header + QLatin1Char('>');
}

QIcon ControlPlugin::icon() const
{
    return QIcon(m_description.icon);
}

bool ControlPlugin::isContainer() const
{
    // The controls draw their content from the map objects the host gives
    // them; none holds widgets placed on the form.
    return false;
}

QWidget *ControlPlugin::createWidget(QWidget *parent)
{
    QWidget *control = m_description.create(parent);
    control->installEventFilter(this);
    return control;
}

QString ControlPlugin::domXml() const
{
    // The display name keeps the namespace out of the widget box.
    const QString shortName = m_description.className.section(QStringLiteral("::"), -1);
    return QStringLiteral(R"(<ui language="c++" displayname="%1">
 <widget class="%2" name="%3">
  <property name="geometry">
   <rect><x>0</x><y>0</y><width>%4</width><height>%5</height></rect>
  </property>
 </widget>
</ui>
)")
        .arg(shortName, m_description.className, m_description.objectName)
        .arg(m_description.size.width())
        .arg(m_description.size.height());
}

bool ControlPlugin::isInitialized() const
{
    return m_initialized;
}

void ControlPlugin::initialize(QDesignerFormEditorInterface *)
{
    if (m_initialized)
        return;
    m_initialized = true;
    // Designer initializes the plugin; a host's QUiLoader does not. On a form being designed the
    // controls have no map objects, and a leg view without its leg reports so on every paint: a
    // message box each time would stop the form editor, so the reports go to the log instead.
    setErrorHandler([](const QString &message) { qCWarning(lcDesigner, "%s", qPrintable(message)); });
}

bool ControlPlugin::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange) {
        const QByteArray name = static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName();
        // Qt keeps state of its own in properties named _q_..., and a removal is no news.
        if (!name.startsWith("_q_") && watched->property(name.constData()).isValid()) {
            qCWarning(lcDesigner, "%s \"%s\" has no property \"%s\"; the form's value is not used",
                      watched->metaObject()->className(), qPrintable(watched->objectName()),
                      name.constData());
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarvonix::designer
