// SPDX-License-Identifier: MIT
#ifndef TARVONIX_FRAMEX_H
#define TARVONIX_FRAMEX_H

#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/tarvonix_export.h>
#include <tarvonix/views/iframex.h>

#include <QWidget>

#include <memory>

namespace tarvonix {

/*!
    The movable frame in which the map shows one root object.

    A title bar with the object's description, a minimise/restore button and
    a close button; scroll bars for what does not fit; and one contained
    control "conten": the leg view ("Tarvonix.PiernaX") when the object's type
    is exactly "P", the free-layout container ("Tarvonix.ContenedorX")
    otherwise. The frame fulfils IContenedorX by passing it on to "conten",
    except for setObjeto, getObjeto, setRoot and setActivo, which are its own.

    The wheel scrolls the content (sideways with Shift); Ctrl with the wheel
    and a pinch zoom it through setEscala(), keeping the point under the
    pointer in place, and report the new scale to the map.

    The scroll bars follow the frame's activation: they are enabled exactly
    while the frame is active. A press on an inactive frame's bar activates
    the frame, and the bar then takes the press.

    The contained view reaches the frame through IFrameX (the same members
    stay callable by name for hosts); the map through the container contract,
    setMaxViewPort(), getDragX(), getDragY() and Qt's own members.
    Activation, right-clicks, close requests and the start of a move go up to
    the map through its IMapaX.

    Created by name as "Tarvonix.FrameX". Failures are shown as
    "FrameX.operation->description".
*/
class VistaX;

class TARVONIX_EXPORT FrameX : public QWidget, public IContenedorX, public IFrameX
{
    Q_OBJECT
    //! Whether the frame is the active one.
    Q_PROPERTY(bool pActive READ pActive WRITE setPActive)

public:
    explicit FrameX(QWidget *parent = nullptr);
    ~FrameX() override;

    bool pActive() const override;
    void setPActive(bool active);

    //! The frame seen through its contract.
    Q_INVOKABLE tarvonix::IContenedorX *cast();
    //! The largest width and height the map allows; the frame fits itself again.
    Q_INVOKABLE void setMaxViewPort(double x, double y);
    //! Where the pointer held the frame when its move began, from the frame's top-left corner.
    Q_INVOKABLE float getDragX() const;
    Q_INVOKABLE float getDragY() const;
    //! Makes \a obj the frame's active object (activating the frame first if need be); answers it.
    Q_INVOKABLE tarvonix::ObjetoPtr setActive(const tarvonix::ObjetoPtr &obj) override;
    //! The contained control changed its size: fit the frame and its scroll bars to it.
    Q_INVOKABLE void Resize(QWidget *micontrol) override;
    Q_INVOKABLE void Icontenedorx_refrescar();
    Q_INVOKABLE void icontenedorx_setBloqueo(bool valor);
    //! Activates the frame when it is not active.
    Q_INVOKABLE void activate() override;
    Q_INVOKABLE bool isActive() const override;
    //! Tells \a micontrol which part of it shows between the title and the scroll bars.
    Q_INVOKABLE void setViewPort(QWidget *micontrol);
    //! Scrolls one step in \a value's direction (-1 or 1).
    Q_INVOKABLE void hScroll(qint16 value) override;
    Q_INVOKABLE void vScroll(qint16 value) override;

    //! The contained view, drawn whole when the frame's content is exported or printed.
    VistaX *vista() const;
    //! The scale the frame draws its content at.
    float escala() const;
    //! Selects \a obj alone, makes it the active object and scrolls the frame until it shows.
    void revelar(const ObjetoPtr &obj);

    // IContenedorX
    void setObjeto(const ObjetoPtr &objeto) override;
    ObjetoPtr getObjeto() override;
    void setRoot(IMapaX *root) override;
    void setActivo(const ObjetoPtr &objeto, bool valor) override;
    std::shared_ptr<Objetos> getSeleccionados() override;
    void refrescar() override;
    void setEscala(float escala) override;
    void setBloqueo(bool bloqueo) override;
    void alinearHorizontal(const ObjetoPtr &referencia) override;
    void alinearVertical(const ObjetoPtr &referencia) override;
    void igualarDimension(const ObjetoPtr &referencia) override;
    void distribuirHorizontal() override;
    void distribuirVertical() override;
    void seleccionarTodos() override;
    void deseleccionarTodos() override;
    void seleccionar(const QString &codigo) override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
