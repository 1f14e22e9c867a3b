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
        {"watch", "Repeat a command's output", makeWatchCommand},
        {"run", "Run commands from a file or standard input on one open board", makeRunCommand},
        {"demo", "Set both ports up, acquire pictures and tell what was done", makeDemoCommand},
    };
    return commands;
}

} // namespace orbctl
