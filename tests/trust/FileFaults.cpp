#include "tests/trust/FileFaults.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#define EXPORTED __attribute__((visibility("default")))

extern "C" {
EXPORTED std::FILE* __real_fopen(const char* path, const char* mode);
EXPORTED std::FILE* __wrap_fopen(const char* path, const char* mode);
EXPORTED int __real_open(const char* path, int flags, ...);
EXPORTED int __wrap_open(const char* path, int flags, ...);
EXPORTED int __real_close(int descriptor);
EXPORTED int __wrap_close(int descriptor);
EXPORTED int __real_unlink(const char* path);
EXPORTED int __wrap_unlink(const char* path);
}

namespace {

struct Watch {
    bool isOn = false;
    std::vector<FileCall> calls;
    bool isFailing = false;
    std::size_t successesLeft = 0;
    FaultDuration duration = FaultDuration::once;
    FileFaultKind kind = FileFaultKind::refusal;
    bool hasFailed = false;
};

Watch& watch() {
    static Watch one;
    return one;
}

/// Notes a call; true when it is to fail.
bool isRefused(FileCall call) {
    Watch& now = watch();
    if (!now.isOn) {
        return false;
    }
    now.calls.push_back(call);
    if (!now.isFailing || now.successesLeft > 0) {
        now.successesLeft -= now.isFailing ? 1 : 0;
        return false;
    }
    now.isFailing = now.duration == FaultDuration::forEver;
    now.hasFailed = true;
    errno = call == FileCall::write ? ENOSPC : EIO;
    return true;
}

// ---- a stream whose calls can be seen; its cookie is a stream of the system

int descriptorOf(void* cookie) { return fileno(static_cast<std::FILE*>(cookie)); }

ssize_t readBytes(void* cookie, char* buffer, std::size_t size) {
    return isRefused(FileCall::read) ? -1 : read(descriptorOf(cookie), buffer, size);
}

ssize_t writeBytes(void* cookie, const char* buffer, std::size_t size) {
    if (!isRefused(FileCall::write)) {
        return write(descriptorOf(cookie), buffer, size);
    }
    const int code = errno;
    const ssize_t written =
        watch().kind == FileFaultKind::half ? write(descriptorOf(cookie), buffer, size / 2) : 0;
    errno = code;
    return written;
}

int moveTo(void* cookie, off64_t* offset, int whence) {
    *offset = lseek(descriptorOf(cookie), static_cast<off_t>(*offset), whence);
    return *offset < 0 ? -1 : 0;
}

int closeStream(void* cookie) {
    const bool isToFail = isRefused(FileCall::close);
    const int code = errno;
    const int result = std::fclose(static_cast<std::FILE*>(cookie));
    errno = isToFail ? code : errno;
    return isToFail ? EOF : result;
}

} // namespace

const char* nameOf(FileCall call) {
    static const char* const names[] = {"open", "read", "write", "close", "remove"};
    return names[static_cast<std::size_t>(call)];
}

const char* nameOf(FileFaultKind kind) { return kind == FileFaultKind::refusal ? "refused" : "half"; }

std::string FileFaults::describe(std::size_t nth, FaultDuration duration, FileFaultKind kind) const {
    return "call " + std::to_string(nth) + ", " + nameOf(call(nth)) + ", " + nameOf(duration) + ", " +
           nameOf(kind);
}

bool FileFaults::hasHappened() { return watch().hasFailed; }

void FileFaults::startNoting() {
    watch() = {};
    watch().isOn = true;
}

std::vector<FileCall> FileFaults::stopNoting() {
    watch().isOn = false;
    return std::move(watch().calls);
}

FileFaults::Arranged::Arranged(std::size_t nth, FaultDuration duration, FileFaultKind kind) {
    watch() = {true, {}, true, nth, duration, kind, false};
}

FileFaults::Arranged::~Arranged() {
    watch().isOn = false;
    watch().calls.clear();
}

std::FILE* __wrap_fopen(const char* path, const char* mode) {
    if (!watch().isOn) {
        return __real_fopen(path, mode);
    }
    if (isRefused(FileCall::open)) {
        return nullptr;
    }
    std::FILE* const opened = __real_fopen(path, mode);
    return opened == nullptr ? nullptr
                             : fopencookie(opened, mode, {readBytes, writeBytes, moveTo, closeStream});
}

int __wrap_open(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const unsigned permissions = va_arg(arguments, unsigned);
    va_end(arguments);
    return isRefused(FileCall::open) ? -1 : __real_open(path, flags, permissions);
}

int __wrap_close(int descriptor) {
    const bool isToFail = isRefused(FileCall::close);
    const int result = __real_close(descriptor);
    return isToFail ? -1 : result;
}

int __wrap_unlink(const char* path) { return isRefused(FileCall::remove) ? -1 : __real_unlink(path); }
