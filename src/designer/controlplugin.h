// SPDX-License-Identifier: MIT
#ifndef TARVONIX_DESIGNER_CONTROLPLUGIN_H
#define TARVONIX_DESIGNER_CONTROLPLUGIN_H

#include <QObject>
#include <QSize>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace tarvonix::designer {

/*!
    One control in Qt Designer's widget box: its class, the header uic
    includes for it, its icon and texts, the size it takes when dropped on a
    form, and how to create it. What the property editor shows are the
    control's own Q_PROPERTYs.

    A form loaded at run time (QUiLoader) sets a property the control lacks,
    say from a form saved with another version of the plugin, as a dynamic
    property; the plugin warns of each such name on the logging category
    "tarvonix.designer" and the control keeps its defaults. In Designer
    itself, the controls' error reports go to the same category instead of
    message boxes.
*/
class ControlPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    struct Description
    {
        QString className; //!< with its namespace, as uic declares it: "tarvonix::MapaX"
        QString header; //!< as a host includes it: "tarvonix/map/mapax.h"
        QString objectName; //!< the name Designer gives the first one on a form
        QString icon; //!< a resource path
        QString toolTip;
        QString whatsThis;
        QSize size;
        QWidget *(*create)(QWidget *parent);
    };

    ControlPlugin(const Description &description, QObject *parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget *createWidget(QWidget *parent) override;
    QString domXml() const override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface *core) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Description m_description;
    bool m_initialized = false;
};

} // namespace tarvonix::designer

#endif
