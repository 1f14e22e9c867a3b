#pragma once

#include <cstddef>
#include <cstdint>

/// One fuzz target: tries an input, and ends the program when something that always holds does not. The
/// fuzzer calls it with inputs that it invents, the replay program with those of the corpus.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
