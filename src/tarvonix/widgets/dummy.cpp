// SPDX-License-Identifier: MIT
#include <tarvonix/widgets/dummy.h>

#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/propertybag.h>
#include <tarvonix/platform/stylecodes.h>

#include <QPainter>

namespace tarvonix {

namespace {

constexpr qint16 defaultBackStyle = BackTransparent;
constexpr qint32 defaultBackColor = 0xFFFFFF;
constexpr qint16 defaultBorderStyle = BorderSingle;

} // namespace

struct Dummy::Private
{
    qint16 backStyle = defaultBackStyle;
    qint32 backColor = 0xFFFFFF;
    qint16 borderStyle = defaultBorderStyle;
};

Dummy::Dummy(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

Dummy::~Dummy() = default;

qint16 Dummy::BackStyle() const
{
    return d->backStyle;
}

void Dummy::setBackStyle(qint16 style)
{
    d->backStyle = style;
    update();
}

qint32 Dummy::BackColor() const
{
    return d->backColor;
}

void Dummy::setBackColor(qint32 colour)
{
    d->backColor = colour;
    update();
}

qint16 Dummy::BorderStyle() const
{
    return d->borderStyle;
}

void Dummy::setBorderStyle(qint16 style)
{
    d->borderStyle = style;
    update();
}

void Dummy::readProperties(const PropertyBag &bag)
{
    setBackColor(bag.readProperty(QStringLiteral("BackColor"), defaultBackColor).value<qint32>());
    setBackStyle(bag.readProperty(QStringLiteral("BackStyle"), defaultBackStyle).value<qint16>());
    // Read as "Borderstyle", written as "BorderStyle": the bag's keys ignore case.
    setBorderStyle(bag.readProperty(QStringLiteral("Borderstyle"), defaultBorderStyle).value<qint16>());
}

void Dummy::writeProperties(PropertyBag &bag) const
{
    bag.writeProperty(QStringLiteral("BackColor"), d->backColor, defaultBackColor);
    bag.writeProperty(QStringLiteral("BackStyle"), d->backStyle, defaultBackStyle);
    bag.writeProperty(QStringLiteral("BorderStyle"), d->borderStyle, defaultBorderStyle);
}

void Dummy::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (d->backStyle == BackOpaque)
        painter.fillRect(rect(), toQColor(d->backColor, palette()));
    if (d->borderStyle == BorderSingle) {
        painter.setPen(QPen(palette().color(QPalette::WindowText), 0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(0, 0, width() - 1, height() - 1);
    }
}

} // namespace tarvonix
