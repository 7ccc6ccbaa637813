// SPDX-License-Identifier: MIT
#ifndef TARVONIX_DESIGNER_CONTROLCOLLECTION_H
#define TARVONIX_DESIGNER_CONTROLCOLLECTION_H

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

namespace tarvonix::designer {

/*!
    The plugin Qt Designer and QUiLoader load: the Tarvonix controls a form
    designer places on a form, in the widget box group "Tarvonix".

    The frames, the legend frame and the title bar are left out: the map
    creates them itself for the objects the host adds.
*/
class ControlCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit ControlCollection(QObject *parent = nullptr);

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    QList<QDesignerCustomWidgetInterface *> m_controls;
};

} // namespace tarvonix::designer

#endif
