// SPDX-License-Identifier: MIT
#ifndef TARVONIX_DUMMY_H
#define TARVONIX_DUMMY_H

#include <tarvonix/platform/stylecodes.h>
#include <tarvonix/tarvonix_export.h>

#include <QWidget>

#include <memory>

namespace tarvonix {

class PropertyBag;

/*!
    A plain box with no behaviour of its own, floated above a drawing: the
    containers' rubber bands, the outline boxes of a move, the map's outline
    while a frame is dragged.

    With nothing read from a property bag it is a transparent box with a
    single-line border: an outline. It lets pointer events through to what
    lies beneath it.

    Created by name as "Tarvonix.Dummy".
*/
class TARVONIX_EXPORT Dummy : public QWidget
{
    Q_OBJECT
    //! BackTransparent (0) or BackOpaque (1).
    Q_PROPERTY(int BackStyle READ BackStyle WRITE setBackStyle)
    //! The fill colour, 0x00BBGGRR; it shows only when BackStyle is 1.
    Q_PROPERTY(qint32 BackColor READ BackColor WRITE setBackColor)
    //! BorderNone (0) or BorderSingle (1).
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE setBorderStyle)

public:
    explicit Dummy(QWidget *parent = nullptr);
    ~Dummy() override;

    qint16 BackStyle() const;
    void setBackStyle(qint16 style);
    qint32 BackColor() const;
    void setBackColor(qint32 colour);
    qint16 BorderStyle() const;
    void setBorderStyle(qint16 style);

    //! Reads the three properties from \a bag, each with its default.
    void readProperties(const PropertyBag &bag);
    //! Writes the three properties into \a bag; values equal to the defaults are not stored.
    void writeProperties(PropertyBag &bag) const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
