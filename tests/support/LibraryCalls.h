#pragma once

#include <map>
#include <string>
#include <vector>

namespace kavo::test {

/// What a program that wraps dlopen, dlsym, dlclose and setlocale has asked of the system, oldest first:
/// "open <name> <mode>", "symbol <name>", "close", "close after unloading" (a design was unloaded before) and
/// "locale <category> <name>".
std::vector<std::string>& libraryCalls();

/// What dlsym gives for a name instead of the library's own; null makes the function missing.
std::map<std::string, void*>& replacedSymbols();

/// Whether dlopen finds no library any more.
bool& librariesAreMissing();

} // namespace kavo::test
