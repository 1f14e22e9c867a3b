#pragma once

#include <string>
#include <vector>

namespace orbctl {

/// What a command expects behind its name. Each function declares one item; its target keeps its value where
/// the user gives nothing. Names are written as on the command line ("-o,--out"); a name without dashes is
/// positional. Texts with an empty help are hidden from the help page.
class Arguments {
  public:
    virtual ~Arguments() = default;

    virtual void flag(const std::string& names, bool& target, const std::string& help) = 0;
    virtual void text(const std::string& names, std::string& target, const std::string& help) = 0;
    /// A text that has to be given.
    virtual void requiredText(const std::string& names, std::string& target, const std::string& help) = 0;
    /// Any number of texts; at least \p least.
    virtual void texts(const std::string& names, std::vector<std::string>& target, unsigned least,
                       const std::string& help) = 0;
    /// All words from the first on that is no option of this command.
    virtual void rest(const std::string& name, std::vector<std::string>& target, const std::string& help) = 0;
    /// One of the choices given.
    virtual void choice(const std::string& names, std::string& target,
                        const std::vector<std::string>& choices, const std::string& help) = 0;
    /// A whole number from \p least to \p most, decimal.
    virtual void number(const std::string& names, unsigned& target, unsigned least, unsigned most,
                        const std::string& help) = 0;
    /// A number with a decimal point, more than 0.
    virtual void decimal(const std::string& names, double& target, const std::string& help) = 0;
};

} // namespace orbctl
