// SPDX-License-Identifier: MIT
#include <tarvonix/views/indiceespacial.h>

#include <algorithm>
#include <cmath>

namespace tarvonix {

namespace {

// A box over more cells than this is kept aside and looked at by every query.
constexpr qint64 maxCeldas = 256;
// Cell numbers stay well inside 32 bits whatever the coordinates.
constexpr double limite = 1 << 30;

qint64 celda(double valor, double lado)
{
    const double c = std::floor(valor / lado);
    if (!(c > -limite))
        return qint64(-limite);
    return qint64(std::min(c, limite));
}

// Edges included, unlike QRectF::intersects(), and for boxes of no width or height too.
bool toca(const QRectF &a, const QRectF &b)
{
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() && b.top() <= a.bottom();
}

} // namespace

void IndiceEspacial::clear(double lado)
{
    m_lado = lado > 0 && std::isfinite(lado) ? lado : 64;
    m_entradas.clear();
    m_ids.clear();
    m_celdas.clear();
    m_grandes.clear();
    m_marcas.clear();
    ++m_generacion;
}

IndiceEspacial::Celdas IndiceEspacial::celdasDe(const QRectF &caja) const
{
    const QRectF r = caja.normalized();
    return { celda(r.left(), m_lado), celda(r.top(), m_lado), celda(r.right(), m_lado),
             celda(r.bottom(), m_lado) };
}

void IndiceEspacial::agregar(const ObjetoPtr &objeto, const QRectF &caja)
{
    const int id = int(m_entradas.size());
    m_entradas.push_back({ objeto, caja.normalized() });
    m_ids.emplace(objeto.get(), id);
    poner(id);
    ++m_generacion;
}

bool IndiceEspacial::mover(const IObjeto *objeto, const QRectF &caja)
{
    const auto it = m_ids.find(objeto);
    if (it == m_ids.end())
        return false;
    const QRectF nueva = caja.normalized();
    Entrada &entrada = m_entradas[size_t(it->second)];
    if (entrada.caja == nueva)
        return true;
    sacar(it->second);
    entrada.caja = nueva;
    poner(it->second);
    ++m_generacion;
    return true;
}

void IndiceEspacial::quitar(const IObjeto *objeto)
{
    const auto it = m_ids.find(objeto);
    if (it == m_ids.end())
        return;
    sacar(it->second);
    m_entradas[size_t(it->second)].objeto.reset();
    m_ids.erase(it);
    ++m_generacion;
}

void IndiceEspacial::poner(int id)
{
    Entrada &entrada = m_entradas[size_t(id)];
    const Celdas c = celdasDe(entrada.caja);
    entrada.grande = c.cuantas() > maxCeldas;
    if (entrada.grande) {
        m_grandes.push_back(id);
        return;
    }
    for (qint64 y = c.y1; y <= c.y2; ++y)
        for (qint64 x = c.x1; x <= c.x2; ++x)
            m_celdas[clave(x, y)].push_back(id);
}

void IndiceEspacial::sacar(int id)
{
    const auto quitarDe = [id](std::vector<int> &ids) {
        const auto it = std::find(ids.begin(), ids.end(), id);
        if (it != ids.end()) {
            *it = ids.back();
            ids.pop_back();
        }
    };
    const Entrada &entrada = m_entradas[size_t(id)];
    if (entrada.grande) {
        quitarDe(m_grandes);
        return;
    }
    const Celdas c = celdasDe(entrada.caja);
    for (qint64 y = c.y1; y <= c.y2; ++y) {
        for (qint64 x = c.x1; x <= c.x2; ++x) {
            const auto it = m_celdas.find(clave(x, y));
            if (it == m_celdas.end())
                continue;
            quitarDe(it->second);
            if (it->second.empty())
                m_celdas.erase(it);
        }
    }
}

template<typename F> std::vector<ObjetoPtr> IndiceEspacial::buscar(const QRectF &zona, F &&acepta) const
{
    if (m_marcas.size() < m_entradas.size())
        m_marcas.resize(m_entradas.size(), m_sello);
    if (++m_sello == 0) {
        std::fill(m_marcas.begin(), m_marcas.end(), 0);
        m_sello = 1;
    }
    std::vector<int> ids;
    const auto tomar = [&](int id) {
        if (m_marcas[size_t(id)] == m_sello)
            return;
        m_marcas[size_t(id)] = m_sello;
        if (acepta(m_entradas[size_t(id)].caja))
            ids.push_back(id);
    };
    for (const int id : m_grandes)
        tomar(id);
    const Celdas c = celdasDe(zona);
    if (c.cuantas() > qint64(m_celdas.size())) {
        // A zone larger than what is filled: walk the filled cells instead of the zone's.
        for (const auto &[k, enCelda] : m_celdas) {
            const qint64 x = qint32(k >> 32);
            const qint64 y = qint32(k & 0xFFFFFFFF);
            if (x >= c.x1 && x <= c.x2 && y >= c.y1 && y <= c.y2)
                for (const int id : enCelda)
                    tomar(id);
        }
    } else {
        for (qint64 y = c.y1; y <= c.y2; ++y) {
            for (qint64 x = c.x1; x <= c.x2; ++x) {
                const auto it = m_celdas.find(clave(x, y));
                if (it != m_celdas.end())
                    for (const int id : it->second)
                        tomar(id);
            }
        }
    }
    std::sort(ids.begin(), ids.end());
    std::vector<ObjetoPtr> objetos;
    objetos.reserve(ids.size());
    for (const int id : ids)
        objetos.push_back(m_entradas[size_t(id)].objeto);
    return objetos;
}

std::vector<ObjetoPtr> IndiceEspacial::en(QPointF punto) const
{
    const QRectF zona(punto, QSizeF(0, 0));
    return buscar(zona, [&](const QRectF &caja) { return toca(caja, zona); });
}

std::vector<ObjetoPtr> IndiceEspacial::en(const QRectF &zona) const
{
    const QRectF z = zona.normalized();
    return buscar(z, [&](const QRectF &caja) { return toca(caja, z); });
}

} // namespace tarvonix
