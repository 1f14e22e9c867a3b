#pragma once

#include <iosfwd>
#include <set>
#include <string>

/// What this process holds at a moment. A program that looks links AllocationCounts.cpp.
struct LifetimeResources {
    long blocks = 0; ///< live blocks of the heap, the system's streams and libraries included
    long bytes = 0;  ///< their bytes
    std::multiset<std::string> descriptors;    ///< what each open file descriptor stands for
    std::set<std::string> libraries;           ///< files that are mapped as libraries
    std::multiset<std::string> temporaryFiles; ///< files of the applet's kind in the folder for such files

    static LifetimeResources now();
};

/// Expects that its scope leaves the process holding what it held before.
class LifetimeBalance {
  public:
    LifetimeBalance() : mBefore(LifetimeResources::now()) {}
    ~LifetimeBalance();
    LifetimeBalance(const LifetimeBalance&) = delete;
    LifetimeBalance& operator=(const LifetimeBalance&) = delete;

  private:
    LifetimeResources mBefore;
};
