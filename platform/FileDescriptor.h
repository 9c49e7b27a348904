#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

/// Owns an open file descriptor.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    explicit operator bool() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

    /// Gives the descriptor to another owner.
    int release() { return std::exchange(m_descriptor, -1); }

    /// Closes early: 0, or the error number of a write that failed only now.
    [[nodiscard]] int close() { return ::close(std::exchange(m_descriptor, -1)) == 0 ? 0 : errno; }

private:
    int m_descriptor = -1;
};
