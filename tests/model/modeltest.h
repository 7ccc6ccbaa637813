// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_MODELTEST_H
#define TARVONIX_TESTS_MODELTEST_H

#include <tarvonix/core/error.h>
#include <tarvonix/model/objeto.h>

#include <QTest>

#include <functional>

// Helpers shared by the tests of the map object model.
namespace modeltest {
//! The code of the failure \a operation ends with, or 0 when it ends normally.
inline int failureOf(const std::function<void()> &operation)
{
    try {
        operation();
    } catch (const tarvonix::Error &error) {
        return error.code();
    }
    return 0;
}
inline tarvonix::ObjetoPtr objeto(const QString &codigo)
{
    auto o = std::make_shared<tarvonix::Objeto>();
    o->setCodigo(codigo);
    return o;
}
} // namespace modeltest

#endif
