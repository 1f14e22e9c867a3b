#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Fg_Struct;

/// The latest call that reached the recorder, and what the next one answers.
struct ArgumentRecord {
    std::string function;
    Fg_Struct* handle = nullptr;
    std::vector<std::intptr_t> values; ///< the arguments behind the handle; pointers as numbers
    int answer = 0;
    Fg_Struct* inner = nullptr; ///< the handle that its Fg_InitHandle gives
};

extern "C" ArgumentRecord* argumentRecord();
