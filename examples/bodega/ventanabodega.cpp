// SPDX-License-Identifier: MIT
#include "ventanabodega.h"

#include <tarvonix/map/mapax.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/output/salida.h>

#include <QComboBox>
#include <QCompleter>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTime>
#include <QToolBar>

#include <algorithm>

using namespace tarvonix;

namespace {

QString codigo(const ObjetoPtr &obj)
{
    return obj ? obj->getCodigo() : QStringLiteral("(ninguno)");
}

QString siNo(bool valor)
{
    return valor ? QStringLiteral("sí") : QStringLiteral("no");
}

} // namespace

VentanaBodega::VentanaBodega(Sitio sitio, QWidget *parent)
    : QMainWindow(parent)
    , m_sitio(std::move(sitio))
    , m_mapa(new MapaX(this))
    , m_registro(new QPlainTextEdit(this))
{
    setWindowTitle(QStringLiteral("Bodega — mapa de la instalación"));
    m_mapa->setBackColor(0xF4F0EC);
    setCentralWidget(m_mapa);

    m_registro->setReadOnly(true);
    m_registro->setMaximumBlockCount(500);
    auto *dock = new QDockWidget(QStringLiteral("Eventos"), this);
    dock->setObjectName(QStringLiteral("eventos"));
    dock->setWidget(m_registro);
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    addDockWidget(Qt::BottomDockWidgetArea, dock);

    crearMenu();
    crearBarra();
    conectarEventos();
    resize(1180, 860);
    resizeDocks({dock}, {150}, Qt::Vertical);
    mostrarSitio();
}

void VentanaBodega::crearMenu()
{
    QMenu *archivo = menuBar()->addMenu(QStringLiteral("&Archivo"));
    archivo->addAction(QStringLiteral("Exportar el mapa…"), this, [this] { exportar(0); });
    archivo->addAction(QStringLiteral("Exportar el marco activo…"), this, [this] { exportar(1); });
    archivo->addAction(QStringLiteral("Exportar la leyenda…"), this, [this] { exportar(2); });
    archivo->addSeparator();
    QAction *varias = archivo->addAction(QStringLiteral("Imprimir en varias páginas"));
    varias->setCheckable(true);
    connect(varias, &QAction::toggled, this, [this](bool valor) { m_variasPaginas = valor; });
    archivo->addAction(QStringLiteral("Vista previa…"), this, [this] {
        QPrintPreviewDialog vista(this);
        vista.resize(900, 700);
        connect(&vista, &QPrintPreviewDialog::paintRequested, this, &VentanaBodega::imprimir);
        vista.exec();
    });
    QAction *imprimirAccion = archivo->addAction(QStringLiteral("Imprimir…"), this, [this] {
        QPrinter printer;
        QPrintDialog dialogo(&printer, this);
        if (dialogo.exec() == QDialog::Accepted)
            imprimir(&printer);
    });
    imprimirAccion->setShortcut(QKeySequence::Print);
    archivo->addSeparator();
    archivo->addAction(QStringLiteral("Salir"), this, &QWidget::close)->setShortcut(QKeySequence::Quit);
}

void VentanaBodega::exportar(int que)
{
    const QString archivo = QFileDialog::getSaveFileName(
        this, QStringLiteral("Exportar"), QStringLiteral("bodega.pdf"),
        QStringLiteral("PDF (*.pdf);;SVG (*.svg);;PNG a 192 ppp (*.png)"));
    if (archivo.isEmpty())
        return;
    bool hecho = false;
    if (que == 0)
        hecho = Salida::exportarMapa(m_mapa, archivo, 192);
    else if (que == 1)
        hecho = Salida::exportarFrame(m_mapa, m_mapa->getFrame(), archivo, 192);
    else
        hecho = Salida::exportarLeyenda(m_mapa, archivo, 192);
    if (hecho)
        anotar(QStringLiteral("Exportado a %1").arg(archivo));
}

void VentanaBodega::imprimir(QPrinter *printer)
{
    // The active frame's content when there is one, else the whole map.
    const ObjetoPtr frame = m_mapa->getFrame();
    if (Salida::imprimir(m_mapa, printer, frame, m_variasPaginas ? Salida::VariasPaginas : Salida::AjustarAPagina))
        anotar(QStringLiteral("Impreso %1%2")
                   .arg(codigo(frame), printer->outputFileName().isEmpty()
                                            ? QString()
                                            : QStringLiteral(" en ") + printer->outputFileName()));
}

void VentanaBodega::crearBuscador(QToolBar *barra)
{
    // Every code on the map, for completion: the roots, their children, the barrels on the legs.
    QStringList codigos;
    for (const ObjetoPtr &raiz : m_sitio.raices()) {
        codigos.append(raiz->getCodigo());
        if (const auto hijos = raiz->getObjetos()) {
            for (const ObjetoPtr &hijo : hijos->NewEnum())
                codigos.append(hijo->getCodigo());
        }
    }
    codigos.sort(Qt::CaseInsensitive);
    m_buscador = new QLineEdit(barra);
    m_buscador->setObjectName(QStringLiteral("buscador"));
    m_buscador->setPlaceholderText(QStringLiteral("Buscar código (Ctrl+F)"));
    m_buscador->setClearButtonEnabled(true);
    m_buscador->setMaximumWidth(200);
    auto *completar = new QCompleter(codigos, m_buscador);
    completar->setCaseSensitivity(Qt::CaseInsensitive);
    completar->setFilterMode(Qt::MatchContains);
    m_buscador->setCompleter(completar);
    connect(m_buscador, &QLineEdit::returnPressed, this, [this] { buscar(m_buscador->text()); });
    connect(completar, qOverload<const QString &>(&QCompleter::activated), this, &VentanaBodega::buscar);
    barra->addWidget(m_buscador);
    auto *enfocar = new QAction(QStringLiteral("Buscar"), this);
    enfocar->setShortcut(QKeySequence::Find);
    connect(enfocar, &QAction::triggered, this, [this] {
        m_buscador->setFocus(Qt::ShortcutFocusReason);
        m_buscador->selectAll();
    });
    addAction(enfocar);
}

void VentanaBodega::buscar(const QString &codigo)
{
    if (codigo.trimmed().isEmpty())
        return;
    const ObjetoPtr obj = m_mapa->revelar(codigo.trimmed());
    anotar(obj ? QStringLiteral("Encontrado %1").arg(obj->getCodigo())
               : QStringLiteral("No hay nada con el código %1").arg(codigo.trimmed()));
}

void VentanaBodega::crearBarra()
{
    QToolBar *barra = addToolBar(QStringLiteral("Disposición"));
    barra->setObjectName(QStringLiteral("disposicion"));
    // Every action has a key, so that the demo works without a pointer (the README lists them).
    barra->addAction(QStringLiteral("Alinear arriba"), m_mapa, &MapaX::alinearHorizontal)
        ->setShortcut(QKeySequence(Qt::ALT | Qt::Key_1));
    barra->addAction(QStringLiteral("Alinear a la izquierda"), m_mapa, &MapaX::alinearVertical)
        ->setShortcut(QKeySequence(Qt::ALT | Qt::Key_2));
    barra->addAction(QStringLiteral("Igualar tamaño"), m_mapa, &MapaX::igualarDimension)
        ->setShortcut(QKeySequence(Qt::ALT | Qt::Key_3));
    barra->addAction(QStringLiteral("Distribuir en horizontal"), m_mapa, &MapaX::distribuirHorizontal)
        ->setShortcut(QKeySequence(Qt::ALT | Qt::Key_4));
    barra->addAction(QStringLiteral("Distribuir en vertical"), m_mapa, &MapaX::distribuirVertical)
        ->setShortcut(QKeySequence(Qt::ALT | Qt::Key_5));
    barra->addSeparator();

    QAction *bloqueo = barra->addAction(QStringLiteral("Bloquear"));
    bloqueo->setShortcut(QKeySequence(Qt::ALT | Qt::Key_B));
    bloqueo->setCheckable(true);
    connect(bloqueo, &QAction::toggled, this, [this](bool valor) {
        m_mapa->setBloqueo(valor);
        anotar(valor ? QStringLiteral("Bloqueo activado") : QStringLiteral("Bloqueo desactivado"));
    });
    QAction *leyenda = barra->addAction(QStringLiteral("Leyenda"));
    leyenda->setShortcut(QKeySequence(Qt::ALT | Qt::Key_L));
    leyenda->setCheckable(true);
    leyenda->setChecked(true);
    connect(leyenda, &QAction::toggled, this, [this](bool valor) {
        if (valor)
            m_mapa->ShowReferences();
        else if (m_mapa->control(QStringLiteral("REF")))
            m_mapa->remove(nullptr);
    });
    barra->addSeparator();

    auto *rotulo = new QLabel(QStringLiteral(" &Escala "));
    barra->addWidget(rotulo);
    auto *escala = new QComboBox(barra);
    rotulo->setBuddy(escala); // Alt+E
    for (const int porcentaje : {50, 75, 100, 150, 200})
        escala->addItem(QStringLiteral("%1 %").arg(porcentaje), porcentaje / 100.0);
    escala->setCurrentIndex(2);
    escala->setAccessibleName(QStringLiteral("Escala"));
    connect(escala, &QComboBox::currentIndexChanged, this, [this, escala](int) {
        if (const ObjetoPtr frame = m_mapa->getFrame())
            m_mapa->setEscala(frame, escala->currentData().toFloat());
    });
    barra->addWidget(escala);
    barra->addSeparator();
    crearBuscador(barra);
}

void VentanaBodega::conectarEventos()
{
    connect(m_mapa, &MapaX::Click, this, [this](const ObjetoPtr &obj, bool multi) {
        anotar(QStringLiteral("Click %1 (varios: %2)").arg(codigo(obj), siNo(multi)));
    });
    connect(m_mapa, &MapaX::RightClick, this, [this](const ObjetoPtr &obj, bool multi) {
        anotar(QStringLiteral("RightClick %1 (varios: %2)").arg(codigo(obj), siNo(multi)));
    });
    connect(m_mapa, &MapaX::moved, this, [this](const ObjetoPtr &obj) {
        anotar(QStringLiteral("moved %1 → (%2, %3) %4 × %5")
                   .arg(codigo(obj))
                   .arg(obj ? obj->getX() : 0)
                   .arg(obj ? obj->getY() : 0)
                   .arg(obj ? obj->getAncho() : 0)
                   .arg(obj ? obj->getAlto() : 0));
    });
    connect(m_mapa, &MapaX::Drop, this,
            [this](const std::shared_ptr<Objetos> &origen, const ObjetoPtr &destino, qint32 shift) {
                QStringList codigos;
                if (origen) {
                    for (const ObjetoPtr &obj : *origen)
                        codigos.append(codigo(obj));
                }
                anotar(QStringLiteral("Drop [%1] sobre %2 (shift %3)")
                           .arg(codigos.join(QStringLiteral(", ")), codigo(destino))
                           .arg(shift));
            });
    connect(m_mapa, &MapaX::Enter, this,
            [this](const ObjetoPtr &obj) { anotar(QStringLiteral("Enter %1").arg(codigo(obj))); });
    connect(m_mapa, &MapaX::escalado, this, [this](const ObjetoPtr &obj, float factor) {
        anotar(QStringLiteral("escalado %1 al %2 %").arg(codigo(obj)).arg(qRound(factor * 100)));
    });
}

void VentanaBodega::mostrarSitio()
{
    const std::vector<ObjetoPtr> raices = m_sitio.raices();
    for (const ObjetoPtr &raiz : raices)
        m_mapa->add(raiz);
    m_mapa->ShowReferences();
    // The hall last, so that it is the active frame and its keys fill the legend.
    for (auto it = raices.rbegin(); it != raices.rend(); ++it)
        m_mapa->show(*it);
    anotar(QStringLiteral("%1 marcos en el mapa").arg(raices.size()));
    m_mapa->setFocus(); // the keyboard starts in the hall
}

void VentanaBodega::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    // The map has its final size only now: the frames are fitted to it, then laid out once.
    if (!m_dispuesto) {
        m_dispuesto = true;
        disponerMarcos();
    }
}

void VentanaBodega::disponerMarcos()
{
    // In rows from the top left, in the order of the map's controls (the legend first), each
    // frame as large as its content made it; a frame that does not fit the row starts the next.
    constexpr int margen = 6;
    QStringList nombres = m_mapa->controlNames();
    nombres.removeAll(QStringLiteral("thread"));
    if (nombres.removeAll(QStringLiteral("REF")))
        nombres.prepend(QStringLiteral("REF"));
    QPoint lugar(margen, margen);
    int altoFila = 0;
    for (const QString &nombre : std::as_const(nombres)) {
        QWidget *frame = m_mapa->control(nombre);
        if (!frame)
            continue;
        if (lugar.x() > margen && lugar.x() + frame->width() > m_mapa->width() - margen) {
            lugar = QPoint(margen, lugar.y() + altoFila + margen);
            altoFila = 0;
        }
        frame->move(lugar);
        lugar.rx() += frame->width() + margen;
        altoFila = std::max(altoFila, frame->height());
    }
}

void VentanaBodega::anotar(const QString &linea)
{
    m_registro->appendPlainText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss  ")) + linea);
}
