#pragma once

#include "grabber_basis/parameterInfo.h"
#include "platform/FrameGrabber.h"

#include <array>
#include <string>
#include <vector>

/// A parameter as the applet's tree shows it.
struct ListedParameter {
    const RegisterInfo* record;
    std::string category; ///< the groups above it, outermost first, joined by " / "
};

/// The applet on board 0, opened as a program does, the board stepped by hand.
class LiveApplet {
  public:
    /// \throws std::runtime_error when it cannot be opened
    explicit LiveApplet(const std::string& file);
    ~LiveApplet();
    LiveApplet(const LiveApplet&) = delete;
    LiveApplet& operator=(const LiveApplet&) = delete;

    [[nodiscard]] Fg_Struct* handle() const { return mHandle; }

    /// The parameters of a port's tree, in the order of the categories.
    [[nodiscard]] std::vector<ListedParameter> parameters(int port) const;
    /// The name of the parameter at an index, or the empty text behind the last.
    [[nodiscard]] std::string nameAt(int index) const;
    [[nodiscard]] int idOf(const std::string& name) const;
    /// The applet's sentence about a parameter, or the empty text.
    [[nodiscard]] std::string descriptionOf(const std::string& name, int port) const;
    /// The value now, as text.
    [[nodiscard]] std::string valueOf(const RegisterInfo& record, int port) const;

  private:
    Fg_Struct* mHandle;
};

/// The shortest text that reads back as the same number.
std::string numberText(double value);
