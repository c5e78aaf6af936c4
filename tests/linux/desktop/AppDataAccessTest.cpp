#include "PobblewigLinux/desktop/BeneathAppDataReader.h"

#include "folders/AppDataAccessLogic.h"
#include "folders/AppDataAccessService.h"
#include "support/Awaited.h"
#include "support/TableRow.h"
#include "tools/MemoryToolExecutor.h"

#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <cstddef>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace pobblewig {

namespace {

const auto escapes = u"refused: path escapes source root"_s;
const auto limit = AppDataAccessLogic::maxFileBytes;

/// The answer's "%1" is the last name of the path.
void rows(const QString& answer, std::initializer_list<QString> paths)
{
    for (const auto& path : paths) {
        const auto name = path.section(u'/', -1, -1, QString::SectionSkipEmpty);
        QTest::newRow(u"'%1'"_s.arg(path).toUtf8())
            << path << QString(answer).replace("%1"_L1, name);
    }
}

} // namespace

/// The service over real files. Whatever depends on finding a path is asked of both ways to find
/// one.
class AppDataAccessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        write("outside/secret.txt", "outside");
        write("root-sibling/notes.txt", "outside");
        for (const auto* path : { "notes.txt", "id_rsa", "sub/.env.local", ".ssh/config",
                 "sub/deeper/x.txt", "sub/plain.txt", "%2e%2e/y.txt" })
            write(QByteArray("root/") + path, "inside");
        const std::pair<const char*, QByteArray> links[] = { { "out", at("outside/secret.txt") },
            { "outfolder", "../outside" }, { "chain", "chain2" }, { "chain2", "sub/up/secret.txt" },
            { "sub/up", "../../outside" }, { "parent", ".." }, { "slash", "/" },
            { "system", "/etc/passwd" }, { "environ.txt", "/proc/self/environ" },
            { "self", "/proc/self/root/etc/passwd" }, { "zero", "/dev/zero" },
            { "tty", "/dev/tty" }, { "dangling", "../outside/none" }, { "nowhere", "none" },
            { "loop", "loop" }, { "ping", "pong" }, { "pong", "ping" },
            { "innocent.txt", "id_rsa" }, { "innocent2", "./innocent.txt" }, { "keys", ".ssh" },
            { "pipelink", "pipe" }, { "good", "sub/../notes.txt" }, { "deep", "sub/deeper" },
            { "goodabsolute", at("root/sub/deeper") }, { "slashed", "notes.txt/" },
            { "secretabsolute", at("root/id_rsa") } };
        for (const auto& [name, target] : links)
            QCOMPARE(::symlink(target, at(QByteArray("root/") + name)), 0);
        QCOMPARE(::symlink("root", at("rootlink")), 0);
        QCOMPARE(::mkfifo(at("root/pipe"), 0600), 0);
        const QByteArray socketPath = at("root/socket");
        sockaddr_un address = { .sun_family = AF_UNIX, .sun_path = {} };
        qstrncpy(address.sun_path, socketPath, sizeof address.sun_path);
        const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        QCOMPARE(::bind(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    }

    void hostilePathsAreRefused_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("answer");
        const auto denied = u"refused: '%1' matches the secret denylist"_s;
        const auto error = u"error: '%1': "_s;
        // Ways up
        rows(escapes,
            { u".."_s, u"./.."_s, u"../outside/secret.txt"_s, u"../root-sibling/notes.txt"_s,
                u"../root/notes.txt"_s, u".././../outside/secret.txt"_s, u"sub/../.."_s,
                u"sub/../../outside/secret.txt"_s, u"notes.txt/../../outside/secret.txt"_s,
                u"none/../../outside/secret.txt"_s, u"/../outside/secret.txt"_s,
                u"//..//outside///secret.txt//"_s, u"../../../../../../../../../etc/passwd"_s,
                u"deep/../../../outside/secret.txt"_s });
        // Links out
        rows(escapes,
            { u"out"_s, u"out/"_s, u"chain"_s, u"outfolder/secret.txt"_s, u"sub/up/secret.txt"_s,
                u"parent/outside/secret.txt"_s, u"slash"_s, u"slash/etc/passwd"_s, u"system"_s,
                u"environ.txt"_s, u"self"_s, u"zero"_s, u"tty"_s, u"dangling"_s });
        // Other spellings of the ways out
        rows(error + "No such file or directory"_L1,
            { u"///etc/hostname"_s, u"~/notes.txt"_s, u"$HOME/notes.txt"_s,
                u"file:///etc/hostname"_s, u"%2e%2e/notes.txt"_s, u"..%2foutside%2fnotes.txt"_s,
                u"..\\notes.txt"_s, u"．．/notes.txt"_s, u"‥/notes.txt"_s, u"..∕notes.txt"_s,
                u" ../notes.txt"_s, u".../notes.txt"_s, u"not*.txt"_s, u"nowhere"_s });
        rows(error + "Too many levels of symbolic links"_L1, { u"loop"_s, u"ping"_s });
        rows(error + "Not a directory"_L1, { u"slashed"_s, u"notes.txt/../notes.txt"_s });
        rows(error + "not a regular file"_L1, { u"pipe"_s, u"pipelink"_s, u"socket"_s });
        rows(error + "Is a directory"_L1, { u"sub"_s, u"deep/"_s });
        rows(error.arg("root"_L1) + "Is a directory"_L1, { u""_s, u"/."_s });
        rows(denied,
            { u"id_rsa"_s, u"id_rsa/"_s, u"ID_RSA"_s, u"ｉd_rsa"_s, u"sub/../id_rsa"_s,
                u"sub/.env.local"_s, u"/etc/passwd"_s });
        rows(denied.arg("id_rsa"_L1), { u"innocent.txt"_s, u"innocent2"_s, u"secretabsolute"_s });
        rows(denied.arg(".ssh"_L1), { u".ssh/config"_s, u"keys/config"_s, u".ssh/none"_s });
        row("control character", u"notes.txt\n"_s,
            u"error: 'notes.txt ': No such file or directory"_s);
        row("NUL", u"notes.txt\0.png"_s, u"error: 'notes.txt.png': no name of a file"_s);
        row("long name", QString(256, u'x'),
            u"error: '%1…': File name too long"_s.arg(QString(199, u'x')));
        row("long path", u"sub/../"_s.repeated(600) + u'x', u"error: 'x': File name too long"_s);
    }
    void hostilePathsAreRefused()
    {
        QFETCH(QString, path);
        QFETCH(QString, answer);
        const FileDescriptor folder(::open(at("root"), O_PATH | O_CLOEXEC));
        for (const auto find : m_finders) {
            QCOMPARE(read(path, find), answer);
            QVERIFY(answer != escapes || !find(folder, path.toUtf8()));
        }
    }

    void whatStaysBeneathTheRootIsRead_data()
    {
        QTest::addColumn<QString>("path");
        row("file", "notes.txt");
        row("outer slashes", "/notes.txt/");
        row("in and out of a folder", "sub/..//./notes.txt");
        row("link", "good");
        row("link to a folder", "deep/x.txt");
        row("out of a link's folder", "deep/../plain.txt");
        row("absolute link to a folder", "goodabsolute/x.txt");
    }
    void whatStaysBeneathTheRootIsRead()
    {
        QFETCH(QString, path);
        for (const auto find : m_finders)
            QCOMPARE(read(path, find), u"inside"_s);
    }

    void aFileOfTheLimitIsReadAndNoneAbove()
    {
        const QByteArray line(63, 'x');
        write("root/full.txt", (line + '\n').repeated(limit / 64));
        write("root/over.txt", (line + '\n').repeated(limit / 64) + 'y');
        write("root/image", QByteArray("PNG\0", 4));
        for (const auto& [asked, shown] :
            std::map<int, int> { { 5000, 60 }, { 2, 2 }, { -1, 1 } }) {
            const auto header = u"[showing last %1 of 32768 lines — %2 earlier lines omitted]\n"_s;
            const auto lines = QStringList(shown, QString::fromLatin1(line)).join(u'\n');
            QCOMPARE(read(u"full.txt", m_finders[0], asked),
                header.arg(shown).arg(32768 - shown) + lines);
        }
        QVERIFY(read(u"full.txt").startsWith(u"[showing last 60 of"));
        QVERIFY(read(u"full.txt").size() <= MemoryToolExecutor::maxResultCharacters);
        QCOMPARE(read(u"over.txt"), u"refused: over.txt is 2097153 bytes, over the 2 MB limit");
        QCOMPARE(read(u"image"), u"refused: binary file (not text)");
    }

    void aFileOnceOpenedStaysTheSame()
    {
        write("root/swapped.txt", "inside");
        for (const auto find : m_finders) {
            const auto file = BeneathAppDataReader(find).open({ root(), u"swapped.txt"_s });
            QVERIFY(file);
            QCOMPARE(::rename(at("root/swapped.txt"), at("root/moved.txt")), 0);
            QCOMPARE(::symlink(at("outside/secret.txt"), at("root/swapped.txt")), 0);
            QCOMPARE((*file)->read(limit), QByteArray("inside"));
            QCOMPARE(::rename(at("root/moved.txt"), at("root/swapped.txt")), 0);
        }
    }

    void aLinkThatIsSwappedAllTheTimeNeverLeadsOut()
    {
        QCOMPARE(::symlink("sub/deeper", at("root/turning")), 0);
        QCOMPARE(::symlink("../outside", at("root/turned")), 0);
        write("outside/x.txt", "outside");
        std::atomic<bool> done = false;
        std::thread swapping([&, turning = at("root/turning"), turned = at("root/turned")] {
            while (!done)
                ::syscall(SYS_renameat2, AT_FDCWD, turning.constData(), AT_FDCWD,
                    turned.constData(), RENAME_EXCHANGE);
        });
        QSet<QString> answers;
        for (int round = 0; round < 500; ++round)
            answers.insert(read(u"turning/x.txt", m_finders[round % 2]));
        done = true;
        swapping.join();
        answers.subtract({ u"inside"_s, escapes });
        QCOMPARE(answers, QSet<QString>());
    }

    void aFolderIsListedNewestFirst()
    {
        for (int number = 0; number < 199; ++number)
            write("root/list/x" + QByteArray::number(number), "");
        QCOMPARE(::mkdir(at("root/list/folder"), 0700), 0);
        QCOMPARE(::symlink("/dev/zero", at("root/list/link")), 0);
        write("root/list/.env", "");
        date("root/list/folder", 1772352900);
        date("root/list/link", 1772352901);
        for (const auto find : m_finders) {
            const auto lines = listing(u"/list/", find).split(u'\n');
            QCOMPARE(lines.size(), 201);
            QCOMPARE(lines.last(), u"(2 more entries — ask for a subpath to narrow down)");
            QVERIFY(lines.filter(u".env — 20"_s).size() == 1);
            date("root/list/folder", 4102444800);
            QCOMPARE(
                listing(u"list", find).split(u'\n').first(), u"folder/ — 2100-01-01T00:00:00Z");
        }
    }

    void aListingHasItsOwnRefusals()
    {
        QCOMPARE(::mkdir(at("root/empty"), 0700), 0);
        const auto none = u"error: no such directory: %1 (use apps_read_file for files)"_s;
        for (const auto find : m_finders) {
            QCOMPARE(listing(u"empty", find), u"(empty directory)");
            for (const auto* path : { u"..", u"out", u"slash", u"sub/up" })
                QCOMPARE(listing(path, find), escapes);
            for (const auto* path : { u"notes.txt", u"none", u"pipe", u"good" })
                QCOMPARE(listing(path, find), none.arg(path));
            for (const auto* path : { u".ssh", u"keys", u"sub/../keys/." })
                QVERIFY(listing(path, find).endsWith(u"'.ssh' matches the secret denylist"));
        }
    }

    void aSourceIsFoundByItsNameAndUsedWhileEnabled()
    {
        QCOMPARE(awaited(service().listSources()),
            u"notes: %1\nlinked: %1link\noff: / (disabled)\ngone: /none\nloose: x"_s.arg(root()));
        m_sources.swap(m_none);
        QCOMPARE(awaited(service().listSources()),
            u"no app data sources configured (the user can add them in Settings)");
        m_sources.swap(m_none);
        const auto answer = [this](QStringView source) {
            return awaited(service().readFile(source.toString(), u"notes.txt"_s, {}));
        };
        QCOMPARE(answer(u"linked"), u"inside");
        QCOMPARE(answer(u"off"), u"refused: source 'off' is disabled in Settings");
        QCOMPARE(
            answer(u"Notes"), u"error: unknown app data source 'Notes' (use apps_list_sources)");
        QCOMPARE(answer(u"gone"), u"error: 'notes.txt': No such file or directory");
        QCOMPARE(answer(u"loose"), u"error: 'x': not an absolute path");
        QCOMPARE(awaited(service().listFiles(u"gone"_s, {})),
            u"error: no such directory: /none (use apps_read_file for files)");
    }

    /// Stays the last: there is no way back.
    void withoutTheSystemCallThePathIsWalked()
    {
        sock_filter rules[] = { BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW) };
        const sock_fprog program = { .len = std::size(rules), .filter = rules };
        QCOMPARE(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
        QCOMPARE(
            ::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_TSYNC, &program),
            0);
        QCOMPARE(::syscall(SYS_openat2, AT_FDCWD, "/", nullptr, 0), -1);
        QCOMPARE(errno, EPERM);
        QCOMPARE(read(u"good"), u"inside");
        QCOMPARE(read(u"chain"), escapes);
    }

private:
    QByteArray at(const QByteArray& path) const
    {
        return QFile::encodeName(m_scratch.path()) + '/' + path;
    }
    QString root() const { return m_scratch.filePath(u"root"_s); }

    void write(const QByteArray& path, const QByteArray& bytes)
    {
        QFile file(QFile::decodeName(at(path)));
        QDir().mkpath(QFileInfo(file).path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    void date(const QByteArray& path, time_t seconds)
    {
        const timespec times[] = { { seconds, 0 }, { seconds, 0 } };
        QCOMPARE(::utimensat(AT_FDCWD, at(path), times, AT_SYMLINK_NOFOLLOW), 0);
    }

    AppDataAccessService service(PathBeneath::Finder find = PathBeneath::byKernel)
    {
        m_reader = BeneathAppDataReader(find);
        return AppDataAccessService([this] { return m_sources; }, m_reader);
    }

    QString read(QStringView path, PathBeneath::Finder find = PathBeneath::byKernel,
        std::optional<int> lines = {})
    {
        auto reading = service(find);
        return awaited(reading.readFile(u"notes"_s, path.toString(), lines));
    }

    QString listing(QStringView path, PathBeneath::Finder find)
    {
        auto reading = service(find);
        return awaited(reading.listFiles(u"notes"_s, path.toString()));
    }

    const std::array<PathBeneath::Finder, 2> m_finders = { PathBeneath::byKernel,
        PathBeneath::byWalking };
    QTemporaryDir m_scratch;
    BeneathAppDataReader m_reader;
    std::vector<AppDataSource> m_sources = {
        { .name = u"notes"_s, .rootPath = root() },
        { .name = u"linked"_s, .rootPath = root() + u"link"_s },
        { .name = u"off"_s, .rootPath = u"/"_s, .enabled = false },
        { .name = u"gone"_s, .rootPath = u"/none"_s },
        { .name = u"loose"_s, .rootPath = u"x"_s },
    };
    std::vector<AppDataSource> m_none;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AppDataAccessTest)
#include "AppDataAccessTest.moc"
