#pragma once

#include "foundation/FileOperations.h"

namespace pobblewig {

/// The real operations, of which one call fails. Counts all calls, so that a test can fail each of
/// them in turn.
class FaultyFileOperations : public FileOperations {
public:
    /// A short write takes half of the bytes and reports no error, as a nearly full disk does.
    enum class Fault { error, shortWrite };

    explicit FaultyFileOperations(int failingCall = 0, Fault fault = Fault::error)
        : m_failingCall(failingCall)
        , m_fault(fault)
    {
    }

    int calls() const { return m_calls; }

    std::error_code makePath(const QString& directory) const override
    {
        return fails() ? diskFull : FileOperations::makePath(directory);
    }

    tl::expected<int, std::error_code> create(
        const QString& path, std::optional<unsigned> permissions) const override
    {
        if (fails())
            return tl::unexpected(diskFull);
        return FileOperations::create(path, permissions);
    }

    tl::expected<qsizetype, std::error_code> write(int file, QByteArrayView bytes) const override
    {
        if (!fails())
            return FileOperations::write(file, bytes);
        if (m_fault == Fault::error)
            return tl::unexpected(diskFull);
        return FileOperations::write(file, bytes.first(bytes.size() / 2));
    }

    std::error_code sync(int file) const override
    {
        return fails() ? diskFull : FileOperations::sync(file);
    }

    std::error_code close(int file) const override
    {
        const auto error = FileOperations::close(file);
        return fails() ? diskFull : error;
    }

    std::error_code rename(const QString& from, const QString& to) const override
    {
        return fails() ? diskFull : FileOperations::rename(from, to);
    }

    std::error_code syncDirectory(const QString& directory) const override
    {
        return fails() ? diskFull : FileOperations::syncDirectory(directory);
    }

private:
    bool fails() const { return ++m_calls == m_failingCall; }

    inline static const auto diskFull = std::make_error_code(std::errc::no_space_on_device);
    int m_failingCall;
    Fault m_fault;
    mutable int m_calls = 0;
};

} // namespace pobblewig
