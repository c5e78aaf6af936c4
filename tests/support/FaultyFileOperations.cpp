#include "support/FaultyFileOperations.h"

namespace pobblewig {

namespace {

const auto diskFull = std::make_error_code(std::errc::no_space_on_device);

}

FaultyFileOperations::FaultyFileOperations(int failingCall, Fault fault)
    : m_failingCall(failingCall)
    , m_fault(fault)
{
}

std::error_code FaultyFileOperations::makePath(const QString& directory) const
{
    return fails() ? diskFull : FileOperations::makePath(directory);
}

tl::expected<int, std::error_code> FaultyFileOperations::create(
    const QString& path, std::optional<unsigned> permissions) const
{
    if (fails())
        return tl::unexpected(diskFull);
    return FileOperations::create(path, permissions);
}

tl::expected<qsizetype, std::error_code> FaultyFileOperations::write(
    int file, QByteArrayView bytes) const
{
    if (!fails())
        return FileOperations::write(file, bytes);
    if (m_fault == Fault::error)
        return tl::unexpected(diskFull);
    return FileOperations::write(file, bytes.first(bytes.size() / 2));
}

std::error_code FaultyFileOperations::sync(int file) const
{
    return fails() ? diskFull : FileOperations::sync(file);
}

std::error_code FaultyFileOperations::close(int file) const
{
    const auto fault = fails();
    const auto error = FileOperations::close(file);
    return fault ? diskFull : error;
}

std::error_code FaultyFileOperations::rename(const QString& from, const QString& to) const
{
    return fails() ? diskFull : FileOperations::rename(from, to);
}

std::error_code FaultyFileOperations::syncDirectory(const QString& directory) const
{
    return fails() ? diskFull : FileOperations::syncDirectory(directory);
}

} // namespace pobblewig
