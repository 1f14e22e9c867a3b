#pragma once

#include <string>
#include <vector>

namespace orbctl {

class Arguments;

/// The option --port of a command.
class PortChoice {
  public:
    /// \param preset  "0", "1" or "both"
    explicit PortChoice(const std::string& preset) : mText(preset) {}

    void declare(Arguments& arguments);
    std::vector<unsigned> ports() const;
    /// For what concerns a single port.
    /// \param reason  why both cannot be meant
    /// \throws Failure  (usage)
    unsigned onlyPort(const std::string& reason) const;

  private:
    std::string mText;
};

/// "port 1: ".
std::string portPrefix(unsigned port);
/// The same where a message has to tell the ports apart, else nothing.
std::string portPrefix(const std::vector<unsigned>& ports, unsigned port);

} // namespace orbctl
