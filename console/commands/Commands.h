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
std::unique_ptr<Command> makeSaveCommand();
std::unique_ptr<Command> makeLoadCommand();
std::unique_ptr<Command> makeDiffCommand();
std::unique_ptr<Command> makeDefaultsCommand();
std::unique_ptr<Command> makeLutShowCommand();
std::unique_ptr<Command> makeLutSetCommand();
std::unique_ptr<Command> makeLutLoadCommand();
std::unique_ptr<Command> makeLutSaveCommand();
std::unique_ptr<Command> makeLutPlotCommand();
std::unique_ptr<Command> makeXmlCommand();
std::unique_ptr<Command> makeEventsCommand();
std::unique_ptr<Command> makeStatusCommand();
std::unique_ptr<Command> makeCheckCommand();
std::unique_ptr<Command> makeDemoCommand();
std::unique_ptr<Command> makeRunCommand();

} // namespace orbctl
