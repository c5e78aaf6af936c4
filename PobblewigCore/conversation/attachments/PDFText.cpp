#include "conversation/attachments/PDFText.h"

#include "conversation/attachments/AttachmentLogic.h"

#include <QCoroProcess>
#include <QCoroSignal>
#include <QProcess>
#include <QStandardPaths>

#include <sys/resource.h>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Kind = AttachmentError::Kind;

constexpr auto mostTime = 20s;
constexpr rlim_t mostMemory = 1 << 30;

/// A damaged or malicious file must not take the computer with it.
void limitResources()
{
    const rlimit memory { mostMemory, mostMemory };
    const rlimit time { rlim_t(mostTime.count()), rlim_t(mostTime.count()) };
    ::setrlimit(RLIMIT_AS, &memory);
    ::setrlimit(RLIMIT_CPU, &time);
}

void prepare(QProcess& reader, const QString& program, const QString& path)
{
    // Keys of models are none of its business.
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, qEnvironmentVariable("PATH"));
    reader.setProcessEnvironment(environment);
    reader.setProgram(program);
    reader.setArguments({ u"-q"_s, u"-enc"_s, u"UTF-8"_s, u"-l"_s,
        QString::number(AttachmentLogic::mostPages), u"--"_s, path, u"-"_s });
    reader.setStandardErrorFile(QProcess::nullDevice());
    reader.setChildProcessModifier(limitResources);
}

} // namespace

Task<tl::expected<QByteArray, Kind>> PDFText::read(QString path)
{
    const auto program = QStandardPaths::findExecutable(u"pdftotext"_s);
    if (program.isEmpty())
        co_return tl::unexpected(Kind::noPDFReader);
    QProcess reader;
    QByteArray text;
    prepare(reader, program, path);
    QObject::connect(&reader, &QProcess::readyReadStandardOutput, &reader, [&reader, &text] {
        text += reader.readAllStandardOutput();
        if (text.size() > AttachmentLogic::mostTextBytes)
            reader.kill();
    });
    reader.start(QProcess::ReadOnly);
    const auto end = co_await qCoro(&reader, &QProcess::finished, mostTime);
    if (!end) {
        reader.kill();
        if (reader.state() != QProcess::NotRunning)
            co_await qCoro(&reader, &QProcess::finished);
        co_return tl::unexpected(Kind::slowPDF);
    }
    const auto isEnough = text.size() > AttachmentLogic::mostTextBytes;
    if (!isEnough && (std::get<1>(*end) != QProcess::NormalExit || std::get<0>(*end) != 0))
        co_return tl::unexpected(Kind::damagedPDF);
    co_return text;
}

} // namespace pobblewig
