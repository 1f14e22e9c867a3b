#pragma once

#include "tests/support/AppletOnBoard.h"

#include <string>
#include <variant>
#include <vector>

/// A value on its way into a parameter.
using TrialValue = std::variant<unsigned, double, std::string, FieldParameterInt_s>;

std::ostream& operator<<(std::ostream& out, const TrialValue& value);

/// Sets a parameter through the export.
int setTo(AppletOnBoard& applet, int id, const TrialValue& value, int port);

/// Values to try on a parameter: both ends, one step from the lower end and the middle of the range that its
/// description tells at this moment, or every entry of its enumeration. A parameter without a description gets
/// a number.
/// \param file  what a text parameter is set to
std::vector<TrialValue> trialValues(AppletOnBoard& applet, int id, int port, const std::string& file);

/// A state of the applet that writes and reads start from.
struct Scene {
    const char* name;
    std::vector<std::pair<int, TrialValue>> settings;
};
std::ostream& operator<<(std::ostream& out, const Scene& scene);

/// The scenes of a port. Between them every trigger mode is on.
std::vector<Scene> scenesOf(int port);
/// Brings a fresh applet into a scene, on both ports as far as they have it.
void enter(AppletOnBoard& applet, const Scene& scene, int port);
