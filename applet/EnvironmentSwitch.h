#pragma once

#include <cstdlib>
#include <string>

/// Whether an environment variable says "yes", "true", "on" or "1", in any case of letters.
inline bool environmentSwitchIsOn(const char* variable) {
    const char* setting = std::getenv(variable);
    if (setting == nullptr) {
        return false;
    }
    std::string value = setting;
    for (char& character : value) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return value == "yes" || value == "true" || value == "on" || value == "1";
}
