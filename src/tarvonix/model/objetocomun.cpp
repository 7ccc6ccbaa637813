// SPDX-License-Identifier: MIT
#include <tarvonix/model/objetocomun.h>

#include <tarvonix/model/referencias.h>
#include <tarvonix/model/imagen.h>
#include <tarvonix/model/objetos.h>

#include <atomic>

namespace tarvonix {

namespace {

// Only space characters are removed, at both ends; tabs and other blanks stay.
QString sinEspacios(const QString &texto)
{
    qsizetype inicio = 0;
    qsizetype fin = texto.size();
    while (inicio < fin && texto.at(inicio) == QLatin1Char(' '))
        ++inicio;
    while (fin > inicio && texto.at(fin - 1) == QLatin1Char(' '))
        --fin;
    return texto.mid(inicio, fin - inicio);
}

// Constant-initialised: no constructor runs when the library loads.
std::atomic<quint64> cambiosGeometria { 0 };

// Stores a position or size field and counts the change, if it is one.
void fijarGeometria(qint16 &campo, qint16 valor)
{
    if (campo != valor) {
        campo = valor;
        cambiosGeometria.fetch_add(1, std::memory_order_relaxed);
    }
}

} // namespace

quint64 ObjetoComun::cambiosDeGeometria()
{
    return cambiosGeometria.load(std::memory_order_relaxed);
}

IObjeto::~IObjeto() = default;

ObjetoComun::ObjetoComun(const Perfil &perfil)
    : m_tipo(perfil.tipoFijo.value_or(QString()))
    , m_color(perfil.colorInicial)
    , m_guardados(quint8(perfil.guardados))
    , m_tipoFijo(perfil.tipoFijo.has_value())
{
    static_assert(ConContener <= 0xFF, "the stored fields must fit m_guardados");
}

ObjetoComun::Extras &ObjetoComun::extras()
{
    if (!m_extras)
        m_extras = std::make_unique<Extras>();
    return *m_extras;
}

ObjetoComun::~ObjetoComun() = default;

void ObjetoComun::setDescripcion(const QString &descripcion)
{
    m_descripcion = sinEspacios(descripcion);
}

QString ObjetoComun::getDescripcion() const
{
    return m_descripcion;
}

void ObjetoComun::setCodigo(const QString &codigo)
{
    m_codigo = codigo;
}

QString ObjetoComun::getCodigo() const
{
    return m_codigo;
}

QString ObjetoComun::getTipo() const
{
    return m_tipo;
}

void ObjetoComun::setTipo(const QString &tipo)
{
    if (!m_tipoFijo)
        m_tipo = tipo;
}

qint16 ObjetoComun::getEmpresa() const
{
    return m_empresa;
}

void ObjetoComun::setEmpresa(qint16 empresa)
{
    m_empresa = empresa;
}

qint16 ObjetoComun::getX() const
{
    return m_x;
}

void ObjetoComun::setX(qint16 x)
{
    if (guarda(ConGeometria))
        fijarGeometria(m_x, x < 0 ? qint16(0) : x);
}

qint16 ObjetoComun::getY() const
{
    return m_y;
}

void ObjetoComun::setY(qint16 y)
{
    if (guarda(ConGeometria))
        fijarGeometria(m_y, y < 0 ? qint16(0) : y);
}

qint16 ObjetoComun::getAncho() const
{
    return m_ancho;
}

void ObjetoComun::setAncho(qint16 ancho)
{
    if (guarda(ConGeometria))
        fijarGeometria(m_ancho, ancho);
}

qint16 ObjetoComun::getAlto() const
{
    return m_alto;
}

void ObjetoComun::setAlto(qint16 alto)
{
    if (guarda(ConGeometria))
        fijarGeometria(m_alto, alto);
}

qint16 ObjetoComun::getForma() const
{
    return m_forma;
}

void ObjetoComun::setForma(qint16 forma)
{
    if (guarda(ConForma))
        m_forma = forma;
}

std::shared_ptr<Imagen> ObjetoComun::getImagen() const
{
    return m_extras ? m_extras->imagen : nullptr;
}

void ObjetoComun::setImagen(std::shared_ptr<Imagen> imagen)
{
    if (guarda(ConImagen) && (m_extras || imagen))
        extras().imagen = std::move(imagen);
}

QVariant ObjetoComun::getTag() const
{
    return m_extras ? m_extras->tag : QVariant();
}

void ObjetoComun::setTag(const QVariant &tag)
{
    // A QVariant holding a map object shares the reference; any other value is a copy.
    if (guarda(ConTag) && (m_extras || tag.isValid()))
        extras().tag = tag;
}

void ObjetoComun::setColor(qint32 color)
{
    if (guarda(ConColor))
        m_color = color;
}

qint32 ObjetoComun::getColor() const
{
    return m_color;
}

void ObjetoComun::setTip(const QString &tip)
{
    if (guarda(ConTip) && (m_extras || !tip.isNull()))
        extras().tip = tip;
}

QString ObjetoComun::getTip() const
{
    return m_extras ? m_extras->tip : QString();
}

std::shared_ptr<Objetos> ObjetoComun::getObjetos() const
{
    return m_extras ? m_extras->objetos : nullptr;
}

bool ObjetoComun::getPuedeContener() const
{
    return m_puedeContener;
}

void ObjetoComun::setPuedeContener(bool puedeContener)
{
    if (!guarda(ConContener))
        return;
    m_puedeContener = puedeContener;
    // A new empty collection every time, even when the object could already
    // contain: setting true a second time drops the children.
    if (puedeContener)
        extras().objetos = std::make_shared<Objetos>();
    else if (m_extras)
        m_extras->objetos = nullptr;
}

bool ObjetoComun::getSeleccionado() const
{
    return m_seleccionado;
}

void ObjetoComun::setSeleccionado(bool seleccionado)
{
    m_seleccionado = seleccionado;
}

bool ObjetoComun::getActivo() const
{
    return m_activo;
}

void ObjetoComun::setActivo(bool activo)
{
    m_activo = activo;
}

void ObjetoComun::setPadre(const QString &padre)
{
    if (m_extras || !padre.isNull())
        extras().padre = padre;
}

QString ObjetoComun::getPadre() const
{
    return m_extras ? m_extras->padre : QString();
}

void ObjetoComun::setReferencias(std::shared_ptr<Referencias> referencias)
{
    if (guarda(ConReferencias) && (m_extras || referencias))
        extras().referencias = std::move(referencias);
}

std::shared_ptr<Referencias> ObjetoComun::getReferencias() const
{
    return m_extras ? m_extras->referencias : nullptr;
}

} // namespace tarvonix
