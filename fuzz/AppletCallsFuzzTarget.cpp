#include "fuzz/CallScript.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/FuzzTarget.h"

#include <ctime>

// An input is a script: one call a line, the call's name first (see CallScript). What is behind the last line
// that is looked at does not matter.

extern "C" int __wrap_nanosleep(const timespec* time, timespec* rest);

/// The pause between software triggers would be most of the time.
extern "C" int __wrap_nanosleep(const timespec*, timespec*) { return 0; }

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int mostCalls = 40;
    static kavo::fuzz::CallScript script;
    script.begin();
    kavo::fuzz::FuzzInput input(data, size);
    for (int call = 0; call < mostCalls && !input.rest().empty(); ++call) {
        script.run(input.takeLine());
    }
    script.end();
    return 0;
}
