// SPDX-License-Identifier: MIT
#ifndef TARVONIX_REFERENCIA_H
#define TARVONIX_REFERENCIA_H

#include <tarvonix/tarvonixmodel_export.h>

#include <QMetaType>
#include <QString>

#include <memory>

namespace tarvonix {

/*!
    One colour key: what a fill colour means on the map. It ties a key code
    (clave) to a text and a colour (0x00BBGGRR, white by default). Nothing is
    validated.
*/
class TARVONIX_MODEL_EXPORT Referencia
{
public:
    Referencia();
    ~Referencia();

    void setColor(qint32 color);
    void setClave(const QString &clave);
    void setTexto(const QString &texto);
    qint32 getColor() const;
    QString getClave() const;
    QString getTexto() const;

private:
    QString m_clave;
    QString m_texto;
    qint32 m_color = 0xFFFFFF;
};

} // namespace tarvonix

// Keys travel through the legend's signals and late-bound calls as QVariant.
Q_DECLARE_METATYPE(std::shared_ptr<tarvonix::Referencia>)

#endif
