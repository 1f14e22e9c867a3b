#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/BoardEvents.h"
#include "console/Duration.h"
#include "console/EventList.h"
#include "console/Interruption.h"
#include "console/Json.h"
#include "console/NumberText.h"
#include "console/Session.h"
#include "console/TextTable.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace orbctl {

namespace {

using Clock = std::chrono::steady_clock;

/// "12.500000016", exact to the board's tick.
std::string secondsText(std::uint64_t tick) {
    return textWithDigits(static_cast<double>(tick) / ticksPerSecond, 9);
}

class EventsCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.text("PART", mPart, "only events whose name contains this");
        arguments.flag("--watch", mWatch, "show the events as the board raises them, with its time");
        arguments.number("-n,--count", mCount, 0, 1000000000, "end after so many events; 0: do not");
        arguments.decimal("-t,--time", mSeconds, "end after so many seconds (default: at Ctrl-C)");
        arguments.flag("--json", mJson, "write JSON; with --watch an object on each line");
    }

    ExitStatus run(Session& session) override {
        if (!mWatch && (mCount != 0 || mSeconds > 0))
            throw Failure(ExitStatus::usage, "--count and --time end a --watch");
        select(eventsOf(session.applet()));
        if (mWatch)
            watch(session);
        else if (mJson)
            printJson(session);
        else
            print(session);
        return ExitStatus::done;
    }

  private:
    void select(const std::vector<EventName>& events) {
        for (const EventName& event : events)
            if (event.name.find(mPart) != std::string::npos)
                mEvents.push_back(event);
        if (mEvents.empty())
            throw Failure(ExitStatus::notFound, mPart.empty()
                                                    ? "the applet has no events"
                                                    : "there is no event with " + mPart + " in its name");
    }

    void print(Session& session) const {
        TextTable table;
        for (const EventName& event : mEvents)
            table.addRow({event.name, hexadecimalText(event.mask)});
        table.print(session.output());
    }

    void printJson(Session& session) const {
        JsonWriter json;
        json.beginArray();
        for (const EventName& event : mEvents)
            json.beginObject().member("name", event.name).member("mask", event.mask).endObject();
        session.output() << json.endArray().text();
    }

    void watch(Session& session) const {
        const Interruption interruption;
        const BoardEvents board(session.runtime(), session.board());
        const auto end = Clock::now() + std::chrono::duration<double>(mSeconds);
        unsigned shown = 0;
        while (!isEnough(shown) && !Interruption::isAskedFor()) {
            const bool isLast = mSeconds > 0 && Clock::now() >= end;
            for (const BoardEvent& event : board.take()) {
                const EventName* const known = find(event);
                if (known == nullptr || isEnough(shown))
                    continue;
                session.output() << line(event, known->name);
                ++shown;
            }
            session.output().flush();
            if (isLast)
                return;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }

    bool isEnough(unsigned shown) const { return mCount != 0 && shown == mCount; }

    std::string line(const BoardEvent& event, const std::string& name) const {
        if (!mJson)
            return secondsText(event.tick) + " s  " + name + "\n";
        return "{\"tick\": " + textOf(event.tick) + ", \"seconds\": " + secondsText(event.tick) +
               ", \"name\": " + jsonString(name) + ", \"mask\": " + textOf(event.mask) + "}\n";
    }

    /// Null for an event that shall not be shown, or that the applet has no name for.
    const EventName* find(const BoardEvent& event) const {
        const auto found = std::find_if(mEvents.begin(), mEvents.end(),
                                        [&](const EventName& known) { return known.mask == event.mask; });
        return found == mEvents.end() ? nullptr : &*found;
    }

    std::string mPart;
    std::vector<EventName> mEvents;
    bool mWatch = false;
    unsigned mCount = 0;
    double mSeconds = 0;
    bool mJson = false;
};

} // namespace

std::unique_ptr<Command> makeEventsCommand() { return std::make_unique<EventsCommand>(); }

} // namespace orbctl
