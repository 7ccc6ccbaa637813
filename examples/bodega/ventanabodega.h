// SPDX-License-Identifier: MIT
#ifndef BODEGA_VENTANABODEGA_H
#define BODEGA_VENTANABODEGA_H

#include "sitio.h"

#include <QMainWindow>

class QPlainTextEdit;

namespace tarvonix {
class MapaX;
}

/*!
    The demo's window: the map of the winery, a toolbar for the layout
    requests, the lock, the legend and the scale, and a log of every event
    the map raises.
*/
class VentanaBodega : public QMainWindow
{
    Q_OBJECT

public:
    explicit VentanaBodega(Sitio sitio, QWidget *parent = nullptr);

    tarvonix::MapaX *mapa() const { return m_mapa; }

private:
    void crearBarra();
    void conectarEventos();
    void mostrarSitio();
    void anotar(const QString &linea);

    Sitio m_sitio;
    tarvonix::MapaX *m_mapa;
    QPlainTextEdit *m_registro;
};

#endif
