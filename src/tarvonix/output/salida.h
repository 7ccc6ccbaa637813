// SPDX-License-Identifier: MIT
#ifndef TARVONIX_SALIDA_H
#define TARVONIX_SALIDA_H

#include <tarvonix/model/iobjeto.h>
#include <tarvonix/tarvonix_export.h>

#include <QString>

class QPrinter;

namespace tarvonix {

class MapaX;

/*!
    The map on paper and in files: export to PNG, SVG and PDF, and printing.

    Everything is drawn by the controls' own painting, through the same
    Surface as on screen, onto another device; one unit of the screen is one
    pixel at 96 dots per inch. What can be written out:

    - the whole map as it shows, with its frames and the legend frame;
    - one frame's content whole, also the part its scroll bars hide;
    - the legend of the active frame's object (its colour keys).

    The format follows the file's extension: ".png" (at \a ppp dots per inch,
    from 1 to 2400, so that 192 writes twice as many pixels each way), ".svg"
    and ".pdf" (one page the size of the drawing). A file is written whole or
    not at all: a path that cannot be written, an unknown extension, a
    resolution out of range or a picture too large leave no file behind and
    are reported as "Salida.operation->description" (see reportError()).
    Each call answers whether the file was written.
*/
class TARVONIX_EXPORT Salida
{
public:
    //! How imprimir() lays the drawing on paper.
    enum Paginas {
        AjustarAPagina = 0, //!< scaled to fill one page, in proportion
        VariasPaginas = 1, //!< at its natural size, across as many pages as it needs
    };

    static bool exportarMapa(MapaX *mapa, const QString &archivo, int ppp = 96);
    //! The whole content of the frame of \a obj, at the frame's present scale.
    static bool exportarFrame(MapaX *mapa, const ObjetoPtr &obj, const QString &archivo, int ppp = 96);
    //! The colour keys of the active frame's object.
    static bool exportarLeyenda(MapaX *mapa, const QString &archivo, int ppp = 96);

    /*!
        Prints the content of the frame of \a obj, or the whole map when \a obj
        is none, under a title line (\a titulo, else the object's description)
        and above the legend of the printed object. \a paginas is one of
        Paginas. Where no printer is installed Qt prints to PDF; a printer
        printing to PDF without a file name writes "<titulo>.pdf" in the user's
        documents folder, and its outputFileName() says so.
    */
    static bool imprimir(MapaX *mapa, QPrinter *printer, const ObjetoPtr &obj = nullptr,
                         int paginas = AjustarAPagina, const QString &titulo = QString());
};

} // namespace tarvonix

#endif
