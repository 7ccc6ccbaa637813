// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_TESTFRAME_H
#define TARVONIX_TESTS_TESTFRAME_H

#include <tarvonix/model/iobjeto.h>

#include <QStringList>
#include <QWidget>

// Stands in for the frame that holds a container: it answers the members a
// container calls on its parent by name ("pActive", "setActive", "isActive",
// "activate", "Resize", "hScroll", "vScroll"; "Name" is the objectName) and
// writes every call down.
class TestFrame : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool pActive READ pActive WRITE setPActive)

public:
    explicit TestFrame(QWidget *parent = nullptr);

    bool pActive() const { return m_active; }
    void setPActive(bool active) { m_active = active; }

    //! Answers the object the container should adopt: \a obj itself, unless answerNone is set.
    Q_INVOKABLE tarvonix::ObjetoPtr setActive(const tarvonix::ObjetoPtr &obj);
    Q_INVOKABLE bool isActive()
    {
        calls.append(QStringLiteral("isActive"));
        return m_active;
    }
    Q_INVOKABLE void activate()
    {
        calls.append(QStringLiteral("activate"));
        m_active = true;
    }
    Q_INVOKABLE void Resize(QWidget *) { calls.append(QStringLiteral("Resize")); }
    Q_INVOKABLE void hScroll(qint16 direction) { calls.append(QStringLiteral("hScroll(%1)").arg(direction)); }
    Q_INVOKABLE void vScroll(qint16 direction) { calls.append(QStringLiteral("vScroll(%1)").arg(direction)); }

    //! The calls as text: "setActive(D1)", "activate", "Resize", "hScroll(-1)", ...
    QStringList calls;
    //! When true, setActive answers none, as a broken frame might.
    bool answerNone = false;
    //! When true, setActive calls setActivo(obj, true) back on the contained control, as the real frame does.
    bool callBack = false;

private:
    bool m_active = true;
};

#endif
