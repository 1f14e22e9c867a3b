#pragma once

#include "platform/FrameGrabber.h"
#include "simulator/Board.h"
#include "simulator/runtime/BoundSymbols.h"

#include <array>
#include <memory>

namespace simulator {

/// The handle of a program: an applet library and the applet that it created on a board. Its calls go to the
/// applet.
class OuterHandle {
  public:
    /// Opens an applet library and creates the applet.
    /// \param error  receives 0, or why there is no handle
    /// \return null when the library or the applet could not be had; nothing stays behind then
    static std::shared_ptr<OuterHandle> open(const char* appletFile, Board& board, int slave, int& error);

    OuterHandle(const OuterHandle&) = delete;
    OuterHandle& operator=(const OuterHandle&) = delete;
    ~OuterHandle();

    Fg_Struct* handle() { return &mHandle; }
    Board& board() { return mBoard; }
    void* library() { return mLibrary.get(); }

    /// The applet's export of a function, or null.
    template <class Function>
    Function* exported(SymbolNumber symbol) const {
        return reinterpret_cast<Function*>(mExports[symbol]);
    }

  private:
    struct LibraryCloser {
        void operator()(void* library) const;
    };
    using Library = std::unique_ptr<void, LibraryCloser>;

    OuterHandle(Library library, Board& board);

    Board& mBoard;
    Library mLibrary;
    std::array<void*, numberOfBoundSymbols> mExports{};
    Fg_Struct mHandle{nullptr};
};

} // namespace simulator
