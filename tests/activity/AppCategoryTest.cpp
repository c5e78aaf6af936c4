#include "activity/AppCategory.h"

#include "foundation/EnumNames.h"
#include "support/TableRow.h"

namespace pobblewig {

class AppCategoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anApplicationHasOneCategory_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("category");
        row("any case", "com.microsoft.VSCode", "", "development");
        row("an editor by its part", "dev.zed.Zed-Preview", "", "development");
        row("Edge", "com.microsoft.edgemac", "", "browsing");
        row("holds edge", "org.knowledge.base", "", "browsing");
        row("a page", "org.mozilla.firefox", "Cats - YouTube", "entertainment");
        row("another page", "org.chromium.Chromium", "Sources of YouGov", "browsing");
        row("a title only counts in browsers", "org.gnome.Builder", "YouTube", "other");
        row("the first row wins", "com.google.Chrome.youtube", "", "browsing");
        row("music", "com.spotify.client", "", "entertainment");
        row("chat", "com.tinyspeck.slackmacgap", "", "social");
        row("notes", "com.apple.Notes", "", "productivity");
        row("mail", "com.apple.mail", "", "other");
        row("mail on Linux", "org.mozilla.Thunderbird", "", "other");
        row("office on Linux", "libreoffice-writer", "", "productivity");
        row("terminal on Linux", "org.gnome.Terminal", "", "development");
        row("short name", "org.kde.kate", "", "development");
        row("short name alone", "mpv", "", "entertainment");
        row("short name within a list of words", "snap_mpv-player.desktop", "", "entertainment");
        row("short name with a number", "mpv2", "", "other");
        row("short name in another word", "org.skate.skater", "", "other");
        row("short name after another word", "org.skate.kate", "", "development");
        row("nothing", "", "YouTube", "other");
    }
    void anApplicationHasOneCategory()
    {
        QFETCH(QString, identifier);
        QFETCH(QString, title);
        QTEST(EnumNames::text(classify(identifier, title)), "category");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AppCategoryTest)
#include "AppCategoryTest.moc"
