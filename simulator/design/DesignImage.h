#pragma once

#include "simulator/Visibility.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// A register of a design.
struct DesignRegister {
    std::string name;
    unsigned bits = 32;    ///< 1 to 64
    bool isStatus = false; ///< the board computes it; it cannot be written
};

/// A design parameter: the name under which the runtime offers a register.
struct DesignParameter {
    std::string name;
    unsigned registerIndex = 1; ///< from 1
    unsigned elements = 0;      ///< 0 for a plain parameter, else the length of its table
    unsigned elementBits = 0; ///< 1 to 32 for a table; its register holds an element and, above it, its index
};

/// What a design image says. The image is a text of lines; docs/board.md describes it.
struct SIMULATOR_PUBLIC DesignImage {
    std::string applet;
    int type = 0; ///< type number of the design
    std::vector<DesignRegister>
        registers; ///< element i is register i + 1; names may repeat, the first one counts
    std::vector<DesignParameter> parameters; ///< names are unique
    std::vector<std::string> events; ///< in the order of their numbers, from 0; any number, names may repeat

    /// Reads an image. Whatever the bytes are, the answer is a design without contradiction or nothing.
    /// \param image   may be null when \p size is 0
    /// \param reason  receives in words what is wrong; may be null
    static std::optional<DesignImage> decode(const void* image, std::size_t size,
                                             std::string* reason = nullptr);

    /// The image as text, sealed.
    std::string encode() const;

    /// Replaces the last line of a text (or adds it) so that it seals the lines before it.
    static std::string seal(const std::string& text);
};

} // namespace simulator
