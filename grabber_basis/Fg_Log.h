#pragma once

#include <cstdio>

/// Text log that the file parsers write to when they are given one. The applet never opens a log file, so
/// nothing is written; the line formats hold for a class that derives from this one and opens mHandleToFile
/// itself.
///
/// Every operation does nothing while no file is open, and flushes the file after its line.
class Fg_Log {
  public:
    /// \param file  handed to OpenLogFile unless null
    explicit Fg_Log(const char* file);
    ~Fg_Log();
    Fg_Log(const Fg_Log&) = delete;
    Fg_Log& operator=(const Fg_Log&) = delete;

    /// Has no effect: logging is off in this applet.
    void OpenLogFile(const char* file);
    void CloseLogFile();

    /// The local time as asctime gives it: 24 characters and a newline, in a buffer that each thread has
    /// once.
    static const char* GetTimestamp();

    /// Function traces and plain information are off.
    void Func(const char* text);
    void Info(const char* text);
    /// Writes formatted text as it stands: no prefix, no newline, no flush.
    void UsrDbg(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void Error(const char* text);
    void Info(const char* text, int value);
    void ErrorInt(const char* where, const char* text, int value);
    /// The value stands in the line with twelve significant digits, with a point in every locale.
    void ErrorDouble(const char* where, const char* text, double value);
    void WriteWelcome();

  protected:
    std::FILE* mHandleToFile = nullptr;
    int mLogLevel = 0;

  private:
    void writeLine(const char* format, ...) __attribute__((format(printf, 2, 3)));
};
