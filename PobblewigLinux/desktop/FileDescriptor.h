#pragma once

#include <unistd.h>

#include <utility>

namespace pobblewig {

/// An open file, which is closed with its owner.
class FileDescriptor {
public:
    explicit FileDescriptor(int number)
        : m_number(number)
    {
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(other.release())
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileDescriptor()
    {
        if (isOpen())
            ::close(m_number);
    }

    /// False if the system could not open the file.
    bool isOpen() const { return m_number >= 0; }
    int get() const { return m_number; }
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

} // namespace pobblewig
