#pragma once

#include "console/Command.h"

#include <memory>

namespace orbctl {

// One function for each command; its file bears its name.

std::unique_ptr<Command> makeInfoCommand();
std::unique_ptr<Command> makeListCommand();
std::unique_ptr<Command> makeGetCommand();
std::unique_ptr<Command> makeSetCommand();
std::unique_ptr<Command> makeDescribeCommand();
std::unique_ptr<Command> makeRegistersCommand();
std::unique_ptr<Command> makeRegistersReadCommand();
std::unique_ptr<Command> makeRegistersWriteCommand();
std::unique_ptr<Command> makeAcquireCommand();
std::unique_ptr<Command> makeTriggerCommand();
std::unique_ptr<Command> makeTriggerSendCommand();
std::unique_ptr<Command> makeTriggerPlotCommand();
std::unique_ptr<Command> makeWatchCommand();
std::unique_ptr<Command> makeDemoCommand();
std::unique_ptr<Command> makeRunCommand();

} // namespace orbctl
