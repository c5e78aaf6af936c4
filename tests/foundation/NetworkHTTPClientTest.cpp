#include "foundation/NetworkHTTPClient.h"

#include "support/Awaited.h"
#include "support/LoopbackServer.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;

using Kind = TransportError::Kind;
using Server = LoopbackServer;

namespace {

/// Reads so many parts, or all that come.
Task<QByteArrayList> read(std::shared_ptr<HTTPStream> stream, int count = -1)
{
    QByteArrayList parts;
    while (parts.size() != count) {
        const auto part = co_await stream->next();
        if (!part)
            break;
        const auto* head = std::get_if<HTTPHead>(&*part);
        parts.append(head ? QByteArray::number(head->status) : std::get<HTTPLine>(*part));
    }
    co_return parts;
}

} // namespace

class NetworkHTTPClientTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAnswerIsWholeOrAnError_data()
    {
        QTest::addColumn<Server::Script>("script");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<Kind>("kind");
        const auto whole = [](const char* name, const Server::Script& script, int status,
                               const QByteArray& body) {
            QTest::newRow(name) << script << status << body << Kind::notHTTP;
        };
        const auto broken = [](const char* name, const Server::Script& script, Kind kind) {
            QTest::newRow(name) << script << 0 << QByteArray() << kind;
        };
        const auto send = [](const QByteArray& bytes) { return Server::Send { bytes }; };
        const auto announced = send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
        const auto chunked = send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                  "4\r\nhalf\r\n");
        const QByteArray challenge = "\r\nWWW-Authenticate: Basic realm=\"x\"";
        whole("of a known length", { send(Server::answer("200 OK", "hello")) }, 200, "hello");
        whole("in chunks", { chunked, send("0\r\n\r\n") }, 200, "half");
        whole("ended by closing",
            { send("HTTP/1.1 200 OK\r\n\r\nhel"), send("lo"), Server::Close() }, 200, "hello");
        whole("an error with a body", { send(Server::answer("400 Bad", "why")) }, 400, "why");
        whole("a challenge", { send(Server::answer("401 No" + challenge, "why")) }, 401, "why");
        whole("a redirect", { send(Server::answer("307 Go\r\nLocation: /other", "")) }, 307, "");
        broken("shorter than announced", { announced, Server::Close() }, Kind::truncated);
        broken("announced, then reset", { announced, Server::Reset() }, Kind::truncated);
        broken("closed before an answer", { Server::Close() }, Kind::unreachable);
        broken(
            "another protocol", { send("SSH-2.0-server\r\n"), Server::Close() }, Kind::unreachable);
        broken("silence", {}, Kind::timedOut);
        broken("silence in the middle", { announced }, Kind::timedOut);
        broken("signs of life without an end",
            { send("HTTP/1.1 200 OK\r\n\r\n"), Server::Send { "\n", 1 << 30 } }, Kind::timedOut);
        broken("more than 64 MiB",
            { send("HTTP/1.1 200 OK\r\n\r\n"), Server::Send { QByteArray(1 << 20, 'x'), 65 } },
            Kind::tooLarge);
    }
    void anAnswerIsWholeOrAnError()
    {
        QFETCH(Server::Script, script);
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(Kind, kind);
        Server server;
        server.enqueue(script);
        server.enqueue({ Server::Send { Server::answer("200 OK", "a second time") } });
        auto request = post(server);
        if (kind == Kind::timedOut) {
            request.timeout = 100ms;
            request.longest = 400ms;
        }
        const auto response = awaited(m_client.send(request));
        QCOMPARE(response ? response->status : 0, status);
        QCOMPARE(response ? response->body : QByteArray(), body);
        if (!response)
            QCOMPARE(response.error().kind, kind);
        QCOMPARE(server.requests().size(), 1u);
    }

    void whatCannotBeReachedIsSaid_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<QString>("begin");
        auto closed = Server().url(QStringLiteral("/path?key=hush"));
        closed.setUserInfo(QStringLiteral("me:hush"));
        row("a closed port", closed, "Nothing answers at 127.0.0.1:");
        row("no such name", QUrl(QStringLiteral("http://h.invalid")), "No server named h.invalid ");
        row("not the web", QUrl(QStringLiteral("file:///etc/hostname?hush")),
            "“file:///etc/hostname” is not the address of a web server.");
    }
    void whatCannotBeReachedIsSaid()
    {
        QFETCH(QUrl, url);
        QFETCH(QString, begin);
        const auto error =
            awaited(m_client.send({ .url = url, .headers = {}, .body = {} })).error();
        QCOMPARE(error.kind, Kind::unreachable);
        QVERIFY2(error.text.startsWith(begin), qPrintable(error.text));
        QVERIFY(!error.text.contains(u"hush"));
    }

    void aHeaderIsSentOnOneLineAndTheBodyWhole()
    {
        Server server;
        server.enqueue({ Server::Send { Server::answer("200 OK", {}) } });
        auto request = post(server);
        request.body = QByteArray(3'000'000, 'x') + "end";
        request.headers.push_back({ "X-Token", " a\r\nX-Forged: b\n" });
        QVERIFY(awaited(m_client.send(request)));
        QVERIFY(server.requests()[0].contains("\r\nX-Token: aX-Forged: b\r\n"));
        QVERIFY(server.requests()[0].contains("\r\nAccept-Encoding: identity\r\n"));
        QVERIFY(server.requests()[0].endsWith("\r\n\r\n" + request.body));
    }

    void linesComeBeforeTheAnswerEnds()
    {
        Server server;
        server.enqueue({ Server::Send { Server::eventStreamHead() }, Server::Hold(),
            Server::Send { "one\r\nt" }, Server::Hold(), Server::Send { "wo\nlast" },
            Server::Close() });
        const auto stream = std::make_shared<HTTPStream>(m_client.stream(post(server)));
        QCOMPARE(awaited(read(stream, 1)), QByteArrayList { "200" });
        server.release();
        QCOMPARE(awaited(read(stream, 1)), QByteArrayList { "one" });
        server.release();
        QCOMPARE(awaited(read(stream)), QByteArrayList({ "two", "last" }));
        QVERIFY(!stream->error());
    }

    void manyDroppedStreamsDoNotBlockTheHost()
    {
        Server server;
        for (int count = 0; count < 20; ++count) {
            server.enqueue({});
            const auto stream = m_client.stream(post(server));
            QTRY_COMPARE(server.requests().size(), size_t(count + 1));
        }
        QTRY_COMPARE(server.openConnections(), 0);
        server.enqueue({ Server::Send { Server::answer("200 OK", "still there") } });
        QCOMPARE(awaited(m_client.send(post(server)))->body, "still there");
    }

    void anEndlessLineIsGivenUpEarly()
    {
        Server server;
        server.enqueue({ Server::Send { Server::eventStreamHead() + "data: " },
            Server::Send { QByteArray(1 << 20, 'x'), 200 } });
        const auto stream = std::make_shared<HTTPStream>(m_client.stream(post(server)));
        QCOMPARE(awaited(read(stream)), QByteArrayList { "200" });
        QCOMPARE(stream->error()->kind, Kind::tooLarge);
        QTRY_COMPARE(server.openConnections(), 0);
    }

private:
    static HTTPRequest post(const Server& server)
    {
        return { .method = "POST", .url = server.url(), .headers = {}, .body = "{\"question\":1}" };
    }

    NetworkHTTPClient m_client;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::NetworkHTTPClientTest)
#include "NetworkHTTPClientTest.moc"
