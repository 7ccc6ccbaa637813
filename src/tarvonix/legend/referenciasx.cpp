// SPDX-License-Identifier: MIT
#include <tarvonix/legend/referenciasx.h>

#include <tarvonix/core/error.h>
#include <tarvonix/legend/referenciax.h>
#include <tarvonix/platform/propertybag.h>
#include <tarvonix/platform/stylecodes.h>

#include <QPainter>

#include <algorithm>

namespace tarvonix {

namespace {

constexpr int altoFila = 24;

constexpr qint32 defaultBackColor = 0xFFFFFF;
constexpr qint16 defaultBorderStyle = BorderNone;
constexpr float defaultFontSize = 0;
constexpr qint32 defaultForeColor = qint32(0x80000012); // the system's button text

} // namespace

struct ReferenciasX::Private
{
    explicit Private(ReferenciasX *lista)
        : filas(lista)
    { }

    //! The width of the border around the rows.
    int borde() const { return borderStyle == BorderSingle ? 1 : 0; }

    Surface surface;
    qint16 borderStyle = defaultBorderStyle;
    std::shared_ptr<Referencias> referencias;
    ChildControls filas;
};

ReferenciasX::ReferenciasX(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->surface.setBackColor(defaultBackColor);
    d->surface.setForeColor(defaultForeColor);
}

ReferenciasX::~ReferenciasX() = default;

qint32 ReferenciasX::BackColor() const
{
    return d->surface.backColor();
}

void ReferenciasX::setBackColor(qint32 colour)
{
    d->surface.setBackColor(colour);
    update();
}

qint16 ReferenciasX::BorderStyle() const
{
    return d->borderStyle;
}

void ReferenciasX::setBorderStyle(qint16 style)
{
    d->borderStyle = style;
    update();
}

QString ReferenciasX::FontName() const
{
    return font().family();
}

void ReferenciasX::setFontName(const QString &name)
{
    if (name.isEmpty())
        return;
    QFont f = font();
    f.setFamily(name);
    setFont(f);
}

bool ReferenciasX::FontBold() const
{
    return font().bold();
}

void ReferenciasX::setFontBold(bool bold)
{
    QFont f = font();
    f.setBold(bold);
    setFont(f);
}

float ReferenciasX::FontSize() const
{
    return float(font().pointSizeF());
}

void ReferenciasX::setFontSize(float size)
{
    if (!(size > 0))
        return;
    QFont f = font();
    f.setPointSizeF(size);
    setFont(f);
}

qint32 ReferenciasX::ForeColor() const
{
    return d->surface.foreColor();
}

void ReferenciasX::setForeColor(qint32 colour)
{
    d->surface.setForeColor(colour);
    update();
}

void ReferenciasX::setReferencias(const std::shared_ptr<Referencias> &lista)
{
    // Keep the list.
    d->referencias = lista;
    // Away with the rows of the previous list.
    const QStringList anteriores = d->filas.names();
    for (const QString &nombre : anteriores)
        d->filas.remove(nombre);
    if (!d->referencias)
        throw Error(Error::ObjectNotSet);

    // One row per key, stacked from the top.
    const int b = d->borde();
    int arriba = 0;
    int masAncha = 0;
    auto claves = d->referencias->NewEnum();
    while (claves.hasNext()) {
        const std::shared_ptr<Referencia> r = claves.next();
        QWidget *control
            = d->filas.add(QStringLiteral("Tarvonix.ReferenciaX"), QStringLiteral("R") + r->getClave());
        auto *fila = qobject_cast<ReferenciaX *>(control);
        if (!fila)
            throw Error(Error::MemberNotSupported);
        fila->setFont(font());
        fila->move(b, b + arriba);
        fila->resize(fila->width(), altoFila);
        fila->setReferencia(r);
        fila->setVisible(true);
        masAncha = std::max(masAncha, fila->width());
        arriba += altoFila;
    }

    // Every row as wide as the widest.
    const QStringList nombres = d->filas.names();
    for (const QString &nombre : nombres) {
        QWidget *fila = d->filas.item(nombre);
        fila->resize(masAncha, fila->height());
    }

    // The list takes the size of its rows (and of its border).
    resize(masAncha + 2 * b, d->referencias->count() * altoFila + 2 * b);

    // The frame that hosts the list fits itself to the new size.
    Q_EMIT Resize();
}

std::shared_ptr<Referencias> ReferenciasX::referencias() const
{
    return d->referencias;
}

void ReferenciasX::readProperties(const PropertyBag &bag)
{
    setBackColor(bag.readProperty(QStringLiteral("BackColor"), defaultBackColor).value<qint32>());
    setBorderStyle(bag.readProperty(QStringLiteral("BorderStyle"), defaultBorderStyle).value<qint16>());
    setFontName(bag.readProperty(QStringLiteral("FontName"), QString()).toString());
    setFontBold(bag.readProperty(QStringLiteral("FontBold"), false).toBool());
    setFontSize(bag.readProperty(QStringLiteral("FontSize"), defaultFontSize).value<float>());
    setForeColor(bag.readProperty(QStringLiteral("ForeColor"), defaultForeColor).value<qint32>());
}

void ReferenciasX::writeProperties(PropertyBag &bag) const
{
    bag.writeProperty(QStringLiteral("BackColor"), BackColor(), defaultBackColor);
    bag.writeProperty(QStringLiteral("BorderStyle"), BorderStyle(), defaultBorderStyle);
    bag.writeProperty(QStringLiteral("FontName"), FontName(), QString());
    bag.writeProperty(QStringLiteral("FontBold"), FontBold(), false);
    bag.writeProperty(QStringLiteral("FontSize"), FontSize(), defaultFontSize);
    bag.writeProperty(QStringLiteral("ForeColor"), ForeColor(), defaultForeColor);
}

void ReferenciasX::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Surface::Painting painting(d->surface, painter);
    d->surface.clear(0, 0, width(), height());
    if (d->borde() > 0) {
        // Drawn in the fore colour, like the outlines of the rows' colour boxes.
        d->surface.setFillStyle(Surface::FillTransparent);
        d->surface.setDrawStyle(Surface::DrawSolid);
        d->surface.box(0, 0, width() - 1, height() - 1);
    }
}

} // namespace tarvonix
