#pragma once

#include "tests/trust/FaultSweep.h"

#include <string>
#include <vector>

/// What is asked of the file system and can fail. A flush comes as the write that it causes; a regular file
/// never refuses to start again at its beginning.
enum class FileCall { open, read, write, close, remove };
const char* nameOf(FileCall call);

/// What a call does that is to fail.
enum class FileFaultKind {
    refusal, ///< nothing but an error
    half,    ///< a write brings half of its bytes onto the disk before it is full
};
const char* nameOf(FileFaultKind kind);

/// The calls of an operation on files, in order, and the faults that make each of them fail. A program gets
/// them by linking FileFaults.cpp and wrapping fopen, open, close and unlink; streams then show every call
/// that they make, through their own buffers.
class FileFaults {
  public:
    /// Runs an operation without faults and notes its calls.
    template <class Operation>
    explicit FileFaults(Operation operation) {
        startNoting();
        operation();
        mCalls = stopNoting();
    }

    [[nodiscard]] std::size_t count() const { return mCalls.size(); }
    [[nodiscard]] FileCall call(std::size_t nth) const { return mCalls[nth]; }
    /// "call 3, write, once, half"
    [[nodiscard]] std::string describe(std::size_t nth, FaultDuration duration, FileFaultKind kind) const;

    /// Calls the visitor with every fault: number of the call, duration, kind.
    template <class Visitor>
    void forEach(Visitor visit) const {
        for (std::size_t nth = 0; nth < count(); ++nth) {
            forEachOf(nth, visit);
        }
    }
    /// With every fault of the nth call.
    template <class Visitor>
    void forEachOf(std::size_t nth, Visitor visit) const {
        for (const FaultDuration duration : bothDurations) {
            visit(nth, duration, FileFaultKind::refusal);
            if (call(nth) == FileCall::write) {
                visit(nth, duration, FileFaultKind::half);
            }
        }
    }

    /// Runs an operation whose nth call (from 0) fails, and gives its answer.
    template <class Operation>
    static auto during(std::size_t nth, FaultDuration duration, FileFaultKind kind, Operation operation) {
        const Arranged fault(nth, duration, kind);
        return operation();
    }

    /// Whether a fault came since it was arranged last.
    [[nodiscard]] static bool hasHappened();

  private:
    class Arranged {
      public:
        Arranged(std::size_t nth, FaultDuration duration, FileFaultKind kind);
        ~Arranged();
        Arranged(const Arranged&) = delete;
        Arranged& operator=(const Arranged&) = delete;
    };

    static void startNoting();
    static std::vector<FileCall> stopNoting();

    std::vector<FileCall> mCalls;
};
