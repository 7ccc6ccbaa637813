// SPDX-License-Identifier: MIT
#include "ventanabodega.h"

#include <tarvonix/map/mapax.h>
#include <tarvonix/model/objetos.h>

#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTime>
#include <QToolBar>

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

    crearBarra();
    conectarEventos();
    resize(1180, 860);
    resizeDocks({dock}, {150}, Qt::Vertical);
    mostrarSitio();
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
}

void VentanaBodega::mostrarSitio()
{
    // Where each frame starts: the legend takes the top-left corner.
    const QList<QPoint> lugares = {QPoint(170, 4), QPoint(4, 470), QPoint(400, 470), QPoint(720, 470)};
    const std::vector<ObjetoPtr> raices = m_sitio.raices();
    for (size_t i = 0; i < raices.size(); ++i) {
        m_mapa->add(raices[i]);
        if (QWidget *frame = m_mapa->control(raices[i]->getTipo() + raices[i]->getCodigo()))
            frame->move(lugares.value(int(i), QPoint(20 * int(i), 20 * int(i))));
    }
    m_mapa->ShowReferences();
    // The hall last, so that it is the active frame and its keys fill the legend.
    for (auto it = raices.rbegin(); it != raices.rend(); ++it)
        m_mapa->show(*it);
    anotar(QStringLiteral("%1 marcos en el mapa").arg(raices.size()));
    m_mapa->setFocus(); // the keyboard starts in the hall
}

void VentanaBodega::anotar(const QString &linea)
{
    m_registro->appendPlainText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss  ")) + linea);
}
