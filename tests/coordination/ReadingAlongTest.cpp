#include "coordination/ScriptedLibrarian.h"
#include "support/Awaited.h"
#include "support/TableRow.h"

#include <QRegularExpression>

namespace pobblewig {

class ReadingAlongTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<ScriptedLibrarian>();
        m_said = 0;
    }

    /// A number is so many turns, "3+2" three with two notes each; a message without a reply is a
    /// turn that failed.
    void turnsAreReadInBatches_data()
    {
        QTest::addColumn<QString>("events");
        QTest::addColumn<QString>("windows");
        row("too few", "12", "");
        row("enough", "13", "1-13");
        row("the count starts over", "25", "1-13");
        row("two batches", "26", "1-13 14-26");
        row("with a note each", "18+1", "1-9 10-18");
        row("with two notes each", "13+2", "1-7 8-13");
        row("with more notes than there is room for", "1+31 2 end", "1-1 2-3");
        row("a failed batch is not tried again", "fail 13 13", "1-13 14-26");
        row("the tail of a day", "13 3 end", "1-13 14-16");
        row("no tail", "13 end", "1-13");
        row("a tail is read once", "3 end end 13", "1-3 4-16");
        row("a failed turn goes with the next", "12 message 1", "1-14");
        row("nothing of a memory that is off", "off 20 end", "");
        row("nothing of it later", "5 off 3 on 13", "9-21");
        row("nor at the end of a day", "off 3 on end 1 end", "4-4");
        row("switched off and on in between", "5 off on 8", "1-13");
        row("off at the end of a day", "5 off end on 1 end", "6-6");
        row("what was not read before a launch", "3 launch end 2 end", "1-3 4-5");
        row("what was read before a launch", "13 2 end launch end 1 end", "1-13 14-15 16-16");
        row("a question asked anew after a batch", "13 anew 12 launch 1", "1-13 14-26");
        row("a launch amid a batch", "12 launch 1", "1-13");
        row("a launch with nothing said", "launch end 1 end", "1-1");
        row("off before a launch", "off 3 launch on end", "");
        row("a failed turn while it was off", "off message on 13", "2-14");
    }
    void turnsAreReadInBatches()
    {
        QFETCH(QString, events);
        for (const auto& event : events.split(u' ')) {
            happen(event);
            m->model.enqueue(QStringLiteral("{}"));
        }
        QTEST(windows(), "windows");
    }

    void whatIsSaidWhileTheModelThinksIsReadNext_data()
    {
        QTest::addColumn<bool>("isNewSession");
        row("in the same session", false);
        row("in a new session", true);
    }
    void whatIsSaidWhileTheModelThinksIsReadNext()
    {
        QFETCH(bool, isNewSession);
        happen(QStringLiteral("12"));
        m->enqueueHeld();
        happen(QStringLiteral("1"));
        QCOMPARE(windows(), QStringLiteral("1-13"));
        if (isNewSession)
            m->history.clear();
        happen(QStringLiteral("12"));
        QCOMPARE(windows(), QStringLiteral("1-13"));
        happen(QStringLiteral("1"));
        QCOMPARE(windows(), QStringLiteral("1-13 14-26"));
        // What is lost with the process is read at the next launch.
        QVERIFY(!m->memory.sessions.activeSession()->lastExtractedMessageID);
        m->model.release();
        QTRY_COMPARE(m->memory.sessions.activeSession()->lastExtractedMessageID,
            m->history.messages().back().id);
    }

private:
    void happen(const QString& event)
    {
        if (event == u"on" || event == u"off")
            return m->setMemoryEnabled(event == u"on");
        if (event == u"launch")
            return m->relaunch();
        if (event == u"fail")
            return m->model.enqueue(LLMError::http(500, {}));
        if (event == u"message")
            return say();
        if (event == u"anew")
            return takeBack();
        if (event == u"end")
            return awaited(m->readingAlong.extractPendingTurns());
        const auto counts = event.split(u'+');
        for (int turn = 0; turn < counts[0].toInt(); ++turn) {
            say();
            add(ChatMessage::Role::assistant, QStringLiteral("Fine."));
            for (int note = 0; note < counts.value(1).toInt(); ++note)
                add(ChatMessage::Role::assistant, QStringLiteral("Done."));
            awaited(m->readingAlong.afterChatTurn());
        }
    }

    void takeBack()
    {
        const std::vector latest(m->history.messages().end() - 2, m->history.messages().end());
        m->readingAlong.passBackTo(latest.front().id);
        m->history.remove(latest);
    }

    void say() { add(ChatMessage::Role::user, QStringLiteral("said %1").arg(++m_said)); }
    void add(ChatMessage::Role role, const QString& text)
    {
        const auto isRemembered = m->settings.settings().memoryEnabled;
        m->history.append({ .id = QUuid::createUuid(),
            .role = role,
            .text = text,
            .timestamp = m->time,
            .sessionID = isRemembered ? std::optional(QUuid::createUuid()) : std::nullopt });
        if (m->readingAlong.isPressing())
            spawn(m->readingAlong.extractPendingTurns());
    }

    /// The first and the last of the user's messages that the model got each time; it must have
    /// got those between them as well.
    QString windows() const
    {
        static const QRegularExpression said(QStringLiteral(" user: said (\\d+)\\n"));
        QStringList windows;
        for (const auto& request : m->model.requests()) {
            std::vector<int> numbers;
            auto found = said.globalMatch(request.messages[0].content);
            while (found.hasNext())
                numbers.push_back(found.next().captured(1).toInt());
            if (numbers.empty() || numbers.back() - numbers.front() + 1 != std::ssize(numbers))
                return QStringLiteral("a window with holes");
            windows.append(QStringLiteral("%1-%2").arg(numbers.front()).arg(numbers.back()));
        }
        return windows.join(u' ');
    }

    std::unique_ptr<ScriptedLibrarian> m;
    int m_said = 0;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ReadingAlongTest)
#include "ReadingAlongTest.moc"
