#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORBELLINE_SEARCHES_LEAKS
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ORBELLINE_SEARCHES_LEAKS
#endif

#ifdef ORBELLINE_SEARCHES_LEAKS
#include <sanitizer/lsan_interface.h>
#endif

namespace kavo::test {

/// What is allocated during its life may be left behind: for the one path that keeps its memory on purpose.
class LeakExemption {
  public:
    LeakExemption() {}
    LeakExemption(const LeakExemption&) = delete;
    LeakExemption& operator=(const LeakExemption&) = delete;

#ifdef ORBELLINE_SEARCHES_LEAKS
  private:
    __lsan::ScopedDisabler mDisabler;
#endif
};

} // namespace kavo::test
