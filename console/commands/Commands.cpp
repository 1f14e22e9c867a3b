#include "console/commands/Commands.h"

namespace orbctl {

const std::vector<CommandEntry>& allCommands() {
    static const std::vector<CommandEntry> commands = {
        {"info", "Show what the applet is: names, version, selectors, named constants", makeInfoCommand},
        {"list", "List the parameters with value, range, unit and access", makeListCommand},
        {"get", "Read parameters", makeGetCommand},
        {"set", "Write parameters", makeSetCommand},
        {"describe", "Tell everything about parameters", makeDescribeCommand},
        {"registers", "List, read and write the registers of the design", makeRegistersCommand},
        {"registers read", "Read registers", makeRegistersReadCommand},
        {"registers write", "Write registers", makeRegistersWriteCommand},
        {"acquire", "Acquire pictures into files", makeAcquireCommand},
        {"trigger", "Show the trigger system of a port", makeTriggerCommand},
        {"trigger send", "Send software triggers", makeTriggerSendCommand},
        {"trigger plot", "Draw the trigger signals over time", makeTriggerPlotCommand},
        {"save", "Save the configuration of both ports into a file", makeSaveCommand},
        {"load", "Load a configuration and tell what changed and what was refused", makeLoadCommand},
        {"diff", "Compare a configuration file with the board", makeDiffCommand},
        {"defaults", "Show the defaults beside the present values, or set them", makeDefaultsCommand},
        {"lut", "Show the lookup table of a port", makeLutShowCommand},
        {"lut show", "Show the lookup table of a port", makeLutShowCommand},
        {"lut set", "Set the lookup table's processing or entries", makeLutSetCommand},
        {"lut load", "Load a lookup table from a file", makeLutLoadCommand},
        {"lut save", "Save a lookup table into a file", makeLutSaveCommand},
        {"lut plot", "Draw the lookup tables of both ports", makeLutPlotCommand},
        {"status", "Show fill level, overflow and camera status", makeStatusCommand},
        {"events", "List the events, or show them as they happen", makeEventsCommand},
        {"xml", "Write the GenICam description of a port", makeXmlCommand},
        {"check", "Check that the applet keeps what it describes", makeCheckCommand},
        {"watch", "Repeat a command's output", makeWatchCommand},
        {"run", "Run commands from a file or standard input on one open board", makeRunCommand},
        {"demo", "Set both ports up, acquire pictures and tell what was done", makeDemoCommand},
    };
    return commands;
}

} // namespace orbctl
