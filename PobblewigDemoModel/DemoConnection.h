#pragma once

#include "PobblewigDemoModel/DemoOptions.h"
#include "PobblewigDemoModel/HTTPRequestReader.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

#include <vector>

namespace pobblewig {

/// Answers the only request of a connection and closes it, or closes a silent one. Belongs to its
/// socket, so a client that disconnects during a reply ends only that reply.
class DemoConnection : public QObject {
public:
    DemoConnection(QTcpSocket* socket, DemoOptions options);

private:
    void receive();
    void answer(const ReceivedRequest& request);
    void answerChat(const QByteArray& body);
    void refuse(const RequestRefusal& refusal);
    void sendAll(const QByteArray& json);
    void send(int status, const QByteArray& json);
    void sendNextEvent();

    QTcpSocket* m_socket;
    DemoOptions m_options;
    HTTPRequestReader m_reader;
    bool m_isAnswered = false;
    std::vector<QByteArray> m_events;
    size_t m_nextEvent = 0;
    QTimer m_pace;
    QTimer m_silence;
};

} // namespace pobblewig
