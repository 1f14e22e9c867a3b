#pragma once

#include "applet/AppletWrapper.h"
#include "platform/FrameGrabber.h"
#include "simulator/Board.h"
#include "simulator/HostCalls.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// A write of a design parameter (or of the runtime's own parameter) as it reached the runtime.
struct RecordedWrite {
    std::string name;
    std::uint32_t value;
    unsigned dmaIndex;
    int type;

    bool operator==(const RecordedWrite& other) const {
        return name == other.name && value == other.value && dmaIndex == other.dmaIndex && type == other.type;
    }
};
std::ostream& operator<<(std::ostream& out, const RecordedWrite& write);

/// An applet on board 0, the board at power-on state and stepped by hand, through the exported functions that
/// are linked into the test program. The calls that creation made are not in the record.
class AppletOnBoard {
  public:
    enum class Role { master, slave };

    explicit AppletOnBoard(Role role = Role::master);
    ~AppletOnBoard();
    AppletOnBoard(const AppletOnBoard&) = delete;
    AppletOnBoard& operator=(const AppletOnBoard&) = delete;

    /// What Std_entry told; the handle carries a wrapper when this is 0.
    [[nodiscard]] int creationError() const { return mError; }
    [[nodiscard]] Fg_Struct* handle() { return &mHandle; }
    [[nodiscard]] FgQxWrapperImpl& wrapper();
    [[nodiscard]] simulator::Board& board() { return mBoard; }

    /// Write through the export, with the value's own kind.
    int set(int id, unsigned value, int port);
    int set(int id, double value, int port);
    int set(int id, const char* value, int port);
    int set(int id, const FieldParameterInt_s& value, int port);

    /// Read through the export; a failure leaves the guard value 0xDEADBEEF (or -12345.0).
    [[nodiscard]] unsigned get(int id, int port);
    [[nodiscard]] double getReal(int id, int port);
    [[nodiscard]] std::string getText(int id, int port);
    /// The result code of a read into a large buffer.
    int readCode(int id, int port);
    [[nodiscard]] int lastError();

    /// The description of a parameter in the port's tree, found by walking it; null when missing.
    [[nodiscard]] RegisterInfo* record(int id, int port);

    /// Forgets the calls recorded so far.
    static void forgetCalls();
    /// Writes since then, in order.
    [[nodiscard]] static std::vector<RecordedWrite> writes();
    /// Names of the design parameters read since then, in order.
    [[nodiscard]] static std::vector<std::string> reads();
    /// Makes the nth write (from 1) from now on fail once.
    static void failWrite(unsigned nth, int code);
    static void failRead(unsigned nth, int code);

    /// "Device1_Process0_<name>" or "Device1_Process1_<name>".
    [[nodiscard]] static std::string process(int port, const std::string& name);
    /// "Device1_Process2_Trigger_TriggerCam0_<name>" or "..._TriggerCam1_<name>".
    [[nodiscard]] static std::string trigger(int port, const std::string& name);

  private:
    simulator::Board& mBoard;
    int mError = 0;
    Fg_Struct mHandle{nullptr};
};

/// A fixture for what holds on both ports: the parameter is the port.
class OnBothPorts : public testing::TestWithParam<int> {
  protected:
    [[nodiscard]] static int port() { return GetParam(); }
    [[nodiscard]] static int otherPort() { return 1 - GetParam(); }

    AppletOnBoard applet;
};

/// Instantiates a suite derived from OnBothPorts for port 0 and port 1.
#define FOR_BOTH_PORTS(suite)                                                                                \
    INSTANTIATE_TEST_SUITE_P(Ports, suite, testing::Values(0, 1),                                            \
                             [](const auto& suiteInfo) { return "Port" + std::to_string(suiteInfo.param); })
