#include "settings/ActionAutonomy.h"

#include "support/TableRow.h"

namespace pobblewig {

class ActionAutonomyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anActionAsksUnlessItsQuestionIsSwitchedOff_data()
    {
        QTest::addColumn<QString>("actionClass");
        QTest::addColumn<QString>("switchedOff");
        QTest::addColumn<bool>("asks");
        row("nothing chosen", "calendar_write", "", true);
        row("its own", "calendar_write", "calendar_write", false);
        row("another's", "reminder_write", "calendar_write", true);
        row("forgetting", "memory_forget", "memory_forget", true);
        row("history", "activity_delete_history", "activity_delete_history", true);
        row("unknown", "launch", "calendar_write", true);
    }
    void anActionAsksUnlessItsQuestionIsSwitchedOff()
    {
        QFETCH(QString, actionClass);
        QFETCH(QString, switchedOff);
        AppSettings settings;
        if (!switchedOff.isEmpty())
            settings.actionConfirmations = { { switchedOff, false } };
        QTEST(ActionAutonomy::requiresConfirmation(actionClass, settings), "asks");
    }

    void aQuestionThatIsSwitchedOnAsks()
    {
        const std::map<QString, bool> chosen { { QStringLiteral("settings_change"), true } };
        QVERIFY(ActionAutonomy::requiresConfirmation(ActionAutonomy::settingsChange, chosen));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ActionAutonomyTest)
#include "ActionAutonomyTest.moc"
