// SPDX-License-Identifier: MIT
#ifndef BODEGA_VENTANABODEGA_H
#define BODEGA_VENTANABODEGA_H

#include "sitio.h"

#include <QMainWindow>

class QToolBar;

class QLineEdit;
class QPlainTextEdit;
class QPrinter;

namespace tarvonix {
class MapaX;
}

/*!
    The demo's window: the map of the winery, a toolbar for the layout
    requests, the lock, the legend, the scale and the find box (Ctrl+F), a
    menu to export, preview and print, and a log of every event the map
    raises.
*/
class VentanaBodega : public QMainWindow
{
    Q_OBJECT

public:
    explicit VentanaBodega(Sitio sitio, QWidget *parent = nullptr);

    tarvonix::MapaX *mapa() const { return m_mapa; }

    //! Lays the frames out side by side in rows, none over another, the legend first.
    void disponerMarcos();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void crearMenu();
    void crearBarra();
    void crearBuscador(QToolBar *barra);
    void exportar(int que);
    void imprimir(QPrinter *printer);
    void buscar(const QString &codigo);
    void conectarEventos();
    void mostrarSitio();
    void anotar(const QString &linea);

    Sitio m_sitio;
    tarvonix::MapaX *m_mapa;
    QPlainTextEdit *m_registro;
    QLineEdit *m_buscador = nullptr;
    bool m_variasPaginas = false;
    bool m_dispuesto = false;
};

#endif
