// SPDX-License-Identifier: MIT
#ifndef TARVONIX_REFERENCIASX_H
#define TARVONIX_REFERENCIASX_H

#include <tarvonix/model/referencia.h>
#include <tarvonix/model/referencias.h>
#include <tarvonix/platform/childcontrols.h>
#include <tarvonix/platform/surface.h>
#include <tarvonix/tarvonix_export.h>

#include <QWidget>

#include <memory>

namespace tarvonix {

class PropertyBag;

/*!
    The legend: a column of rows (ReferenciaX), one per colour key of a
    Referencias list, each a small box in the key's colour and the key's text.

    setReferencias() rebuilds every row from scratch: the rows are child
    controls named "R" followed by each key's clave, 24 pixels high, stacked
    from the top in the list's order and all as wide as the widest of them.
    The list then takes the size of its rows (0 by 0 when there are none) and
    raises Resize, so that the frame that hosts it can fit itself.

    Clicking or double-clicking a row raises Click or DblClick with the row's
    Referencia. The rows reach the list through these same members by name.

    With BorderStyle BorderSingle (1) the list draws a single-line border around its rows
    and is two pixels wider and higher than they are.

    Width, Height, Visible and Refresh are the widget's own. The six
    properties below are persisted with readProperties() and writeProperties().
*/
class TARVONIX_EXPORT ReferenciasX : public QWidget
{
    Q_OBJECT
    //! Background colour, 0x00BBGGRR or a system colour; white by default.
    Q_PROPERTY(qint32 BackColor READ BackColor WRITE setBackColor)
    //! 0 no border, 1 single line.
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE setBorderStyle)
    //! The font's family; an empty name leaves the family as it is.
    Q_PROPERTY(QString FontName READ FontName WRITE setFontName)
    Q_PROPERTY(bool FontBold READ FontBold WRITE setFontBold)
    //! The font's size in points; a size of 0 or less leaves the size as it is.
    Q_PROPERTY(double FontSize READ FontSize WRITE setFontSize)
    //! Fore colour; the system's button text (0x80000012) by default.
    Q_PROPERTY(qint32 ForeColor READ ForeColor WRITE setForeColor)

public:
    explicit ReferenciasX(QWidget *parent = nullptr);
    ~ReferenciasX() override;

    qint32 BackColor() const;
    void setBackColor(qint32 colour);
    qint16 BorderStyle() const;
    void setBorderStyle(qint16 style);
    QString FontName() const;
    void setFontName(const QString &name);
    bool FontBold() const;
    void setFontBold(bool bold);
    float FontSize() const;
    void setFontSize(float size);
    qint32 ForeColor() const;
    void setForeColor(qint32 colour);

    /*!
        Shows \a lista: removes every row, makes one row per key, sizes the
        rows and the list, and raises Resize. A row that cannot be made
        (a clave whose row name is taken) fails and the rows made so far stay;
        a none list fails with Error::ObjectNotSet once the old rows are gone.
    */
    Q_INVOKABLE void setReferencias(const std::shared_ptr<tarvonix::Referencias> &lista);
    //! The list shown, or nullptr.
    std::shared_ptr<Referencias> referencias() const;

    //! Reads the six persisted properties from \a bag, each with its default.
    void readProperties(const PropertyBag &bag);
    //! Writes the six persisted properties into \a bag; values equal to the defaults are not stored.
    void writeProperties(PropertyBag &bag) const;

Q_SIGNALS:
    //! The list has laid its rows out and taken its new size.
    void Resize();
    //! A row was double-clicked; the rows call this member themselves.
    void DblClick(const std::shared_ptr<tarvonix::Referencia> &referencia);
    //! A row was clicked; the rows call this member themselves.
    void Click(const std::shared_ptr<tarvonix::Referencia> &referencia);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace tarvonix

#endif
