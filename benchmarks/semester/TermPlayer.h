#pragma once

#include "AppCoordinator.h"
#include "PobblewigDemoModel/DemoServer.h"
#include "TermLedger.h"
#include "TermScript.h"
#include "WatchedHTTPClient.h"
#include "foundation/Log.h"

#include <optional>
#include <set>

namespace pobblewig {

/// Plays acts with the program, whose only other company is the demo model, and notes in the ledger
/// what can be seen. An act is over when nothing that it began is under way any more.
class TermPlayer {
public:
    TermPlayer(DataDirectory directory, TermLedger& ledger);
    ~TermPlayer();
    Q_DISABLE_COPY_MOVE(TermPlayer)

    void play(const TermAct& act);

    /// The program ends; the next act has to be a launch.
    void quit();

private:
    void perform(const TermAct& act);
    void launch();
    void switchMemory(bool isOn);
    AppCoordinator::Parts parts();
    Environment environment() const;
    void settle();

    TimePoint now() const;
    Calendar calendar() const { return { m_time.timeZone() }; }
    std::optional<QUuid> activeSession();
    void noteEndIfDue();
    void noteEnd();
    void notePresent();
    void noteFailure(const QString& logged);
    void checkEnd(const TermAct& act, std::optional<QUuid> before);

    DataDirectory m_directory;
    TermLedger& m_ledger;
    DemoServer m_model { { .now = [this] { return m_time; } } };
    QString m_modelURL;
    QDateTime m_time;
    WatchedHTTPClient* m_http = nullptr;
    std::optional<AppCoordinator> m_program;
    std::set<QUuid> m_known;
    Log::Sink m_previousSink;
};

} // namespace pobblewig
