#include "recordingmapa.h"

namespace {
QString codeOf(const tarvonix::ObjetoPtr &obj)
{
    return obj ? obj->getCodigo() : QStringLiteral("none");
}
RecordingMapa::Call callOf(const QString &operation, const tarvonix::ObjetoPtr &obj, bool multi = false)
{
    RecordingMapa::Call call;
    call.operation = operation;
    call.obj = obj;
    call.multi = multi;
    return call;
}
QString flag(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}
} // namespace

void RecordingMapa::clicked(const tarvonix::ObjetoPtr &obj, bool multi)
{
    m_calls.push_back(callOf(QStringLiteral("clicked"), obj, multi));
}

void RecordingMapa::rightClicked(const tarvonix::ObjetoPtr &obj, bool multi)
{
    m_calls.push_back(callOf(QStringLiteral("rightClicked"), obj, multi));
}

void RecordingMapa::droped(const QString &origen, const tarvonix::ObjetoPtr &destino, qint32 shift)
{
    Call call = callOf(QStringLiteral("droped"), destino);
    call.origen = origen;
    call.shift = shift;
    m_calls.push_back(call);
}

void RecordingMapa::moved(const tarvonix::ObjetoPtr &obj)
{
    m_calls.push_back(callOf(QStringLiteral("moved"), obj));
}

void RecordingMapa::setActive(const tarvonix::ObjetoPtr &obj, tarvonix::IContenedorX *frame, qint16 op)
{
    Call call = callOf(QStringLiteral("setActive"), obj);
    call.frame = frame;
    call.op = op;
    m_calls.push_back(call);
}

void RecordingMapa::ensureVisible(QWidget *control)
{
    Call call = callOf(QStringLiteral("ensureVisible"), nullptr);
    call.control = control;
    m_calls.push_back(call);
}

void RecordingMapa::remove(const tarvonix::ObjetoPtr &frame)
{
    m_calls.push_back(callOf(QStringLiteral("remove"), frame));
}

QStringList RecordingMapa::log() const
{
    QStringList lines;
    for (const Call &call : m_calls) {
        if (call.operation == QLatin1String("clicked") || call.operation == QLatin1String("rightClicked"))
            lines.append(QStringLiteral("%1(%2,%3)").arg(call.operation, codeOf(call.obj), flag(call.multi)));
        else if (call.operation == QLatin1String("droped"))
            lines.append(QStringLiteral("droped(%1,%2,%3)").arg(call.origen, codeOf(call.obj)).arg(call.shift));
        else if (call.operation == QLatin1String("setActive"))
            lines.append(QStringLiteral("setActive(%1,%2)").arg(codeOf(call.obj)).arg(call.op));
        else if (call.operation == QLatin1String("ensureVisible"))
            lines.append(QStringLiteral("ensureVisible"));
        else
            lines.append(QStringLiteral("%1(%2)").arg(call.operation, codeOf(call.obj)));
    }
    return lines;
}

std::vector<RecordingMapa::Call> RecordingMapa::callsOf(const QString &operation) const
{
    std::vector<Call> result;
    for (const Call &call : m_calls) {
        if (call.operation == operation)
            result.push_back(call);
    }
    return result;
}
