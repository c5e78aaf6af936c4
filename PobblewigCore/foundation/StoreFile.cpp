#include "foundation/StoreFile.h"

#include "foundation/Log.h"

#include <QCoroFuture>
#include <QtConcurrentRun>

namespace pobblewig {

namespace {

tl::expected<void, FileError> writeText(JSONFileStore file, std::function<QByteArray()> text)
{
    return file.write(text());
}

} // namespace

StoreFile::StoreFile(
    const std::optional<DataDirectory>& directory, const QString& fileName, QString contents)
    : m_contents(std::move(contents))
{
    if (directory)
        m_file.emplace(*directory, fileName);
}

auto StoreFile::written(const QByteArray& text) -> Outcome
{
    m_underWay.waitForFinished();
    return m_file->write(text);
}

Task<> StoreFile::writeBeside(std::function<QByteArray()> text)
{
    const auto revision = ++m_revision;
    if (!m_file || m_file->isUnreadable())
        co_return;
    m_underWay.waitForFinished();
    m_underWay = QtConcurrent::run(writeText, *m_file, std::move(text));
    const auto outcome = co_await m_underWay;
    // A later save has the last word.
    if (revision == m_revision)
        record(outcome);
}

void StoreFile::record(const Outcome& outcome) const
{
    m_file->record(outcome);
    if (!outcome)
        Log::line(QStringLiteral("buddy: failed to persist %1: %2")
                      .arg(m_contents, outcome.error().description()));
}

} // namespace pobblewig
