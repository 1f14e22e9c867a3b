#pragma once

#include "platform/FrameGrabber.h"
#include "simulator/Board.h"
#include "simulator/HostCalls.h"
#include "simulator/model/DesignStore.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

struct RegisterInfo;
class Fg_ParameterInfo;

namespace simulator {

/// The handle that an applet opens on a board and a design; the runtime answers its calls itself.
class InnerHandle {
  public:
    /// Ids of design parameters count from here in the order of the design, above every id of the runtime's
    /// own.
    static constexpr int firstDesignId = 400000;

    InnerHandle(Board& board, const SharedDesign& design);
    ~InnerHandle();
    InnerHandle(const InnerHandle&) = delete;
    InnerHandle& operator=(const InnerHandle&) = delete;

    Fg_Struct* handle() { return &mHandle; }
    Board& board() { return mBoard; }
    BoardModel& model() { return mModel; }
    int designType() const;

    /// Id of a design parameter or of one of the runtime's own, or -2070.
    int idByName(const char* name) const;
    /// Name of an id, or empty.
    std::string nameOf(int id) const;

    /// A type code of 0 stands for the parameter's own width, as the untyped calls have it.
    int read(int id, void* value, unsigned dmaIndex, int type);
    int write(int id, const void* value, unsigned dmaIndex, int type);
    /// The words that a write carries, for the record; empty for a null value.
    std::vector<std::uint32_t> wordsOf(int id, const void* value, int type) const;

    /// The head of the tree that describes every parameter; null for a port other than 0 and 1.
    RegisterInfo* parameterTree(int port);

    int lastError() const { return mLastError; }
    /// Notes the outcome of a call and passes it on: a negative result is the last error, any other clears
    /// it.
    int conclude(int result);

  private:
    const DesignCell* cellOf(int id) const;
    DesignCell* cellOf(int id);

    Fg_Struct mHandle{nullptr};
    Board& mBoard;
    BoardModel& mModel;
    std::shared_ptr<const DesignBinding> mBinding;
    std::once_flag mTreeMade;
    std::unique_ptr<Fg_ParameterInfo> mTree;
    std::atomic<int> mLastError{0};
};

} // namespace simulator
