#include "PobblewigDesktop/diagnostics/DiagnosticsWindow.h"

#include "desktop/ScriptedParts.h"
#include "desktop/chat/PanelFixture.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedProvider.h"
#include "support/TableRow.h"

#include <QClipboard>
#include <QPushButton>
#include <QTableView>

namespace pobblewig {

class DiagnosticsWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theReportHoldsNothingPrivate()
    {
        const auto secret = u"my diary"_s;
        DiagnosticsSnapshot snapshot;
        snapshot.info.ruleVerdicts = { secret + u": silent, below its threshold"_s,
            secret + u": silent, x: WOULD FIRE"_s };
        snapshot.info.librarianLastError = secret;
        snapshot.info.librarianLastErrorAt = ScriptedChat::now;
        snapshot.storage = { .problem = secret, .unreadable = { { u"rules.json"_s, secret } } };
        snapshot.requests = { { .modelID = u"owl"_s,
            .begunAt = ScriptedChat::now,
            .outcome = RequestRecord::Outcome::failed,
            .failure = secret,
            .status = 503 } };
        const auto call = [](const QString& name, const QString& args) {
            return MemoryToolLogEntry {
                .name = name, .argsSummary = args, .ok = true, .timestamp = ScriptedChat::now
            };
        };
        snapshot.toolCalls = { call(u"recall_notes"_s, secret), call(secret, secret) };
        const auto text = DiagnosticsReport::text(snapshot);
        QVERIFY2(!text.contains(secret), qPrintable(text));
        for (const auto* const part :
            { u"1: silent, below its threshold", u"2: WOULD FIRE", u"Cannot be read: rules.json",
                u"Last error: 2026-03-01T08:15:00Z", u"08:15:00Z recall_notes ok",
                u"main owl, first none, last none, tokens 0 + 0, failed, status 503" })
            QVERIFY2(text.contains(QString::fromUtf16(part)), qPrintable(text));
    }

    void thePagesShowWhatIsThere()
    {
        const ScratchDirectory scratch;
        scratch.write(u"rules.json"_s, "no JSON");
        ScriptedProvider model;
        AppCoordinator coordinator(scriptedParts(scratch.path().path(), model));
        const DiagnosticsDesk desk(coordinator, scratch.path());
        DiagnosticsWindow window(desk);
        window.showState(coordinator.state());
        window.show();
        for (const auto* const page : { u"models", u"tools", u"keys", u"overview", u"files" })
            window.openPage(QString::fromUtf16(page));
        const auto* const files = PanelFixture::find<QTableView>(window, "Files");
        QVERIFY(files);
        const auto kept = files->model()->match(
            files->model()->index(0, 0), Qt::DisplayRole, u".corrupt-"_s, 1, Qt::MatchContains);
        QCOMPARE(kept.size(), 1);
        for (auto* const button : window.findChildren<QPushButton*>()) {
            if (button->text() == u"Copy report")
                button->click();
        }
        QVERIFY(QGuiApplication::clipboard()->text().contains(u"rules.json.corrupt-"));
    }
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::DiagnosticsWindowTest)
#include "DiagnosticsWindowTest.moc"
