#include "console/ConfigurationFile.h"

#include "console/AppletHandle.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace orbctl {

namespace {

namespace files = std::filesystem;

using ValueBuffer = std::array<char, Fg_ConfigFileParser::valueBytes>;

/// A file of its own, removed at the end.
class TemporaryFile {
  public:
    TemporaryFile() : mPath((folder() / "orbctl-XXXXXX.mcf").string()) {
        constexpr int suffixLength = 4;
        const int descriptor = mkstemps(mPath.data(), suffixLength);
        if (descriptor < 0)
            throw Failure(ExitStatus::notFound, "a temporary file cannot be made: " + mPath);
        close(descriptor);
    }
    ~TemporaryFile() { unlink(mPath.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return mPath; }

  private:
    static files::path folder() {
        std::error_code failure;
        files::path found = files::temp_directory_path(failure);
        if (failure)
            throw Failure(ExitStatus::notFound, "there is no folder for temporary files; TMPDIR names one");
        return found;
    }

    std::string mPath;
};

const char* checked(const std::string& file) {
    requireConfigurationName(file);
    std::ifstream stream(file);
    if (!stream || (stream.peek(), stream.bad()))
        throw Failure(ExitStatus::notFound, file + " cannot be read");
    return file.c_str();
}

std::vector<std::string> keysOfSection(const std::string& file, unsigned port) {
    const std::string section = Fg_ConfigFileParser::getPortString(static_cast<int>(port));
    std::ifstream stream(file);
    std::vector<std::string> keys;
    bool isInside = false;
    for (std::string line; std::getline(stream, line);) {
        const std::size_t equals = line.find('=');
        if (line.rfind('[', 0) == 0)
            isInside = line.rfind(section, 0) == 0;
        else if (isInside && equals != std::string::npos && equals > 0)
            keys.push_back(line.substr(0, equals));
    }
    return keys;
}

std::string missingHeader(const ConfigurationFile& file, const char* key) {
    return file.headerText(key) ? "" : std::string("its header has no ") + key;
}

} // namespace

void requireConfigurationName(const std::string& file) {
    if (file.find(".mcf") == std::string::npos)
        throw Failure(ExitStatus::usage, file + ": the name of a configuration file holds \".mcf\"");
}

ConfigurationFile::ConfigurationFile(const std::string& file) : mParser(nullptr, checked(file), true) {
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        mKeys.push_back(keysOfSection(file, port));
}

std::optional<std::string> ConfigurationFile::headerText(const std::string& key) const {
    ValueBuffer value{};
    if (mParser.parseKeyFromLine(key.c_str(), value.data()) != 0)
        return std::nullopt;
    return std::string(value.data());
}

std::optional<std::string> ConfigurationFile::text(unsigned port, const std::string& key) const {
    ValueBuffer value{};
    if (mParser.parseKeySection(static_cast<int>(port), key.c_str(), value.data()) != 0)
        return std::nullopt;
    return std::string(value.data());
}

ConfigurationFile savedConfiguration(const AppletHandle& applet) {
    const TemporaryFile file;
    const int code = applet.functions().saveConfiguration(applet.handle(), file.path().c_str());
    if (code != 0)
        throw Failure(ExitStatus::refused,
                      "the configuration of the board cannot be saved: " + withCode(code));
    return ConfigurationFile(file.path());
}

std::string obstacleTo(const ConfigurationFile& file, const ConfigurationFile& reference) {
    for (const char* const key : {"Hersteller", "Typ", "AktivePort"}) {
        std::string missing = missingHeader(file, key);
        if (!missing.empty())
            return missing;
    }
    const std::string type = *file.headerText("Typ");
    const std::string own = reference.headerText("Typ").value_or("");
    if (type != own)
        return "it is for the applet \"" + type + "\", not for \"" + own + "\"";
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        for (const std::string& key : reference.keys(port))
            if (!file.text(port, key))
                return key + " of port " + textOf(std::uint64_t{port}) + " is missing";
    return "";
}

} // namespace orbctl
