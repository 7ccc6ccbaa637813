// SPDX-License-Identifier: MIT
#include <tarvonix/model/pierna.h>

#include <tarvonix/model/escala.h>
#include <tarvonix/model/objetos.h>
#include <tarvonix/model/ubicacion.h>
#include <tarvonix/core/error.h>
#include <tarvonix/core/int16.h>

namespace tarvonix {

namespace {

template<typename Vector>
auto &elemento(Vector &vector, qint64 indice)
{
    if (indice < 1 || indice > qint64(vector.size()))
        throw Error(Error::SubscriptOutOfRange);
    return vector[size_t(indice - 1)];
}

} // namespace

Pierna::Pierna()
    : ObjetoComun(Perfil{QStringLiteral("P"),
                         ConGeometria | ConForma | ConImagen | ConTag | ConColor | ConTip
                             | ConReferencias,
                         0xFFFFFF})
{
}

Pierna::~Pierna() = default;

Escala &Pierna::escalaEn(qint16 e) const
{
    return *elemento(m_escalas, e);
}

std::vector<ObjetoPtr> &Pierna::posicionesDe(qint16 e)
{
    return elemento(m_posiciones, e);
}

const std::vector<ObjetoPtr> &Pierna::posicionesDe(qint16 e) const
{
    return elemento(m_posiciones, e);
}

QString Pierna::prefijo() const
{
    return getCodigo().left(6);
}

std::shared_ptr<Objetos> Pierna::getObjetos() const
{
    auto objetos = std::make_shared<Objetos>();
    for (int e = 1; e <= m_filas; ++e) {
        const qint16 largo = getLargo(qint16(e));
        for (int p = 1; p <= largo; ++p) {
            const ObjetoPtr &objeto = elemento(posicionesDe(qint16(e)), p);
            if (objeto)
                objetos->add(objeto);
        }
    }
    return objetos;
}

void Pierna::setLinea(qint16 linea)
{
    m_linea = linea;
}

qint16 Pierna::getLinea() const
{
    return m_linea;
}

void Pierna::setEscalas(qint16 n)
{
    // The new number of tiers.
    m_filas = n;
    // New, empty arrays: nothing of the earlier grid is carried over.
    const size_t tiers = n > 0 ? size_t(n) : 0;
    m_escalas.assign(tiers, nullptr);
    m_posiciones.assign(tiers, {});
    // The tiers, with the leg's code, company and code as they are now.
    for (int e = 1; e <= n; ++e) {
        auto escala = std::make_shared<Escala>();
        escala->setCodigo(prefijo() + QString::number(wrapInt16(qint64(e) * 1000)));
        escala->setEmpresa(getEmpresa());
        escala->setEscala(qint16(e));
        escala->setPadre(getCodigo());
        escala->setDescripcion(QStringLiteral("Escala ") + QString::number(e));
        m_escalas[size_t(e - 1)] = std::move(escala);
    }
}

void Pierna::setEscala(qint16 e, qint16 largo)
{
    escalaEn(e).setLargo(largo);
    posicionesDe(e).assign(largo > 0 ? size_t(largo) : 0, nullptr);
}

qint16 Pierna::getFilas() const
{
    return m_filas;
}

qint16 Pierna::getLargo(qint16 e) const
{
    return escalaEn(e).getLargo();
}

void Pierna::setObjeto(qint16 e, qint16 p, const ObjetoPtr &objeto)
{
    elemento(posicionesDe(e), p) = objeto;
}

ObjetoPtr Pierna::getObjeto(qint16 e, qint16 p) const
{
    try {
        return elemento(posicionesDe(e), p);
    } catch (const Error &) {
        return nullptr;
    }
}

std::shared_ptr<Ubicacion> Pierna::getUbicacion(qint16 e, qint16 p) const
{
    try {
        auto ubicacion = std::make_shared<Ubicacion>();
        ubicacion->setCodigo(prefijo() + QString::number(wrapInt16(qint64(e) * 1000 + p)));
        ubicacion->setEmpresa(getEmpresa());
        ubicacion->setEscala(e);
        ubicacion->setUbicacion(p);
        ubicacion->setPadre(escalaEn(e).getCodigo());
        ubicacion->setDescripcion(QStringLiteral("Escala ") + QString::number(e)
                                  + QStringLiteral(" Ubicación (Física)") + QString::number(p));
        return ubicacion;
    } catch (const Error &) {
        return nullptr;
    }
}

std::shared_ptr<Escala> Pierna::getEscala(qint16 e) const
{
    if (e < 1 || e > qint64(m_escalas.size()))
        return nullptr;
    return m_escalas[size_t(e - 1)];
}

bool Pierna::esUbicacion(qint16 e, qint16 p) const
{
    if (e < 1 || e > m_filas)
        return false;
    const qint16 largo = getLargo(e); // asked even for p out of range: an unbuilt grid fails here
    return p >= 1 && p <= largo;
}

void Pierna::setClasica(bool clasica)
{
    m_clasica = clasica;
}

bool Pierna::getClasica() const
{
    return m_clasica;
}

} // namespace tarvonix
