#pragma once

#include "console/HostFunctions.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orbctl {

/// What a selector of the applet's Info function gives beside its result.
enum class InfoOutput { none, number, text, block, address };

/// A selector of Info and what this program calls it.
struct InfoSelector {
    int number;
    const char* name; ///< for people and as JSON member
    InfoOutput output;
    bool isPerPort; ///< asked once for each port
};

/// The answer to one selector.
struct InfoAnswer {
    InfoSelector selector;
    unsigned port = 0; ///< where the selector is asked per port
    int result = 0;
    std::uint32_t number = 0; ///< value of a number, size of a block
    std::string text;
    const void* data = nullptr;
};

/// A named constant of the applet; empty where it does not know the name.
struct NamedConstant {
    std::string name;
    std::optional<int> value;
};

/// Every selector that applets of this interface answer, asked one after another.
std::vector<InfoAnswer> askEverything(const HostFunctions& functions);
/// One selector by its number.
InfoAnswer ask(const HostFunctions& functions, const InfoSelector& selector, unsigned port = 0);
InfoAnswer ask(const HostFunctions& functions, int number);

/// The named constants that the applet is asked for, with their values.
std::vector<NamedConstant> namedConstants(const HostFunctions& functions);

/// The value of a named constant; an error code where the applet does not know the name.
int constantOf(const HostFunctions& functions, const std::string& name);

/// The answer's output as text: the text itself, a number, "3164 bytes"; empty where there is none.
std::string outputText(const InfoAnswer& answer);

} // namespace orbctl
