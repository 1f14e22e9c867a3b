#include "docs/reference/LiveApplet.h"

#include "platform/ParameterIds.h"
#include "platform/RuntimeForPrograms.h"
#include "simulator/Board.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

namespace {

constexpr int anyType = 2;
constexpr std::size_t textCapacity = 4096;

void collect(const RegisterInfo& group, const std::string& above, std::vector<ListedParameter>& found) {
    const std::string category = above.empty() ? group.name : above + " / " + group.name;
    std::vector<const RegisterInfo*> groups;
    for (int index = 0; index < group.u.gReg.nrOfElements; ++index) {
        const RegisterInfo* element = group.u.gReg.elements[index];
        if (element->format == REG_FORMAT_GROUP) {
            groups.push_back(element);
        } else {
            found.push_back({element, category});
        }
    }
    for (const RegisterInfo* inner : groups) {
        collect(*inner, category, found);
    }
}

std::string enumerationText(const EnumReg& entries, unsigned value) {
    for (int index = 0; index < entries.nrOfElements; ++index) {
        if (static_cast<unsigned>(entries.enumValues[index]) == value) {
            return std::string(entries.enumDefName[index]) + " (" + std::to_string(value) + ")";
        }
    }
    return std::to_string(value);
}

} // namespace

LiveApplet::LiveApplet(const std::string& file) {
    simulator::Board& board = simulator::Board::at(0);
    board.reset();
    board.clock().stepByHand();
    int error = 0;
    mHandle = Fg_OpenBoard(file.c_str(), 0, 0, &error);
    if (mHandle == nullptr) {
        throw std::runtime_error(file + " cannot be opened on the board (" + std::to_string(error) + ")");
    }
}

LiveApplet::~LiveApplet() { Fg_FreeGrabber(mHandle); }

std::vector<ListedParameter> LiveApplet::parameters(int port) const {
    std::vector<const RegisterInfo*> roots;
    for (const RegisterInfo* root = Fg_getParameterInfo(mHandle, port); root != nullptr; root = root->next) {
        roots.push_back(root);
    }
    // The list of a port begins with the group that was added last.
    std::reverse(roots.begin(), roots.end());
    std::vector<ListedParameter> found;
    for (const RegisterInfo* root : roots) {
        collect(*root, {}, found);
    }
    return found;
}

std::string LiveApplet::nameAt(int index) const {
    // The runtime has no function of this name; the applet's own is asked.
    const auto nameOf = reinterpret_cast<decltype(&::Fg_getParameterName)>(
        dlsym(Fg_AppletLibrary(mHandle), "Fg_getParameterName"));
    const char* name = nameOf != nullptr ? nameOf(mHandle, index) : nullptr;
    return name != nullptr ? name : std::string();
}

int LiveApplet::idOf(const std::string& name) const { return Fg_getParameterIdByName(mHandle, name.c_str()); }

std::string LiveApplet::descriptionOf(const std::string& name, int port) const {
    std::array<char, textCapacity> text{};
    std::copy(name.begin(), name.end(), text.begin());
    const int code = Fg_getParameterWithType(mHandle, parameterDescriptionQuery, text.data(),
                                             static_cast<unsigned>(port), anyType);
    return code == 0 ? text.data() : std::string();
}

std::string LiveApplet::valueOf(const RegisterInfo& record, int port) const {
    // On the stack of every kind of value: a text fills it, numbers stand at its start.
    alignas(double) std::array<char, textCapacity> value{};
    const int code =
        Fg_getParameterWithType(mHandle, record.id, value.data(), static_cast<unsigned>(port), anyType);
    if (code != 0) {
        return "error " + std::to_string(code);
    }
    unsigned integer = 0;
    double real = 0;
    std::memcpy(&integer, value.data(), sizeof integer);
    std::memcpy(&real, value.data(), sizeof real);
    switch (record.format) {
    case REG_FORMAT_UINT:
        return std::to_string(integer);
    case REG_FORMAT_DOUBLE:
        return numberText(real);
    case REG_FORMAT_ENUM:
        return enumerationText(record.u.eReg, integer);
    case REG_FORMAT_STRING:
        return value[0] != '\0' ? value.data() : "empty";
    case REG_FORMAT_UINTFIELD:
        return "entry i is i";
    default:
        return "";
    }
}

std::string numberText(double value) {
    std::array<char, 400> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
    return {text.data(), end};
}
