// SPDX-License-Identifier: MIT
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
    if (callBack && obj) { // as the real frame does: mark the object active on the contained control
        for (QObject *child : children()) {
            if (!tarvonix::LateBinding::hasMember(child, QStringLiteral("cast")))
                continue;
            const QVariant cast = tarvonix::LateBinding::call(child, QStringLiteral("cast"));
            if (auto *contenedor = cast.value<tarvonix::IContenedorX *>())
                contenedor->setActivo(obj, true);
        }
    }
    return answerNone ? nullptr : obj;
}
