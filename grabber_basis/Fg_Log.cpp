#include "grabber_basis/Fg_Log.h"

#include "grabber_basis/NumberText.h"

#include <cstdarg>
#include <ctime>

namespace {

constexpr char separator[] = "-------------------------------------------------------------------------\n";
static_assert(sizeof separator == 73 + 2);

constexpr char notice[] = "Log of the applet library\n";

} // namespace

Fg_Log::Fg_Log(const char* file) {
    if (file != nullptr) {
        OpenLogFile(file);
    }
}

Fg_Log::~Fg_Log() { CloseLogFile(); }

void Fg_Log::OpenLogFile(const char* /*file*/) {}

void Fg_Log::CloseLogFile() {
    if (mHandleToFile != nullptr) {
        std::fclose(mHandleToFile);
        mHandleToFile = nullptr;
    }
}

const char* Fg_Log::GetTimestamp() {
    constexpr int asctimeBytes = 26;
    thread_local char text[asctimeBytes];
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    const bool written = localtime_r(&now, &local) != nullptr && asctime_r(&local, text) != nullptr;
    return written ? text : "";
}

void Fg_Log::writeLine(const char* format, ...) {
    if (mHandleToFile == nullptr) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(mHandleToFile, format, arguments);
    va_end(arguments);
    std::fflush(mHandleToFile);
}

void Fg_Log::Func(const char* /*text*/) {}

void Fg_Log::Info(const char* /*text*/) {}

void Fg_Log::UsrDbg(const char* format, ...) {
    if (mHandleToFile == nullptr) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(mHandleToFile, format, arguments);
    va_end(arguments);
}

void Fg_Log::Error(const char* text) { writeLine("lumacardIV::Error >> %s;\n", text); }

void Fg_Log::Info(const char* text, int value) { writeLine("lumacardIV::Info >> %s >> %d;\n", text, value); }

void Fg_Log::ErrorInt(const char* where, const char* text, int value) {
    writeLine("lumacardIV::Error >> %s >> %s >> %d;\n", where, text, value);
}

void Fg_Log::ErrorDouble(const char* where, const char* text, double value) {
    writeLine("lumacardIV::Error >> %s >> %s >> %s;\n", where, text, kavo::text::shortDouble(value).c_str());
}

void Fg_Log::WriteWelcome() {
    writeLine("%s%sContents: Log details for lumacard Dll\n%s%s", separator, notice, GetTimestamp(),
              separator);
}
