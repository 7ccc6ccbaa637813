#ifndef TARVONIX_VISTAX_H
#define TARVONIX_VISTAX_H

#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/tarvonix_export.h>

#include <QWidget>

#include <memory>

namespace tarvonix {

/*!
    The base of the two views a frame can hold: the free-layout container
    ContenedorX and the leg view PiernaX.

    It owns what both views do alike; each view keeps its own hit-testing,
    drawing and gesture rules.
*/
class TARVONIX_EXPORT VistaX : public QWidget, public IContenedorX
{
    Q_OBJECT

public:
    ~VistaX() override;

    //! The view seen through its container contract.
    Q_INVOKABLE tarvonix::IContenedorX *cast();
    //! The part of the view that its frame shows, in drawing units; a drag scrolls near its edges.
    Q_INVOKABLE void setViewPort(float left, float top, float right, float bottom);

protected:
    explicit VistaX(QWidget *parent);

    //! The rectangle last given to setViewPort().
    float viewLeft() const;
    float viewTop() const;
    float viewRight() const;
    float viewBottom() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
