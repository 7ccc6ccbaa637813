// SPDX-License-Identifier: MIT
#ifndef TARVONIX_FRAMEREFX_H
#define TARVONIX_FRAMEREFX_H

#include <tarvonix/tarvonix_export.h>

#include <QWidget>

#include <memory>

namespace tarvonix {

class IMapaX;
class Referencias;

/*!
    The small movable frame in which the map shows the colour keys of the
    active frame's object: the legend, named "REF" among the map's controls.

    It looks like a FrameX — title bar, minimise and close buttons, the same
    active and inactive looks — but holds a legend list ("refx", a
    ReferenciasX) and no scroll bars, fits itself to the list, and takes no
    part in the container contract (it has no "cast"). Closing it asks the
    map to remove the legend, which also stops it from coming back until the
    host asks for it again.

    Created by name as "Tarvonix.FrameRefX". It traps nothing itself: its
    failures reach the caller.
*/
class TARVONIX_EXPORT FrameRefX : public QWidget
{
    Q_OBJECT

public:
    explicit FrameRefX(QWidget *parent = nullptr);
    ~FrameRefX() override;

    //! Accepted and ignored: the legend is as large as its list.
    Q_INVOKABLE void setMaxViewPort(double x, double y);
    //! Where the pointer held the frame when its move began, from the frame's top-left corner.
    Q_INVOKABLE float getDragX() const;
    Q_INVOKABLE float getDragY() const;
    Q_INVOKABLE void setRoot(tarvonix::IMapaX *m);
    //! The active (navy, white, bold title) or inactive (silver, black) look; active brings it to the front.
    Q_INVOKABLE void setActive(bool act);
    Q_INVOKABLE void IObjetoX_setRoot(tarvonix::IMapaX *m);
    Q_INVOKABLE void activate();
    Q_INVOKABLE bool isActive() const;
    //! Shows \a ref in the list; the frame fits itself to the list.
    Q_INVOKABLE void setReferencias(const std::shared_ptr<tarvonix::Referencias> &ref);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
