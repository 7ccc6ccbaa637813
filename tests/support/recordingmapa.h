// SPDX-License-Identifier: MIT
#ifndef TARVONIX_TESTS_RECORDINGMAPA_H
#define TARVONIX_TESTS_RECORDINGMAPA_H

#include <tarvonix/views/imapax.h>

#include <QString>
#include <QStringList>

#include <vector>

// A root that writes down every call a container or frame makes on it.
class RecordingMapa : public tarvonix::IMapaX
{
public:
    using ObjetoPtr = tarvonix::ObjetoPtr;
    struct Call
    {
        QString operation;
        QString text; // as log() shows it
    };

    void clicked(const ObjetoPtr &obj, bool multi) override { record("clicked", { code(obj), flag(multi) }); }
    void rightClicked(const ObjetoPtr &o, bool multi) override
    {
        record("rightClicked", { code(o), flag(multi) });
    }
    void droped(const QString &from, const ObjetoPtr &o, qint32 shift) override
    {
        record("droped", { from, code(o), QString::number(shift) });
    }
    void moved(const ObjetoPtr &obj) override { record("moved", { code(obj) }); }
    void setActive(const ObjetoPtr &obj, tarvonix::IContenedorX *, qint16 op) override
    {
        record("setActive", { code(obj), QString::number(op) });
    }
    void ensureVisible(QWidget *) override { record("ensureVisible", {}); }
    void remove(const ObjetoPtr &frame) override { record("remove", { code(frame) }); }
    void escalado(const ObjetoPtr &frame, float f) override { record("escalado", { code(frame), QString::number(f) }); }

    const std::vector<Call> &calls() const { return m_calls; }
    //! The calls as text, for example "clicked(D1,false)" or "moved(D2)".
    QStringList log() const
    {
        QStringList lines;
        for (const Call &call : m_calls)
            lines.append(call.text);
        return lines;
    }
    void clear() { m_calls.clear(); }

private:
    static QString code(const ObjetoPtr &obj) { return obj ? obj->getCodigo() : QStringLiteral("none"); }
    static QString flag(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }
    void record(const char *operation, const QStringList &arguments)
    {
        const QString name = QLatin1String(operation);
        m_calls.push_back({ name, arguments.isEmpty() ? name : name + u'(' + arguments.join(u',') + u')' });
    }

    std::vector<Call> m_calls;
};

#endif
