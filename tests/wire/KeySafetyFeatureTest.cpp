#include "wire/KeySafetyFeature.h"

#include "support/TableRow.h"

#include <QTemporaryDir>

#include <sys/stat.h>

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

QStringList warnings(const KeySafetyFeature& feature)
{
    PublishedState state;
    feature.publish(state);
    return state.of<KeySafetyState>().warnings;
}

int mode(const QString& path)
{
    struct stat status = {};
    return ::stat(qPrintable(path), &status) == 0 ? int(status.st_mode & 0777) : -1;
}

} // namespace

class KeySafetyFeatureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aKeyThatOthersCouldReadIsTold_data()
    {
        columns<QByteArray, int, int, bool>("text", "folder", "file", "isTold");
        row("readable", QByteArray("MAIN_MODEL_API_KEY=k"), 0755, 0644, true);
        row("readable by a group", QByteArray("MAIN_MODEL_API_KEY=k"), 0750, 0640, true);
        row("in a private folder", QByteArray("MAIN_MODEL_API_KEY=k"), 0700, 0644, false);
        row("private", QByteArray("MAIN_MODEL_API_KEY=k"), 0755, 0600, false);
        row("no key", QByteArray("MAIN_MODEL=m\nMAIN_MODEL_API_KEY="), 0755, 0644, false);
    }
    void aKeyThatOthersCouldReadIsTold()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, folder);
        QFETCH(int, file);
        // The place for temporary files may itself be private.
        const QTemporaryDir scratch(u"/tmp/pobblewig-XXXXXX"_s);
        const auto directory = scratch.path();
        const auto path = scratch.filePath(u"environment"_s);
        QFile written(path);
        QVERIFY(written.open(QIODevice::WriteOnly));
        written.write(text);
        written.close();
        QCOMPARE(::chmod(qPrintable(directory), mode_t(folder)), 0);
        QCOMPARE(::chmod(qPrintable(path), mode_t(file)), 0);
        KeySafetyFeature feature(path);
        feature.start();
        QTEST(warnings(feature).size() == 1, "isTold");
        QCOMPARE(mode(directory), 0700);
        QCOMPARE(mode(path), 0600);
    }

    void aKeyThatTravelsInTheClearIsToldOnce_data()
    {
        columns<QString, QString, bool>("url", "key", "isTold");
        row("encrypted", "https://models.example/v1", "k", false);
        row("on this computer", "http://127.0.0.1:11434/v1", "k", false);
        row("by name", "http://localhost:11434/v1", "k", false);
        row("without a key", "http://models.example/v1", "", false);
        row("in the clear", "http://models.example/v1", "k", true);
        row("in the same house", "http://192.168.1.5/v1", "k", true);
    }
    void aKeyThatTravelsInTheClearIsToldOnce()
    {
        QFETCH(QString, url);
        QFETCH(QString, key);
        KeySafetyFeature feature({});
        feature.start();
        const LLMConfiguration model { .baseURL = QUrl(url), .apiKey = key };
        feature.noteUse(model);
        feature.noteUse(model);
        QTEST(warnings(feature).size() == 1, "isTold");
        QVERIFY(!warnings(feature).join(u' ').contains(u" k "));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::KeySafetyFeatureTest)
#include "KeySafetyFeatureTest.moc"
