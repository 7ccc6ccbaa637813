#include "testframe.h"

#include <tarvonix/model/icontenedorx.h>
#include <tarvonix/platform/latebinding.h>

TestFrame::TestFrame(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("Dframe"));
    resize(800, 600);
}

tarvonix::ObjetoPtr TestFrame::setActive(const tarvonix::ObjetoPtr &obj)
{
    calls.append(QStringLiteral("setActive(%1)").arg(obj ? obj->getCodigo() : QStringLiteral("none")));
    activated.push_back(obj);
    if (callBack && obj) {
        for (QObject *child : children()) {
            if (!tarvonix::LateBinding::hasMember(child, QStringLiteral("cast")))
                continue;
            auto *contenedor = tarvonix::LateBinding::call(child, QStringLiteral("cast")).value<tarvonix::IContenedorX *>();
            if (contenedor)
                contenedor->setActivo(obj, true);
        }
    }
    return answerNone ? nullptr : obj;
}

bool TestFrame::isActive()
{
    calls.append(QStringLiteral("isActive"));
    return m_active;
}

void TestFrame::activate()
{
    calls.append(QStringLiteral("activate"));
    m_active = true;
}

void TestFrame::Resize(QWidget *)
{
    calls.append(QStringLiteral("Resize"));
}

void TestFrame::hScroll(qint16 direction)
{
    calls.append(QStringLiteral("hScroll(%1)").arg(direction));
}

void TestFrame::vScroll(qint16 direction)
{
    calls.append(QStringLiteral("vScroll(%1)").arg(direction));
}
