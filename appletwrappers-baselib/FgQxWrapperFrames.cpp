#include "appletwrappers-baselib/FgQxWrapper.h"

#include "appletwrappers-baselib/ParameterInfoBuilderXML.h"
#include "grabber_basis/Fg_ConfigFileParser.h"
#include "platform/ErrorCodes.h"

#include <clocale>
#include <cstring>
#include <new>

namespace error = kavo::error;

// The fixed frames around a configuration file and the XML description; the applet fills them.

namespace {

constexpr const char* manufacturerKey = "Hersteller";
constexpr const char* typeKey = "Typ";
constexpr const char* versionKey = "Version";
constexpr const char* appletIdKey = "LoadAppletId";
constexpr const char* activePortKey = "AktivePort";

// Named by files of this kind; most systems have no locale of this name, and none of our numbers depend on
// it.
void setFileLocale() { std::setlocale(LC_ALL, "English"); }

bool headerFits(Fg_ConfigFileParser& parser, const char* cameraType) {
    char text[Fg_ConfigFileParser::valueBytes] = {};
    if (parser.parseKeyFromLine(manufacturerKey, text) != 0) {
        return false;
    }
    std::memset(text, 0, sizeof text);
    if (parser.parseKeyFromLine(typeKey, text) != 0 || std::strcmp(text, cameraType) != 0) {
        return false;
    }
    int activePort = 0;
    return parser.parseIntKeyFromHeader(activePortKey, &activePort) == 0;
}

} // namespace

int FgQxWrapper::Fg_saveConfig(Fg_Struct*, const char* file) {
    setFileLocale();
    Fg_ConfigFileParser parser(nullptr, nullptr, false);
    if (!parser.setSaveFile(file)) {
        return setError(error::fileAccessFailed);
    }
    parser.writeConfigFileHeader();
    parser.writeConfigFile(manufacturerKey, getManufacturer());
    parser.writeConfigFile(typeKey, getCameraType());
    parser.writeConfigFile(versionKey, getCameraVersion());
    parser.writeConfigFileIntKey(appletIdKey, getAppletID());
    parser.writeConfigFileIntKey(activePortKey, 0);
    saveConfig(parser);
    // Every line was flushed: a full disk shows here, and a file that lacks lines must not pass for a good
    // one.
    return setError(parser.hasWriteFailed() ? error::fileAccessFailed : error::ok);
}

int FgQxWrapper::Fg_loadConfig(Fg_Struct*, const char* file) {
    setFileLocale();
    Fg_ConfigFileParser parser(nullptr, file, true);
    if (!parser.checkFileExist(file)) {
        // Callers that look at the last error see the general failure, callers that look at the result the
        // cause.
        setError(error::configurationLoadFailed);
        return error::fileNotFound;
    }
    if (!parser.checkFileType(file) || !headerFits(parser, getCameraType()) || !loadConfig(parser)) {
        return setError(error::configurationLoadFailed);
    }
    return setError(error::ok);
}

int FgQxWrapper::Fg_getParameterInfoXML(Fg_Struct*, int port, char* buffer, unsigned* size) try {
    if (size == nullptr) {
        return setError(error::invalidParameter);
    }
    if (*size == 0 && buffer != nullptr) {
        return setError(error::bufferTooSmall);
    }
    if (Fg_getParameterInfo(port) == nullptr) {
        return setError(error::noDescription);
    }
    const std::string text = ParameterInfoBuilderXML(parameterInfo(), *this, port).build();
    if (buffer != nullptr) {
        if (text.size() >= *size) {
            return setError(error::bufferTooSmall);
        }
        std::memcpy(buffer, text.c_str(), text.size() + 1);
    }
    *size = static_cast<unsigned>(text.size() + 1);
    return setError(error::ok);
} catch (const std::bad_alloc&) {
    return setError(error::bufferTooSmall);
}
