#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/NameSuggestion.h"
#include "console/NumberText.h"
#include "console/ParameterCatalogue.h"
#include "console/ParameterJson.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/TextTable.h"
#include "console/ValueText.h"

#include <algorithm>
#include <strings.h>

namespace orbctl {

namespace {

bool isIn(const Parameter& parameter, const std::string& category) {
    const auto matches = [&](const std::string& group) {
        return strcasecmp(group.c_str(), category.c_str()) == 0;
    };
    return std::any_of(parameter.category.begin(), parameter.category.end(), matches);
}

std::string valueCell(const Parameter& parameter, const Reading& reading) {
    return parameter.isField() ? "..." : textWithUnit(parameter, reading);
}

/// The range on one line; a long enumeration only begins, describe has all of it.
std::string rangeCell(const Parameter& parameter) {
    constexpr std::size_t mostEntries = 5;
    if (parameter.entries.size() <= mostEntries)
        return rangeText(parameter);
    Parameter beginning = parameter;
    beginning.entries.resize(2);
    return rangeText(beginning) + ", ... (" + textOf(std::uint64_t{parameter.entries.size()}) + " entries)";
}

class ListCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.text("-c,--category", mCategory, "only this category and those inside it");
        arguments.flag("--json", mJson, "write JSON");
    }

    ExitStatus run(Session& session) override {
        for (const unsigned port : mPort.ports())
            select(ParameterCatalogue(session.applet(), port));
        if (mJson)
            printJson(session);
        else
            printText(session);
        return ExitStatus::done;
    }

  private:
    void select(const ParameterCatalogue& catalogue) {
        const std::size_t before = mSelected.size();
        for (const Parameter& parameter : catalogue.parameters())
            if (mCategory.empty() || isIn(parameter, mCategory))
                mSelected.push_back(parameter);
        if (mSelected.size() == before && !mCategory.empty())
            refuseCategory(catalogue);
    }

    [[noreturn]] void refuseCategory(const ParameterCatalogue& catalogue) const {
        std::vector<std::string> names;
        for (const Parameter& parameter : catalogue.parameters())
            names.insert(names.end(), parameter.category.begin(), parameter.category.end());
        throw Failure(ExitStatus::notFound,
                      "there is no category " + mCategory + didYouMean(mCategory, names));
    }

    static Reading readingOf(Session& session, const Parameter& parameter) {
        return parameter.isField() ? Reading{} : readParameter(session.applet(), parameter);
    }

    void printJson(Session& session) const {
        JsonWriter json;
        json.beginArray();
        for (const Parameter& parameter : mSelected) {
            json.beginObject();
            writeDescription(json, parameter);
            if (!parameter.isField())
                writeReading(json, parameter, readingOf(session, parameter));
            json.endObject();
        }
        json.endArray();
        session.output() << json.text();
    }

    std::string headingOf(const Parameter& parameter) const {
        const std::string category = categoryText(parameter);
        return mPort.ports().size() < 2 ? category
                                        : "Port " + textOf(std::uint64_t{parameter.port}) + ": " + category;
    }

    void printText(Session& session) const {
        std::vector<std::string> headings;
        std::vector<TextTable> tables;
        std::string heading;
        for (const Parameter& parameter : mSelected) {
            if (tables.empty() || headingOf(parameter) != heading) {
                heading = headingOf(parameter);
                headings.push_back((tables.empty() ? "" : "\n") + session.outputTerminal().bold(heading));
                tables.emplace_back(2);
            }
            tables.back().addRow({parameter.name, valueCell(parameter, readingOf(session, parameter)),
                                  shortAccessText(parameter), rangeCell(parameter)});
        }
        TextTable::printAligned(session.output(), headings, tables);
    }

    PortChoice mPort{"0"};
    std::string mCategory;
    bool mJson = false;
    std::vector<Parameter> mSelected;
};

} // namespace

std::unique_ptr<Command> makeListCommand() { return std::make_unique<ListCommand>(); }

} // namespace orbctl
