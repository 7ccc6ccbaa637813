// SPDX-License-Identifier: MIT
#ifndef BODEGA_SITIO_H
#define BODEGA_SITIO_H

#include <tarvonix/model/imagenes.h>
#include <tarvonix/model/iobjeto.h>

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

/*!
    The winery the demo shows: a hall of vessels with the batches on its
    floor, a reception yard, and legs of barrels, read from a JSON
    description (the demo embeds one; --sitio FILE reads another).
*/
class Sitio
{
public:
    /*!
        Builds the site from \a json; the pictures are drawn into \a carpetaImagenes.
        A file that is not a site, or that asks for more than a site holds,
        gives an empty site and says in error what is wrong and where.
    */
    static Sitio desdeJson(const QByteArray &json, const QString &carpetaImagenes);

    //! The root objects, each shown in its own frame.
    std::vector<tarvonix::ObjetoPtr> raices() const;

    tarvonix::ObjetoPtr nave;
    tarvonix::ObjetoPtr patio;
    std::vector<tarvonix::ObjetoPtr> piernas;
    std::shared_ptr<tarvonix::Imagenes> imagenes;
    QString error;
};

#endif
