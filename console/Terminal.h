#pragma once

#include <string>

namespace orbctl {

/// What standard output or standard error can show. Plain text goes to pipes and files, to a terminal that
/// says it is dumb, and wherever NO_COLOR asks for it.
class Terminal {
  public:
    /// \param descriptor  file descriptor, 1 or 2
    static Terminal of(int descriptor);
    static Terminal plain() { return {}; }

    bool isInteractive() const { return mInteractive; } ///< a line can be drawn over again
    bool hasColour() const { return mColour; }
    int width() const { return mWidth; } ///< columns

    std::string bold(const std::string& text) const { return styled(text, "1"); }
    std::string dim(const std::string& text) const { return styled(text, "2"); }
    std::string warning(const std::string& text) const { return styled(text, "33"); }
    std::string error(const std::string& text) const { return styled(text, "31"); }
    std::string good(const std::string& text) const { return styled(text, "32"); }

  private:
    std::string styled(const std::string& text, const char* code) const;

    bool mInteractive = false;
    bool mColour = false;
    int mWidth = 80;
};

} // namespace orbctl
