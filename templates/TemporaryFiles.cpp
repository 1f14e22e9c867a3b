#include "templates/TemporaryFiles.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/sysinfo.h>

namespace kavo::templates {
namespace {

constexpr std::string_view placeholder = "XXXXXX";
constexpr std::string_view alphabet = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
static_assert(alphabet.size() == 62);
constexpr int attempts = 62 * 62 * 62;
constexpr std::uint64_t retryStep = 7777;

std::atomic<std::uint64_t> nameCounter{0};

std::uint64_t advanceNameCounter(std::uint64_t step) { return nameCounter.fetch_add(step) + step; }

std::uint64_t uptimeInSeconds() {
    struct sysinfo system {};
    sysinfo(&system);
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(system.uptime));
}

/// Where the six characters stand, or null.
char* findPlaceholder(char* pathTemplate, int suffixLength) {
    const std::size_t length = std::strlen(pathTemplate);
    if (suffixLength < 0 || length < static_cast<std::size_t>(suffixLength) + placeholder.size()) {
        return nullptr;
    }
    char* const place = pathTemplate + length - static_cast<std::size_t>(suffixLength) - placeholder.size();
    return std::string_view(place, placeholder.size()) == placeholder ? place : nullptr;
}

void writeName(char* place, std::uint64_t value) {
    for (std::size_t i = 0; i < placeholder.size(); ++i) {
        place[i] = alphabet[static_cast<std::size_t>(value % alphabet.size())];
        value /= alphabet.size();
    }
}

int createFile(const char* path) {
    return open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
}

} // namespace

int mkstemps(char* pathTemplate, int suffixLength) {
    char* const place = findPlaceholder(pathTemplate, suffixLength);
    if (place == nullptr) {
        return -1;
    }
    std::uint64_t name = advanceNameCounter(uptimeInSeconds());
    for (int attempt = 0; attempt < attempts; ++attempt) {
        writeName(place, name);
        const int descriptor = createFile(pathTemplate);
        if (descriptor >= 0) {
            return descriptor;
        }
        name = advanceNameCounter(retryStep);
    }
    *pathTemplate = '\0';
    return -1;
}

} // namespace kavo::templates
