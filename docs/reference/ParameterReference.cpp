#include "docs/reference/ParameterReference.h"

#include "docs/reference/DrivenParameters.h"

#include <locale>
#include <set>
#include <sstream>

namespace {

constexpr int changeableFlag = 4;
constexpr int writableFlag = 2;

constexpr const char* introduction =
    "# Parameters\n\n"
    "Every standard parameter of the applet, as a freshly opened applet tells it. This page is written by "
    "the build\n"
    "target `parameter_reference`; edit the applet, not the page.\n\n"
    "Each parameter exists once per camera port; the DMA index of a call, 0 or 1, tells the port. Limits "
    "that other\n"
    "parameters move are the ones right after creation. \"Drives\" names what a write changes in the design "
    "(and\n"
    "\"reads\" what a read asks it) on port 0; port 1 has the same with `Process1`, `TriggerCam1` and "
    "`Cam1`. A\n"
    "change of trigger mode or state runs a sequence of writes, of which the names are listed.\n";

std::string accessText(int flags) {
    if ((flags & writableFlag) == 0) {
        return "read";
    }
    return (flags & changeableFlag) != 0 ? "read, write, change while acquiring" : "read, write";
}

std::string typeText(const RegisterInfo& record) {
    switch (record.format) {
    case REG_FORMAT_UINT:
        return "unsigned 32-bit";
    case REG_FORMAT_DOUBLE:
        return "double";
    case REG_FORMAT_ENUM:
        return "enumeration";
    case REG_FORMAT_STRING:
        return "text";
    case REG_FORMAT_UINTFIELD:
        return "table of " + std::to_string(record.u.uifReg.nrOfElements) + " unsigned 32-bit";
    default:
        return "";
    }
}

std::string rangeText(const RegisterInfo& record) {
    switch (record.format) {
    case REG_FORMAT_UINT:
        return std::to_string(record.u.uiReg.from) + " .. " + std::to_string(record.u.uiReg.to);
    case REG_FORMAT_DOUBLE:
        return numberText(record.u.dReg.from) + " .. " + numberText(record.u.dReg.to);
    case REG_FORMAT_UINTFIELD:
        return std::to_string(record.u.uifReg.from) + " .. " + std::to_string(record.u.uifReg.to);
    default:
        return "";
    }
}

std::string stepText(const RegisterInfo& record) {
    constexpr double continuous = 1e-15;
    switch (record.format) {
    case REG_FORMAT_UINT:
        return std::to_string(record.u.uiReg.steps);
    case REG_FORMAT_DOUBLE:
        return record.u.dReg.steps < continuous ? "continuous" : numberText(record.u.dReg.steps);
    default:
        return "";
    }
}

void row(std::ostream& out, const char* label, const std::string& text) {
    if (!text.empty()) {
        out << "| " << label << " | " << text << " |\n";
    }
}

std::string list(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "`" : "<br>`") + name + "`";
    }
    return text;
}

std::string entriesText(const RegisterInfo& record) {
    std::string text;
    if (record.format != REG_FORMAT_ENUM) {
        return text;
    }
    const EnumReg& entries = record.u.eReg;
    for (int index = 0; index < entries.nrOfElements; ++index) {
        text += (index == 0 ? "`" : "<br>`") + std::string(entries.enumDefName[index]) +
                "` = " + std::to_string(entries.enumValues[index]) + ", \"" + entries.enumNames[index] + "\"";
    }
    return text;
}

/// Entries that only port 1 has.
std::string secondPortNote(const LiveApplet& applet, const RegisterInfo& record) {
    for (const ListedParameter& other : applet.parameters(1)) {
        if (other.record->id == record.id && entriesText(*other.record) != entriesText(record)) {
            return entriesText(*other.record);
        }
    }
    return {};
}

void writeParameter(std::ostream& out, const LiveApplet& applet, const RegisterInfo& record) {
    // What it drives is found last: the value at creation must be read before anything is set.
    const std::string atCreation = applet.valueOf(record, 0);
    const std::string atCreationOnSecondPort = applet.valueOf(record, 1);
    const DrivenParameters driven = drivenBy(applet, record);
    out << "\n### `" << record.parameterName << "`\n\n";
    const std::string description = applet.descriptionOf(record.parameterName, 0);
    if (!description.empty()) {
        out << description << "\n\n";
    }
    out << "| | |\n|---|---|\n";
    row(out, "Display name", record.name);
    row(out, "Id", std::to_string(record.id));
    row(out, "Type", typeText(record));
    row(out, "Range", rangeText(record));
    row(out, "Step", stepText(record));
    row(out, "Unit", record.unit != nullptr ? record.unit : "");
    row(out, "File filter",
        record.format == REG_FORMAT_STRING && record.u.sReg.FileExtension != nullptr
            ? record.u.sReg.FileExtension
            : "");
    row(out, "Entries", entriesText(record));
    row(out, "Entries on port 1", secondPortNote(applet, record));
    row(out, "Access", accessText(record.accessFlags));
    row(out, "At creation", atCreation);
    row(out, "At creation on port 1", atCreationOnSecondPort != atCreation ? atCreationOnSecondPort : "");
    row(out, "Drives", list(driven.written));
    row(out, "Reads", list(driven.readOnGet));
}

void writeUnlisted(std::ostream& out, const LiveApplet& applet, const std::set<int>& listed) {
    out << "\n## Answered without a description\n\n"
           "These can be read, and stand in no category and not in the XML description.\n\n"
           "| Name | Id | Description |\n|---|---|---|\n";
    for (int index = 0; !applet.nameAt(index).empty(); ++index) {
        const std::string name = applet.nameAt(index);
        const int id = applet.idOf(name);
        if (listed.count(id) == 0) {
            out << "| `" << name << "` | " << id << " | " << applet.descriptionOf(name, 0) << " |\n";
        }
    }
}

} // namespace

std::string parameterReference(const LiveApplet& applet) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << introduction;
    std::string category;
    std::set<int> listed;
    for (const ListedParameter& parameter : applet.parameters(0)) {
        if (parameter.category != category) {
            category = parameter.category;
            out << "\n## " << category << "\n";
        }
        writeParameter(out, applet, *parameter.record);
        listed.insert(parameter.record->id);
    }
    writeUnlisted(out, applet, listed);
    return out.str();
}
