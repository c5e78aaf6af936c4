#include "PobblewigLinux/desktop/Sounds.h"

#include "support/TableRow.h"

#include <QLibrary>

namespace pobblewig {

class SoundsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theNearestSoundThatThereIsIsPlayed_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QString>("asked");
        row("the buddy's", "Glass", "begin;message-new-instant;bell;end;");
        row("another", "Submarine", "begin;bell;end;");
        row("twice", "Submarine Submarine", "begin;bell;bell;end;");
        row("none", "", "");
    }
    void theNearestSoundThatThereIsIsPlayed()
    {
        QFETCH(QString, names);
        const auto path = QStringLiteral(FAKE_CANBERRA);
        {
            Sounds sounds(path);
            for (const auto& name : names.split(u' ', Qt::SkipEmptyParts))
                sounds.play(name);
        }
        const auto takeAsked =
            reinterpret_cast<const char* (*)()>(QLibrary::resolve(path, "takeAsked"));
        QVERIFY(takeAsked);
        QTEST(QString::fromLatin1(takeAsked()), "asked");
    }

    void withoutTheLibraryThereIsSilence()
    {
        for (const auto* name : { "/nonexistent/libcanberra.so.0", "libc.so.6" })
            Sounds(QLatin1String(name)).play(u"Glass");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SoundsTest)
#include "SoundsTest.moc"
