#pragma once

#include "applet/Enumerations.h"

#include <array>
#include <cstddef>

/// A category of the parameter tree; the order is the order in which the tree is built.
enum class CategoryId {
    camera,
    regionOfInterest,
    trigger,
    triggerInput,
    triggerInputExternal,
    softwareTrigger,
    triggerInputStatistics,
    sequencer,
    queue,
    pulseFormGenerator0,
    pulseFormGenerator1,
    pulseFormGenerator2,
    pulseFormGenerator3,
    cameraActionCommand,
    digitalOutput,
    digitalOutputStatistics,
    outputEvent,
    overflow,
    lookupTable,
    processing,
    outputFormat,
    miscellaneous,
    appletProperties,
    none, ///< no category: the parameter has no description in the tree
};

struct CategoryRow {
    CategoryId id;
    CategoryId parent; ///< none: a top-level category
    const char* name;
};

/// Kind of a standard parameter's value.
enum class ValueKind {
    integer, ///< unsigned 32-bit
    real,    ///< double
    enumeration,
    text,
    integerField, ///< 4096 unsigned 32-bit values, accessed one by one
};

/// Flag words of a description; the access flags tell readable (1), writable (2) and changeable (4).
struct DescriptionFlags {
    int access = 0;
    int range = 0;
    int visibility = 0;
};

constexpr int accessReadOnly = 1;
constexpr int accessReadWriteChange = 7;

/// Inclusive limits and the step of a number; exact for 32-bit integers. They are zero where a value has
/// none.
struct Limits {
    double from = 0, to = 0, step = 0;

    [[nodiscard]] constexpr bool contain(double value) const { return value >= from && value <= to; }
};

/// The same for unsigned parameters.
struct IntegerLimits {
    unsigned from, to, step;

    [[nodiscard]] constexpr bool contain(unsigned value) const { return value >= from && value <= to; }
};

/// One standard parameter: everything that is fixed about it, for both ports.
struct StandardParameter {
    const char* name;
    int id;
    const char* displayName;
    ValueKind kind;
    Limits limits;
    DescriptionFlags flags;
    CategoryId category;
    const char* unit;                               ///< or null
    const char* fileExtension;                      ///< file filter of a text, or null
    std::array<const Enumeration*, 2> enumerations; ///< per port; null unless kind is enumeration
    const char* description;                        ///< one sentence, or null
};

constexpr int standardParameterCount = 93;

/// Entries of the lookup table.
constexpr int lookupTableSize = 4096;
constexpr unsigned largestPixelValue = 4095;
