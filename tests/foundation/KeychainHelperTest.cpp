#include "foundation/QtKeychainHelper.h"

#include "support/Awaited.h"
#include "support/TableRow.h"

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
        const auto account = u"account"_s;
        QVERIFY(!awaited(keychain.read(account)));
        QCOMPARE(keychain.state(), State::available);
        const auto value = u"sécret 🔑"_s;
        awaited(keychain.write(account, u"first"_s));
        awaited(keychain.write(account, value));
        QCOMPARE(awaited(QtKeychainHelper().read(account)), value);
        QVERIFY(!awaited(keychain.read(u"another"_s)));
        awaited(keychain.remove(account));
        QVERIFY(!awaited(keychain.read(account)));
    }

    void unlockedMovesTheLegacyToken()
    {
        const auto account = QString::fromUtf16(KeychainHelper::canvasAPITokenAccount);
        QtKeychainHelper keychain;
        writeLegacy(account, u"old"_s);
        awaited(keychain.migrateFromLegacyService());
        QCOMPARE(awaited(keychain.read(account)), u"old"_s);
        awaited(keychain.remove(account));
        awaited(keychain.migrateFromLegacyService());
        QVERIFY(!awaited(keychain.read(account)));

        writeLegacy(account, u"older"_s);
        awaited(keychain.write(account, u"current"_s));
        awaited(keychain.migrateFromLegacyService());
        QCOMPARE(awaited(keychain.read(account)), u"current"_s);
    }

    void unlockedIsLeftAloneWhileDisabled()
    {
        QtKeychainHelper keychain;
        const auto account = u"left alone"_s;
        awaited(keychain.write(account, u"kept"_s));
        keychain.isDisabled = true;
        QVERIFY(!awaited(keychain.read(account)));
        awaited(keychain.write(account, u"changed"_s));
        awaited(keychain.remove(account));
        keychain.isDisabled = false;
        QCOMPARE(awaited(keychain.read(account)), u"kept"_s);
    }

    void lockedRefuses() { refuses(State::locked); }
    void absentRefuses() { refuses(State::absent); }

private:
    static void refuses(State state)
    {
        QtKeychainHelper keychain;
        const auto account = u"account"_s;
        awaited(keychain.write(account, u"value"_s));
        QCOMPARE(keychain.state(), state);
        QVERIFY(!awaited(keychain.read(account)));
        awaited(keychain.remove(account));
        QCOMPARE(keychain.state(), state);
    }

    static void writeLegacy(const QString& account, const QString& value)
    {
        QKeychain::WritePasswordJob job(u"app.skritbuddy"_s);
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
