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
    struct Call
    {
        QString operation;
        tarvonix::ObjetoPtr obj;
        bool multi = false;
        QString origen;
        qint32 shift = 0;
        tarvonix::IContenedorX *frame = nullptr;
        qint16 op = 0;
        QWidget *control = nullptr;
    };

    void clicked(const tarvonix::ObjetoPtr &obj, bool multi) override;
    void rightClicked(const tarvonix::ObjetoPtr &obj, bool multi) override;
    void droped(const QString &origen, const tarvonix::ObjetoPtr &destino, qint32 shift) override;
    void moved(const tarvonix::ObjetoPtr &obj) override;
    void setActive(const tarvonix::ObjetoPtr &obj, tarvonix::IContenedorX *frame, qint16 op) override;
    void ensureVisible(QWidget *control) override;
    void remove(const tarvonix::ObjetoPtr &frame) override;

    const std::vector<Call> &calls() const { return m_calls; }
    //! The calls as text, for example "clicked(D1,false)" or "moved(D2)".
    QStringList log() const;
    //! The calls of one operation only.
    std::vector<Call> callsOf(const QString &operation) const;
    void clear() { m_calls.clear(); }

private:
    std::vector<Call> m_calls;
};

#endif
