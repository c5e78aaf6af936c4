#include "settings/ActionAutonomy.h"

#include "support/TableRow.h"

namespace pobblewig {

class ActionAutonomyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anActionAsksUnlessItsQuestionIsSwitchedOff_data()
    {
        QTest::addColumn<bool>("asks");
        row("calendar_write", false);
        row("settings_change", true);
        row("reminder_write", true);
        row("memory_forget", true);
        row("activity_delete_history", true);
    }
    void anActionAsksUnlessItsQuestionIsSwitchedOff()
    {
        AppSettings settings;
        for (const auto& off : { u"calendar_write", u"memory_forget", u"activity_delete_history" })
            settings.actionConfirmations.emplace(QString::fromUtf16(off), false);
        settings.actionConfirmations.emplace(QStringLiteral("settings_change"), true);
        const auto action = QString::fromLatin1(QTest::currentDataTag());
        QTEST(ActionAutonomy::requiresConfirmation(action, settings), "asks");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ActionAutonomyTest)
#include "ActionAutonomyTest.moc"
