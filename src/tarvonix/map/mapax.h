// SPDX-License-Identifier: MIT
#ifndef TARVONIX_MAPAX_H
#define TARVONIX_MAPAX_H

#include <tarvonix/model/objetos.h>
#include <tarvonix/tarvonix_export.h>
#include <tarvonix/views/imapax.h>

#include <QWidget>

#include <memory>

namespace tarvonix {

/*!
    The map: the control a host puts on its form to show a site.

    Each root object the host adds lives in its own frame ("Tarvonix.FrameX"),
    a child control named by the object's type followed by its code ("D" +
    "12" is "D12"). The frame holds the free-layout container, or the leg view
    for a leg (type "P"). The map keeps every frame inside its own area,
    tracks the active frame and the active object, shows an optional legend
    frame "REF" with the colour keys of the active frame's object, moves
    frames when the user drags their title bar, and runs the host's layout
    requests on the next tick of its timer "thread".

    What the user does comes back to the host as the signals Click,
    RightClick, moved, Drop, Enter and escalado, carrying the map objects concerned.
    The keyboard works in the active frame's view, which the map hands its
    focus on to; Ctrl+Tab and Ctrl+Shift+Tab activate the next and the
    previous frame shown.

    Every operation traps its own failures and shows them as
    "MapaX.operation->description" (see reportError()); only isMember() and
    the key handling end silently, and getActive(), getFrame(), the
    properties and resized() let failures reach the caller.
*/
class TARVONIX_EXPORT MapaX : public QWidget
{
    Q_OBJECT
    //! Reading always answers false; writing discards the value and redraws the map.
    Q_PROPERTY(bool selected READ selected WRITE setSelected DESIGNABLE false STORED false)
    Q_PROPERTY(QString FontName READ FontName WRITE setFontName)
    Q_PROPERTY(int FontSize READ FontSize WRITE setFontSize)
    //! The map's background colour, 0x00BBGGRR.
    Q_PROPERTY(qint32 BackColor READ BackColor WRITE setBackColor)

public:
    explicit MapaX(QWidget *parent = nullptr);
    ~MapaX() override;

    using QWidget::hide;
    using QWidget::show;

    //! Creates the frame of \a obj and fits it into the map; it stays hidden until show().
    Q_INVOKABLE void add(const tarvonix::ObjetoPtr &obj);
    //! Removes the frame of \a obj (clearing the active frame and object), or the legend when \a obj is none.
    Q_INVOKABLE void remove(const tarvonix::ObjetoPtr &obj);
    //! Removes every frame, the legend and any move outline.
    Q_INVOKABLE void removeAll();
    Q_INVOKABLE tarvonix::ObjetoPtr getActive() const;
    //! The object of the active frame, or none.
    Q_INVOKABLE tarvonix::ObjetoPtr getFrame() const;
    //! The selection of the active frame (the live collection), or none.
    Q_INVOKABLE std::shared_ptr<tarvonix::Objetos> getSelected();
    //! Puts \a nuevo in place of the active frame's object (a new frame when the code differs).
    Q_INVOKABLE void setObjeto(const tarvonix::ObjetoPtr &nuevo);
    //! Redraws the frame of \a obj, or the whole map when \a obj is none.
    Q_INVOKABLE void Refresh(const tarvonix::ObjetoPtr &obj = nullptr);
    //! Makes the frame of \a obj visible and active.
    Q_INVOKABLE void show(const tarvonix::ObjetoPtr &obj);
    Q_INVOKABLE void hide(const tarvonix::ObjetoPtr &obj);
    Q_INVOKABLE bool isMember(const tarvonix::ObjetoPtr &esta);
    //! Asks for the legend of the active object from now on.
    Q_INVOKABLE void ShowReferences();
    Q_INVOKABLE void setEscala(const tarvonix::ObjetoPtr &obj, float factor);
    /*!
        Finds the object coded \a codigo (any letter case) among the roots, the
        children of the containers and what stands on the positions of the legs
        (by its own code or the position's); shows and activates its frame,
        selects it alone, scrolls it into view and answers it. A code that is
        not found answers none and changes nothing.
    */
    Q_INVOKABLE tarvonix::ObjetoPtr revelar(const QString &codigo);

    //! Layout requests, run on the active frame's container at the next timer tick; the last one wins.
    Q_INVOKABLE void alinearHorizontal();
    Q_INVOKABLE void alinearVertical();
    Q_INVOKABLE void igualarDimension();
    Q_INVOKABLE void distribuirHorizontal();
    Q_INVOKABLE void distribuirVertical();

    Q_INVOKABLE void seleccionar(const tarvonix::ObjetoPtr &obj, const QString &codigo);
    Q_INVOKABLE void seleccionarTodos(const tarvonix::ObjetoPtr &obj);
    Q_INVOKABLE void deseleccionarTodos(const tarvonix::ObjetoPtr &obj);
    //! Locks (or unlocks) moving in the frames, walking the child controls in order.
    Q_INVOKABLE void setBloqueo(bool valor);

    //! Begins moving \a frame: the frames are disabled, an outline follows the pointer.
    Q_INVOKABLE void startMove(QWidget *frame);
    //! Ends moving \a frame: it shows again where it was dropped.
    Q_INVOKABLE void completeMove(QWidget *frame);

    bool selected() const;
    void setSelected(bool value);
    QString FontName() const;
    void setFontName(const QString &name);
    qint16 FontSize() const;
    void setFontSize(qint16 size);
    qint32 BackColor() const;
    void setBackColor(qint32 colour);

    //! Fits every child control into the map again; failures reach the caller.
    Q_INVOKABLE void resized();

    //! The callbacks of the map, callable directly: each raises the signal of the same meaning.
    Q_INVOKABLE void IMapaX_clicked(const tarvonix::ObjetoPtr &obj, bool multi);
    Q_INVOKABLE void IMapaX_rightClicked(const tarvonix::ObjetoPtr &obj, bool multi);
    Q_INVOKABLE void IMapaX_Droped(const QString &origen, const tarvonix::ObjetoPtr &destino, qint32 shift);
    Q_INVOKABLE void IMapaX_Moved(const tarvonix::ObjetoPtr &obj);
    Q_INVOKABLE void IMapaX_escalado(const tarvonix::ObjetoPtr &obj, float factor);

    //! Shows, fills or hides the legend frame for the active frame's object.
    Q_INVOKABLE void references();

    //! The map as its frames and containers see it.
    IMapaX *callbacks();
    //! Names of the child controls, in order, beginning with the timer "thread".
    QStringList controlNames() const;
    //! The child control named \a name, or nullptr.
    QWidget *control(const QString &name) const;

Q_SIGNALS:
    void Click(const tarvonix::ObjetoPtr &obj, bool multi);
    void RightClick(const tarvonix::ObjetoPtr &obj, bool multi);
    void moved(const tarvonix::ObjetoPtr &obj);
    void Drop(const std::shared_ptr<tarvonix::Objetos> &orig, const tarvonix::ObjetoPtr &dest, qint32 shift);
    void Enter(const tarvonix::ObjetoPtr &obj);
    //! The user zoomed the frame of \a obj to \a factor (Ctrl with the wheel, a pinch); a host stores it.
    void escalado(const tarvonix::ObjetoPtr &obj, float factor);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
