// A term of 120 days, played on a simulated clock with the demo model: whether everything is where
// it should be at its end, how the files grow, how long it takes and how much memory it needs.

#include "Figure.h"
#include "Semester.h"
#include "TermChecks.h"

#include <QElapsedTimer>

#include <cstdio>

namespace pobblewig {

namespace {

constexpr std::array tableDays { 1, 10, 30, 60, 90, 120 };

/// What the process alone holds, whatever else of the machine uses the same libraries.
double megabytesOfMemory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the system does not tell what memory is in use");
    for (const auto& line : file.readAll().split('\n')) {
        if (line.startsWith("Anonymous:"))
            return line.simplified().split(' ')[1].toDouble() / 1024;
    }
    qFatal("the system does not tell what memory is in use");
}

/// Sizes by file and day; the archives count as one.
class Growth {
public:
    void note(const QDir& data, int day)
    {
        for (const auto& file : data.entryInfoList(QDir::Files)) {
            const auto name = file.fileName().startsWith(u"chat-") ? QStringLiteral("all archives")
                                                                   : file.fileName();
            m_sizes[name][day] += file.size();
        }
        m_memory[day] = megabytesOfMemory();
    }

    void print() const
    {
        std::printf("%-20s", "bytes after day");
        for (const auto day : tableDays)
            std::printf("%10d", day);
        for (const auto& [name, sizes] : m_sizes) {
            std::printf("\n%-20s", qPrintable(name));
            for (const auto day : tableDays)
                std::printf("%10lld", sizes.contains(day) ? sizes.at(day) : 0);
        }
        std::printf("\n%-20s", "memory (MB)");
        for (const auto day : tableDays)
            std::printf("%10.1f", m_memory.at(day));
        std::printf("\n");
    }

    double afterTheFirstMonth() const { return m_memory.at(120) - m_memory.at(30); }

private:
    std::map<QString, std::map<int, qint64>> m_sizes;
    std::map<int, double> m_memory;
};

QStringList faultsOf(const Semester& semester)
{
    const auto record = semester.record();
    const auto files = TermFiles::read(semester.data());
    return TermChecks::sessions(files, record, semester.term()) + TermChecks::times(files)
        + TermChecks::weeks(files) + TermChecks::messages(files, record)
        + TermChecks::contents(files) + TermChecks::memoryOff(files, record)
        + TermChecks::crashes(record);
}

void playTheTerm()
{
    QElapsedTimer time;
    time.start();
    Semester semester;
    Growth growth;
    semester.play([&](const TermDay& day) {
        if (std::ranges::find(tableDays, day.number) != tableDays.end())
            growth.note(semester.data(), day.number);
    });
    const auto seconds = double(time.elapsed()) / 1000;
    growth.print();
    const auto faults = faultsOf(semester);
    for (const auto& fault : faults)
        std::printf("FAULT: %s\n", qPrintable(fault));
    Figure { .measured = "faults of a term", .value = double(faults.size()), .unit = "", .most = 0 }
        .report();
    Figure { .measured = "a term", .value = seconds, .unit = "s", .most = 60 }.report();
    Figure { .measured = "growth of the program within three months",
        .value = growth.afterTheFirstMonth(),
        .unit = "MB",
        .most = 1 }
        .report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (const auto outcome = pobblewig::Semester::playVictim())
        return *outcome;
    pobblewig::playTheTerm();
}
