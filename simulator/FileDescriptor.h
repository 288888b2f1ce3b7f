#pragma once

#include <unistd.h>

#include <utility>

/// Owns a file descriptor and closes it in the end. -1 is none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : fd(descriptor) {}
    FileDescriptor(FileDescriptor &&other) noexcept : fd(std::exchange(other.fd, -1)) {}
    FileDescriptor &operator=(FileDescriptor &&other) noexcept {
        std::swap(fd, other.fd);
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() {
        if (fd >= 0)
            ::close(fd);
    }

    [[nodiscard]] int get() const { return fd; }
    [[nodiscard]] bool isOpen() const { return fd >= 0; }

private:
    int fd = -1;
};
