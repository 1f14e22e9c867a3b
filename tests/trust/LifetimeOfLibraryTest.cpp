// The applet's library itself, opened, used and closed a thousand times by a program that knows only its
// name.

#include "platform/FrameGrabber.h"
#include "platform/ParameterIds.h"
#include "simulator/Board.h"
#include "simulator/HostCalls.h"
#include "tests/trust/LifetimeResources.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

constexpr int lives = 1000;
long librariesOpen = 0;

template <class Function>
Function* systemFunction(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// The applet's library for a scope.
class OpenLibrary {
  public:
    OpenLibrary() : mLibrary(dlopen(APPLET_FILE, RTLD_NOW | RTLD_LOCAL)) {
        EXPECT_NE(mLibrary, nullptr) << dlerror();
    }
    ~OpenLibrary() { EXPECT_EQ(dlclose(mLibrary), 0); }
    OpenLibrary(const OpenLibrary&) = delete;
    OpenLibrary& operator=(const OpenLibrary&) = delete;

    template <class Function>
    [[nodiscard]] Function* find(const char* name) const {
        return reinterpret_cast<Function*>(dlsym(mLibrary, name));
    }

  private:
    void* mLibrary;
};

bool appletIsMapped() {
    const LifetimeResources now = LifetimeResources::now();
    return std::any_of(now.libraries.begin(), now.libraries.end(), [](const std::string& library) {
        return library.find("libOrbelline.so") != std::string::npos;
    });
}

class LibraryLifetime : public testing::Test {
  protected:
    LibraryLifetime() {
        simulator::hostCalls().reset();
        board.resetAndStepByHand();
    }

    /// \param isRefused  whether the runtime opens no inner handle
    void live(bool isRefused) {
        const OpenLibrary library;
        if (isRefused) {
            simulator::hostCalls().failOnce(simulator::CallKind::initialisation, 1, -4711);
        }
        int code = 0;
        Fg_Struct handle{library.find<decltype(Std_entry)>("Std_entry")(board.device(), &code, 0)};
        ASSERT_EQ(handle.Master == nullptr, isRefused);
        ASSERT_EQ(code, isRefused ? -4711 : 0);
        if (!isRefused) {
            use(library, handle);
        }
        ASSERT_EQ(library.find<decltype(Fg_FreeGrabber)>("Fg_FreeGrabber")(&handle), isRefused ? -2001 : 0);
    }

    static void use(const OpenLibrary& library, Fg_Struct& handle) {
        unsigned width = 512;
        EXPECT_EQ(library.find<decltype(Fg_setParameterWithType)>("Fg_setParameterWithType")(
                      &handle, FG_WIDTH, &width, 1, 2),
                  0);
        unsigned size = 0;
        EXPECT_EQ(library.find<decltype(Fg_getParameterInfoXML)>("Fg_getParameterInfoXML")(&handle, 0,
                                                                                           nullptr, &size),
                  0);
        std::string constant = "FG_GRAY";
        EXPECT_EQ(library.find<decltype(Info)>("Info")(4352, 0, 0,
                                                       reinterpret_cast<unsigned*>(constant.data()), nullptr),
                  3);
    }

    void expectThousandLives(bool isRefused) {
        for (int warmUp = 0; warmUp < 3; ++warmUp) {
            live(isRefused);
        }
        const long openBefore = librariesOpen;
        {
            const LifetimeBalance balance;
            for (int life = 0; life < lives && !HasFatalFailure(); ++life) {
                live(isRefused);
            }
        }
        EXPECT_EQ(librariesOpen, openBefore);
        EXPECT_FALSE(appletIsMapped()) << "it was closed but not unloaded";
    }

    simulator::Board& board = simulator::Board::at(0);
};

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

// The program's own functions of these names come before the system's, for the libraries too.

EXPORTED void* dlopen(const char* file, int mode) noexcept {
    static auto* const function = systemFunction<void*(const char*, int)>("dlopen");
    void* const library = function(file, mode);
    librariesOpen += library != nullptr ? 1 : 0;
    return library;
}

EXPORTED int dlclose(void* library) noexcept {
    static auto* const function = systemFunction<int(void*)>("dlclose");
    --librariesOpen;
    return function(library);
}

TEST_F(LibraryLifetime, AThousandUsesLeaveNothing) { expectThousandLives(false); }

TEST_F(LibraryLifetime, AThousandRefusalsLeaveNothing) { expectThousandLives(true); }

TEST_F(LibraryLifetime, OpeningAloneLeavesNothing) {
    for (int warmUp = 0; warmUp < 3; ++warmUp) {
        const OpenLibrary library;
    }
    const LifetimeBalance balance;
    for (int life = 0; life < lives; ++life) {
        const OpenLibrary library;
    }
}
