#include "foundation/QtKeychainHelper.h"

#include "support/Awaited.h"

#include <QTest>

#include <qt6keychain/keychain.h>

namespace pobblewig {

using State = KeychainHelper::State;

/// Each case needs a session with a keyring in a certain state; see support/with-keyring.
class KeychainHelperTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void unlockedKeepsValues()
    {
        QtKeychainHelper keychain;
        const auto account = QStringLiteral("account");
        QVERIFY(!awaited(keychain.read(account)));
        QCOMPARE(keychain.state(), State::available);
        const auto value = QStringLiteral("sécret 🔑");
        awaited(keychain.write(account, QStringLiteral("first")));
        awaited(keychain.write(account, value));
        QCOMPARE(awaited(QtKeychainHelper().read(account)), value);
        QVERIFY(!awaited(keychain.read(QStringLiteral("another"))));
        awaited(keychain.remove(account));
        QVERIFY(!awaited(keychain.read(account)));
    }

    void unlockedMovesTheLegacyToken()
    {
        const auto account = QString::fromUtf16(KeychainHelper::canvasAPITokenAccount);
        QtKeychainHelper keychain;
        writeLegacy(account, QStringLiteral("old"));
        awaited(keychain.migrateFromLegacyService());
        QCOMPARE(awaited(keychain.read(account)), QStringLiteral("old"));
        awaited(keychain.remove(account));
        awaited(keychain.migrateFromLegacyService());
        QVERIFY(!awaited(keychain.read(account)));

        writeLegacy(account, QStringLiteral("older"));
        awaited(keychain.write(account, QStringLiteral("current")));
        awaited(keychain.migrateFromLegacyService());
        QCOMPARE(awaited(keychain.read(account)), QStringLiteral("current"));
    }

    void unlockedIsLeftAloneWhileDisabled()
    {
        QtKeychainHelper keychain;
        const auto account = QStringLiteral("left alone");
        awaited(keychain.write(account, QStringLiteral("kept")));
        keychain.isDisabled = true;
        QVERIFY(!awaited(keychain.read(account)));
        awaited(keychain.write(account, QStringLiteral("changed")));
        awaited(keychain.remove(account));
        keychain.isDisabled = false;
        QCOMPARE(awaited(keychain.read(account)), QStringLiteral("kept"));
    }

    void lockedRefuses() { refuses(State::locked); }
    void absentRefuses() { refuses(State::absent); }

private:
    static void refuses(State state)
    {
        QtKeychainHelper keychain;
        const auto account = QStringLiteral("account");
        awaited(keychain.write(account, QStringLiteral("value")));
        QCOMPARE(keychain.state(), state);
        QVERIFY(!awaited(keychain.read(account)));
        awaited(keychain.remove(account));
        QCOMPARE(keychain.state(), state);
    }

    static void writeLegacy(const QString& account, const QString& value)
    {
        QKeychain::WritePasswordJob job(QStringLiteral("app.skritbuddy"));
        job.setAutoDelete(false);
        job.setKey(account);
        job.setTextData(value);
        bool isFinished = false;
        connect(&job, &QKeychain::Job::finished, &job, [&] { isFinished = true; });
        job.start();
        QTRY_VERIFY(isFinished);
        QCOMPARE(job.error(), QKeychain::NoError);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::KeychainHelperTest)
#include "KeychainHelperTest.moc"
