#include <tarvonix/views/vistax.h>

namespace tarvonix {

struct VistaX::Private
{
    float viewLeft = 0;
    float viewTop = 0;
    float viewRight = 0;
    float viewBottom = 0;
};

VistaX::VistaX(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
}

VistaX::~VistaX() = default;

IContenedorX *VistaX::cast()
{
    return this;
}

void VistaX::setViewPort(float left, float top, float right, float bottom)
{
    d->viewLeft = left;
    d->viewTop = top;
    d->viewRight = right;
    d->viewBottom = bottom;
}

float VistaX::viewLeft() const
{
    return d->viewLeft;
}

float VistaX::viewTop() const
{
    return d->viewTop;
}

float VistaX::viewRight() const
{
    return d->viewRight;
}

float VistaX::viewBottom() const
{
    return d->viewBottom;
}

} // namespace tarvonix
