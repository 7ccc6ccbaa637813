#include <tarvonix/widgets/dummy.h>

#include <tarvonix/platform/colorconversion.h>
#include <tarvonix/platform/propertybag.h>

#include <QPainter>

namespace tarvonix {

namespace {

constexpr qint16 defaultBackStyle = 0;
constexpr qint32 defaultBackColor = 0xFFFFFF;
constexpr qint16 defaultBorderStyle = 1;

} // namespace

Dummy::Dummy(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

Dummy::~Dummy() = default;

qint16 Dummy::BackStyle() const
{
    return m_backStyle;
}

void Dummy::setBackStyle(qint16 style)
{
    m_backStyle = style;
    update();
}

qint32 Dummy::BackColor() const
{
    return m_backColor;
}

void Dummy::setBackColor(qint32 colour)
{
    m_backColor = colour;
    update();
}

qint16 Dummy::BorderStyle() const
{
    return m_borderStyle;
}

void Dummy::setBorderStyle(qint16 style)
{
    m_borderStyle = style;
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
    bag.writeProperty(QStringLiteral("BackColor"), m_backColor, defaultBackColor);
    bag.writeProperty(QStringLiteral("BackStyle"), m_backStyle, defaultBackStyle);
    bag.writeProperty(QStringLiteral("BorderStyle"), m_borderStyle, defaultBorderStyle);
}

void Dummy::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (m_backStyle == 1)
        painter.fillRect(rect(), toQColor(m_backColor, palette()));
    if (m_borderStyle == 1) {
        painter.setPen(QPen(palette().color(QPalette::WindowText), 0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(0, 0, width() - 1, height() - 1);
    }
}

} // namespace tarvonix
