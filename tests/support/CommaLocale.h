#pragma once

#include "tests/support/TemporaryFolder.h"

namespace kavo::test {

/// Gives the process a locale that writes 0.5 as "0,5", as long as the object lives. The locale is made on
/// the spot, so it is there whatever locales the machine has.
class CommaLocale {
  public:
    /// Throws std::runtime_error when the locale does not take effect.
    CommaLocale();
    ~CommaLocale();
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

  private:
    TemporaryFolder mFolder;
};

} // namespace kavo::test
