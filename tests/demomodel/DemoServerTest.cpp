#include "PobblewigDemoModel/DemoServer.h"

#include "PobblewigDemoModel/HTTPRequestReader.h"
#include "support/TableRow.h"

#include <QProcess>
#include <QTcpSocket>

namespace pobblewig {

using namespace std::chrono_literals;

class DemoServerTest : public QObject {
    Q_OBJECT

private:
    static QByteArray post(const QByteArray& body)
    {
        return "POST /v1/chat/completions HTTP/1.1\r\nHost: localhost:1\r\nContent-Length: "
            + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    }

    static QByteArray chat(const QByteArray& options = {}, const QByteArray& text = "story")
    {
        return post(R"({"messages":[{"role":"assistant"},{"role":"user","content":")" + text
            + R"("}])" + options + "}");
    }

    static void open(QTcpSocket& socket, quint16 port)
    {
        socket.connectToHost(QHostAddress::LocalHost, port);
        QTRY_COMPARE(socket.state(), QAbstractSocket::ConnectedState);
    }

    /// Everything that the server answers until it has said that it will close.
    static QByteArray answerTo(const QByteArray& request, quint16 port)
    {
        QTcpSocket socket;
        open(socket, port);
        socket.write(request);
        QByteArray answer;
        const auto isWhole = [&] {
            answer += socket.readAll();
            return answer.endsWith("}") || answer.endsWith("\r\n0\r\n\r\n");
        };
        [&] { QTRY_VERIFY(isWhole()); }();
        return answer;
    }

private Q_SLOTS:
    void aReplyArrivesWordByWord()
    {
        DemoServer server({ .delayBetweenWords = 1ms });
        const auto port = server.listen(0);
        QTcpSocket socket;
        open(socket, *port);
        socket.write(chat(R"(,"stream":true,"stream_options":{"include_usage":true})", "help"));
        QByteArray answer;
        int pieces = 0;
        connect(&socket, &QTcpSocket::readyRead, &socket, [&] {
            answer += socket.readAll();
            ++pieces;
        });
        QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
        QVERIFY(pieces > 20);
        QVERIFY(answer.startsWith("HTTP/1.1 200 OK\r\n"));
        QVERIFY(answer.contains("\"usage\":{\"completion_tokens\":"));
        QVERIFY(answer.endsWith("data: [DONE]\n\n\r\n0\r\n\r\n"));
    }

    void aClientThatLeavesEndsOnlyItsOwnReply()
    {
        DemoServer server({ .delayBetweenWords = 1ms });
        const auto port = server.listen(0);
        for (const auto& sent : { chat(R"(,"stream":true)"), chat().chopped(5), QByteArray() }) {
            QTcpSocket leaving;
            open(leaving, *port);
            leaving.write(sent);
            if (sent.endsWith("true}"))
                QTRY_VERIFY(leaving.bytesAvailable() > 300);
            leaving.abort();
        }
        QVERIFY(answerTo(chat(), *port).startsWith("HTTP/1.1 200 OK\r\n"));
    }

    void eachRequestGetsItsStatus_data()
    {
        columns<QByteArray, int>("request", "status");
        const auto sized = [](const QByteArray& size) {
            return "POST /chat/completions HTTP/1.1\r\ncontent-LENGTH:" + size + "\r\n\r\n";
        };
        const auto with = [](const QByteArray& fields) {
            return chat().replace("Host: localhost:1", fields);
        };
        row("by address", with("host:127.0.0.1:8080"), 200);
        row("by the new kind of address", with("Host: [::1]:8080"), 200);
        row("from a page of this computer",
            with("Host: localhost\r\nOrigin: http://localhost:3000"), 200);
        row("by another name", with("Host: rebound.example:8080"), 403);
        row("by two names", with("Host: localhost\r\nHost: rebound.example"), 403);
        row("by no name", with("Accept: */*"), 400);
        row("from another page", with("Host: localhost\r\nOrigin: https://example.org"), 403);
        row("from an unknown page", with("Host: localhost\r\nOrigin: null"), 403);
        row("without stream", chat(), 200);
        row("without /v1", chat().replace("/v1", ""), 200);
        row("with a query", chat().replace("completions", "completions?a=b"), 200);
        row("the models", QByteArray("GET /v1/models HTTP/1.1\r\nHost: localhost\r\n\r\n"), 200);
        row("not JSON", post("nonsense"), 400);
        row("deep nesting", post(QByteArray(100000, '[')), 400);
        row("another path", chat().replace("/chat", "/shat"), 404);
        row("another method", chat().replace("POST", "GET"), 405);
        row("not HTTP", QByteArray("hello\r\n\r\n"), 400);
        row("no size", chat().replace("Content-Length", "Transfer-Encoding"), 411);
        row("size with a sign", sized("-1"), 400);
        row("size beyond 64 bits", sized("99999999999999999999"), 413);
        row("size one over", sized(QByteArray::number(HTTPRequestReader::bodyLimit + 1)), 413);
        row("endless head", QByteArray(HTTPRequestReader::headLimit + 1, 'a'), 431);
    }
    void eachRequestGetsItsStatus()
    {
        QFETCH(QByteArray, request);
        DemoServer server({});
        const auto answer = answerTo(request, *server.listen(0));
        QTEST(answer.sliced(9, 3).toInt(), "status");
        QCOMPARE(answer.contains("\"error\":{\"message\""), !answer.contains("200 OK"));
    }

    void toolsAreRefusedIfAskedFor()
    {
        DemoServer refusing({ .refusesTools = true });
        const auto port = *refusing.listen(0);
        const auto tools = R"(,"tools":[{"function":{"name":"set_mascot"}}])";
        QVERIFY(answerTo(chat(tools), port).startsWith("HTTP/1.1 400 "));
        QVERIFY(answerTo(chat(), port).startsWith("HTTP/1.1 200 "));
    }

    void aRequestMayArriveInAnyPieces()
    {
        HTTPRequestReader reader;
        const auto request = post("body");
        for (qsizetype index = 0; index + 1 < request.size(); ++index)
            QVERIFY(!reader.feed(request.mid(index, 1)));
        const auto outcome = reader.feed(request.last(1));
        QVERIFY(outcome && *outcome);
        QCOMPARE((*outcome)->body, QByteArray("body"));
    }

    void aSilentClientIsLeft()
    {
        DemoServer server({ .patience = 20ms });
        QTcpSocket silent;
        open(silent, *server.listen(0));
        silent.write(chat().chopped(1));
        QTRY_COMPARE(silent.state(), QAbstractSocket::UnconnectedState);
    }

    void aTakenPortIsReported()
    {
        DemoServer first({});
        DemoServer second({});
        QVERIFY(!second.listen(*first.listen(0)));
    }

    void theProgramNamesItsPortAndEndsCleanlyInTheMiddleOfAReply()
    {
        QProcess program;
        program.start(QCoreApplication::applicationDirPath() + u"/pobblewig-demo-model"_s,
            { u"--delay-ms=20"_s });
        QTRY_VERIFY(program.canReadLine());
        const auto line = program.readLine().trimmed();
        QVERIFY(line.startsWith("listening on 127.0.0.1:"));
        QTcpSocket socket;
        open(socket, line.split(':').last().toUShort());
        socket.write(chat(R"(,"stream":true)"));
        QTRY_VERIFY(socket.bytesAvailable() > 300);
        program.terminate();
        QTRY_COMPARE(program.state(), QProcess::NotRunning);
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DemoServerTest)
#include "DemoServerTest.moc"
