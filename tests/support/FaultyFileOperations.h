#pragma once

#include "foundation/FileOperations.h"

namespace pobblewig {

/// The real operations, of which one call fails. Counts all calls, so that a test can fail each of
/// them in turn.
class FaultyFileOperations : public FileOperations {
public:
    /// A short write takes half of the bytes and reports no error, as a nearly full disk does.
    enum class Fault { error, shortWrite };

    FaultyFileOperations() = default;
    explicit FaultyFileOperations(int failingCall, Fault fault = Fault::error);

    int calls() const { return m_calls; }

    std::error_code makePath(const QString& directory) const override;
    tl::expected<int, std::error_code> create(
        const QString& path, std::optional<unsigned> permissions) const override;
    tl::expected<qsizetype, std::error_code> write(int file, QByteArrayView bytes) const override;
    std::error_code sync(int file) const override;
    std::error_code close(int file) const override;
    std::error_code rename(const QString& from, const QString& to) const override;
    std::error_code syncDirectory(const QString& directory) const override;

private:
    bool fails() const { return ++m_calls == m_failingCall; }

    int m_failingCall = 0;
    Fault m_fault = Fault::error;
    mutable int m_calls = 0;
};

} // namespace pobblewig
