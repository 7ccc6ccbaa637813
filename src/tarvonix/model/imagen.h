// SPDX-License-Identifier: MIT
#ifndef TARVONIX_IMAGEN_H
#define TARVONIX_IMAGEN_H

#include <tarvonix/tarvonixmodel_export.h>

#include <QImage>
#include <QString>

namespace tarvonix {

/*!
    A numbered picture loaded from a file, which map objects show through
    their imagen field.

    setArchivo() loads the file at once. A file that is missing or is not a
    picture is not an error: the handler becomes a null QImage (none), even
    when an earlier file had loaded, and getArchivo() answers the new name.
*/
class TARVONIX_MODEL_EXPORT Imagen
{
public:
    Imagen();
    ~Imagen();

    qint16 getNumero() const;
    QString getArchivo() const;
    //! The loaded picture; isNull() when there is none.
    QImage getHandler() const;
    void setNumero(qint16 numero);
    void setArchivo(const QString &archivo);

private:
    qint16 m_numero = 0;
    QString m_archivo;
    QImage m_handler;
};

} // namespace tarvonix

#endif
