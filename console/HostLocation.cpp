#include "console/HostLocation.h"

#include <filesystem>

namespace orbctl {

namespace {

namespace files = std::filesystem;

files::path besideProgram(const char* relative) {
    std::error_code failure;
    const files::path program = files::read_symlink("/proc/self/exe", failure);
    const files::path file = (program.parent_path() / relative).lexically_normal();
    return !failure && files::exists(file, failure) ? file : files::path();
}

std::string located(const std::string& chosen, const char* beside, const char* loaded) {
    if (!chosen.empty())
        return chosen;
    const files::path built = besideProgram(beside);
    return built.empty() ? loaded : built.string();
}

} // namespace

std::string runtimeFile(const std::string& chosen) {
    return located(chosen, "../simulator/libgrabcore5.so", "libgrabcore5.so");
}

std::string appletFile(const std::string& chosen) {
    return located(chosen, "../applet/libOrbelline.so", "libOrbelline.so");
}

std::vector<HostLibrary> openCompanions(const std::string& runtime) {
    std::vector<HostLibrary> companions;
    if (runtime.find('/') == std::string::npos)
        return companions;
    for (const char* const name : {"libqelrt.so", "libkavoiolibrt.so"}) {
        const files::path file = files::path(runtime).parent_path() / name;
        std::error_code failure;
        if (files::exists(file, failure))
            companions.push_back(HostLibrary::open(file.string(), "host library"));
    }
    return companions;
}

} // namespace orbctl
